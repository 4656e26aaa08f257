#include "platform/draw/Png.h"

#include "platform/draw/PixelsInternal.h"
#include "platform/draw/Surface.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <new>

namespace veldan {
namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t kLongestSide = 8192;
constexpr std::uint64_t kMostPixels = 16 * 1024 * 1024;
// An interlaced picture is processed in seven passes.
constexpr std::uint64_t kMostInterlacedPixels = 1024 * 1024;
// Unpacking more would take longer than the user should wait for a picture that may turn out to be damaged.
constexpr std::uint64_t kMostData = 12 * 1024 * 1024;
// The largest number of bytes that one byte of compressed data can represent.
constexpr std::uint64_t kBestCompression = 1032;
// Files with more chunks are made to keep a decoder busy.
constexpr int kMostChunks = 4096;
// So are data with more blocks than these: some for every picture, and one more for a certain number of bytes. Encoders
// begin a new block only after many thousand bytes.
constexpr std::size_t kFreeBlocks = 256;
constexpr std::size_t kShortestBlock = 2048;

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n"sv;
constexpr std::string_view kEnd = "\0\0\0\0IEND\xae\x42\x60\x82"sv;
constexpr std::size_t kChunkFrame = 12;  // length, name and checksum
constexpr std::size_t kHeaderSize = 13;

/// What the header of a PNG file says about decoding it.
struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bitDepth = 0;
    int colourType = 0;
    int interlace = 0;
};

const Bytef* AsBytes(std::string_view text) {
    return reinterpret_cast<const Bytef*>(text.data());
}

std::uint32_t CheckSum(std::string_view bytes) {
    return static_cast<std::uint32_t>(crc32(0, AsBytes(bytes), static_cast<uInt>(bytes.size())));
}

// The big-endian number of four bytes at an offset.
std::uint32_t NumberAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(offset, 4)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

struct Chunk {
    std::string_view name;
    std::string_view data;  ///< Directly after the name.
    std::uint32_t checkSum = 0;

    [[nodiscard]] bool IsWhole() const { return checkSum == CheckSum({name.data(), name.size() + data.size()}); }
};

// Takes the first chunk; empty if it is incomplete.
std::optional<Chunk> TakeChunk(std::string_view& bytes) {
    const std::uint32_t length = bytes.size() >= kChunkFrame ? NumberAt(bytes, 0) : 0;
    if (bytes.size() < kChunkFrame || length > bytes.size() - kChunkFrame) {
        return std::nullopt;
    }
    const Chunk chunk{bytes.substr(4, 4), bytes.substr(8, length), NumberAt(bytes, 8 + std::size_t{length})};
    bytes.remove_prefix(kChunkFrame + length);
    return chunk;
}

// The length of the picture's data in all chunks up to the end; 0 for a file without an end.
std::uint64_t MeasureData(std::string_view chunks) {
    std::uint64_t size = 0;
    for (int count = 0; count < kMostChunks && !chunks.starts_with(kEnd); ++count) {
        const std::optional<Chunk> chunk = TakeChunk(chunks);
        if (!chunk) {
            return 0;
        }
        size += chunk->name == "IDAT"sv ? chunk->data.size() : 0;
    }
    return chunks.starts_with(kEnd) ? size : 0;
}

std::optional<Header> ReadHeader(std::string_view bytes) {
    constexpr std::string_view kHeaderFrame = "\0\0\0\x0dIHDR"sv;
    const std::size_t start = kSignature.size() + kHeaderFrame.size();
    if (!bytes.starts_with(kSignature) || bytes.size() < kSignature.size() + kHeaderSize + kChunkFrame ||
        bytes.substr(kSignature.size(), kHeaderFrame.size()) != kHeaderFrame ||
        NumberAt(bytes, start + kHeaderSize) != CheckSum(bytes.substr(start - 4, kHeaderSize + 4))) {
        return std::nullopt;
    }
    return Header{NumberAt(bytes, start), NumberAt(bytes, start + 4), bytes[start + 8], bytes[start + 9],
                  bytes[start + 12]};
}

int ChannelsOf(int colourType) {
    switch (colourType) {
        case PNG_COLOR_TYPE_GRAY_ALPHA:
            return 2;
        case PNG_COLOR_TYPE_RGB:
            return 3;
        case PNG_COLOR_TYPE_RGB_ALPHA:
            return 4;
        default:
            return 1;
    }
}

// The size of the unpacked rows, each with one more byte for its filter.
std::uint64_t UnpackedSize(const Header& header) {
    const auto bits = static_cast<unsigned>(std::max(header.bitDepth, 1) * ChannelsOf(header.colourType));
    const auto sizeOf = [&](std::uint64_t width, std::uint64_t height) {
        return width > 0 ? ((width * bits + 7) / 8 + 1) * height : 0;
    };
    if (header.interlace == PNG_INTERLACE_NONE) {
        return sizeOf(header.width, header.height);
    }
    std::uint64_t size = 0;
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
        size += sizeOf(PNG_PASS_COLS(header.width, pass), PNG_PASS_ROWS(header.height, pass));
    }
    return size;
}

bool IsReasonable(const Header& header, std::uint64_t dataSize) {
    const std::uint64_t pixels = std::uint64_t{header.width} * header.height;
    if (pixels == 0 || header.width > kLongestSide || header.height > kLongestSide ||
        pixels > (header.interlace ? kMostInterlacedPixels : kMostPixels)) {
        return false;
    }
    const std::uint64_t unpacked = UnpackedSize(header);
    return unpacked <= kMostData && unpacked <= dataSize * kBestCompression;
}

std::string_view ChunksOf(std::string_view bytes) {
    return bytes.substr(kSignature.size());
}

// The header, if the file is reasonable to decode.
std::optional<Header> ReadReasonableHeader(std::string_view bytes) {
    const std::optional<Header> header = ReadHeader(bytes);
    return header && IsReasonable(*header, MeasureData(ChunksOf(bytes))) ? header : std::nullopt;
}

// Everything before the first data.
std::string_view StartOf(std::string_view bytes) {
    std::string_view rest = ChunksOf(bytes);
    while (rest.substr(4, 4) != "IDAT"sv && TakeChunk(rest)) {
    }
    return bytes.substr(0, bytes.size() - rest.size());
}

/// What the picture consists of: its unpacked rows, and what precedes its data in the file.
struct Parts {
    std::string_view start;
    std::unique_ptr<Bytef[]> rows;
    std::size_t size = 0;
};

// Unpacks the data only as far as the rows go, so that nobody waits longer than for those; what follows is ignored.
// Null if the data are damaged, too short or in too many blocks.
std::unique_ptr<Bytef[]> UnpackRows(std::string_view chunks, std::size_t size) {
    std::unique_ptr<Bytef[]> rows(new (std::nothrow) Bytef[size]);
    z_stream stream = {};
    if (!rows || inflateInit(&stream) != Z_OK) {
        return nullptr;
    }
    constexpr int kBlockEnds = 128;
    stream.next_out = rows.get();
    stream.avail_out = static_cast<uInt>(size);
    std::size_t blocks = kFreeBlocks + size / kShortestBlock;
    const auto goesOn = [&] { return stream.avail_out > 0 && blocks > 0; };
    for (int result = Z_OK; result == Z_OK && goesOn();) {
        const std::optional<Chunk> chunk = TakeChunk(chunks);
        if (!chunk || (chunk->name == "IDAT"sv && !chunk->IsWhole())) {
            break;
        }
        stream.next_in = const_cast<Bytef*>(AsBytes(chunk->data));
        stream.avail_in = chunk->name == "IDAT"sv ? static_cast<uInt>(chunk->data.size()) : 0;
        while (result == Z_OK && goesOn() && stream.avail_in > 0) {
            result = inflate(&stream, Z_BLOCK);
            blocks -= (stream.data_type & kBlockEnds) != 0 ? 1 : 0;
        }
    }
    inflateEnd(&stream);
    return stream.avail_out == 0 ? std::move(rows) : nullptr;
}

void Fail(png_structp png, png_const_charp /*message*/) {
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp /*png*/, png_const_charp /*message*/) {}

void AppendBytes(png_structp png, png_bytep source, std::size_t count) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(source), count);
}

/// The state of the decoder or encoder, freed outside the functions that an error jumps out of.
class Codec {
public:
    Codec() {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &Fail, &IgnoreWarning);
        Start();
    }
    explicit Codec(std::string& target) : m_isReader(false) {
        png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, &Fail, &IgnoreWarning);
        Start();
        png_set_write_fn(png, &target, &AppendBytes, nullptr);
    }
    ~Codec() {
        if (m_isReader) {
            png_destroy_read_struct(&png, &info, nullptr);
        } else {
            png_destroy_write_struct(&png, &info);
        }
    }
    Codec(const Codec&) = delete;
    Codec& operator=(const Codec&) = delete;

    png_structp png = nullptr;
    png_infop info = nullptr;  ///< Null if memory is short.

private:
    void Start() { info = png ? png_create_info_struct(png) : nullptr; }

    bool m_isReader = true;
};

/// The destination of a file's rows while it is read.
struct RowTarget {
    Surface& surface;
    bool isInterlaced;
    bool isWhole = false;  ///< Whether the file was read to its end.
};

// Requests rows of 32-bit pixels with straight alpha, whatever the file contains.
void TakeInfo(png_structp png, png_infop info) {
    png_set_expand(png);
    png_set_strip_16(png);
    png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_add_alpha(png, 0xff, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
    const Surface& surface = static_cast<RowTarget*>(png_get_progressive_ptr(png))->surface;
    if (png_get_rowbytes(png, info) != static_cast<std::size_t>(surface.Width()) * 4) {
        png_error(png, "");
    }
}

void TakeRow(png_structp png, png_bytep row, png_uint_32 number, int pass) {
    const RowTarget& target = *static_cast<RowTarget*>(png_get_progressive_ptr(png));
    const auto width = static_cast<png_uint_32>(target.surface.Width());
    if (!target.isInterlaced) {
        std::memcpy(target.surface.Row(static_cast<int>(number)), row, std::size_t{width} * 4);
        return;
    }
    std::uint32_t* pixels = target.surface.Row(static_cast<int>(PNG_ROW_FROM_PASS_ROW(number, pass)));
    for (png_uint_32 i = 0; i < PNG_PASS_COLS(width, pass); ++i) {
        std::memcpy(&pixels[PNG_COL_FROM_PASS_COL(i, pass)], row + std::size_t{i} * 4, 4);
    }
}

void TakeEnd(png_structp png, png_infop /*info*/) {
    static_cast<RowTarget*>(png_get_progressive_ptr(png))->isWhole = true;
}

void Feed(png_structp png, png_infop info, const Bytef* bytes, std::size_t size) {
    png_process_data(png, info, const_cast<Bytef*>(bytes), size);
}

// Passes the rows as uncompressed data: a header, blocks with a header each, and two checksums that aren't checked.
void FeedRows(png_structp png, png_infop info, const Bytef* rows, std::size_t size) {
    constexpr std::size_t kLongest = 65535;
    const std::size_t blocks = (size + kLongest - 1) / kLongest;
    const std::size_t length = 2 + blocks * 5 + size + 4;
    const auto byteOf = [](std::size_t number, int place) { return static_cast<Bytef>(number >> 8 * place); };
    const Bytef head[] = {
        byteOf(length, 3), byteOf(length, 2), byteOf(length, 1), byteOf(length, 0), 'I', 'D', 'A', 'T', 0x78, 0x01};
    Feed(png, info, head, sizeof head);
    while (size > 0) {
        const std::size_t part = std::min(size, kLongest);
        const Bytef blockHead[] = {static_cast<Bytef>(part == size), byteOf(part, 0), byteOf(part, 1), byteOf(~part, 0),
                                   byteOf(~part, 1)};
        Feed(png, info, blockHead, sizeof blockHead);
        Feed(png, info, rows, part);
        rows += part;
        size -= part;
    }
    const Bytef sums[8] = {};
    Feed(png, info, sums, sizeof sums);
}

// Errors jump back to the setjmp here and below, so no object in these functions may need its destructor.
bool ReadRows(png_structp png, png_infop info, const Parts& parts, RowTarget& target) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    png_set_user_limits(png, kLongestSide, kLongestSide);
    // Chunks that only describe the picture aren't even unpacked.
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_option(png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
    png_set_progressive_read_fn(png, &target, &TakeInfo, &TakeRow, &TakeEnd);
    Feed(png, info, AsBytes(parts.start), parts.start.size());
    png_set_crc_action(png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
    FeedRows(png, info, parts.rows.get(), parts.size);
    Feed(png, info, AsBytes(kEnd), kEnd.size());
    return target.isWhole;
}

bool WriteRows(png_structp png, png_infop info, const Surface& surface, png_bytep row, PngAlpha alpha) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    const bool hasAlpha = alpha == PngAlpha::Keep;
    png_set_IHDR(png, info, static_cast<png_uint_32>(surface.Width()), static_cast<png_uint_32>(surface.Height()), 8,
                 hasAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_bgr(png);
    if (!hasAlpha) {
        png_set_filler(png, 0, PNG_FILLER_AFTER);
    }
    for (int y = 0; y < surface.Height(); ++y) {
        std::memcpy(row, surface.Row(y), static_cast<std::size_t>(surface.Width()) * 4);
        if (hasAlpha) {
            UnpremultiplyPixels(reinterpret_cast<std::uint32_t*>(row), static_cast<std::size_t>(surface.Width()));
        }
        png_write_row(png, row);
    }
    png_write_end(png, nullptr);
    return true;
}

CSize SizeOf(const Header& header) {
    return {static_cast<int>(header.width), static_cast<int>(header.height)};
}

}  // namespace

std::optional<CSize> ReadPngSize(std::string_view bytes) {
    const std::optional<Header> header = ReadReasonableHeader(bytes);
    return header ? std::optional(SizeOf(*header)) : std::nullopt;
}

std::unique_ptr<Surface> DecodePng(std::string_view bytes) {
    const std::optional<Header> header = ReadReasonableHeader(bytes);
    if (!header) {
        return nullptr;
    }
    Parts parts;
    parts.start = StartOf(bytes);
    parts.size = static_cast<std::size_t>(UnpackedSize(*header));
    parts.rows = UnpackRows(bytes.substr(parts.start.size()), parts.size);
    if (!parts.rows) {
        return nullptr;
    }
    const CSize size = SizeOf(*header);
    auto surface = std::make_unique<Surface>(size.cx, size.cy);
    RowTarget target{*surface, header->interlace != 0};
    const Codec codec;
    if (!codec.info || surface->Width() != size.cx || !ReadRows(codec.png, codec.info, parts, target)) {
        return nullptr;
    }
    for (int y = 0; y < size.cy; ++y) {
        PremultiplyPixels(surface->Row(y), static_cast<std::size_t>(size.cx));
    }
    return surface;
}

std::string EncodePng(const Surface& surface, PngAlpha alpha) {
    std::string result;
    Codec codec(result);
    if (!codec.info || surface.Bounds().IsEmpty()) {
        return result;
    }
    const auto row = std::make_unique<std::uint32_t[]>(static_cast<std::size_t>(surface.Width()));
    if (!WriteRows(codec.png, codec.info, surface, reinterpret_cast<png_bytep>(row.get()), alpha)) {
        result.clear();
    }
    return result;
}

}  // namespace veldan
