#include "platform/draw/Png.h"

#include "platform/draw/PixelsInternal.h"
#include "platform/draw/PlainPngInternal.h"
#include "platform/draw/PngBytesInternal.h"
#include "platform/draw/Surface.h"

#include <libdeflate.h>
#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <vector>

namespace veldan {
namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t kLongestSide = 8192;
constexpr std::uint64_t kMostPixels = 16 * 1024 * 1024;
// Rows of an interlaced picture are worked on seven times.
constexpr std::uint64_t kMostInterlacedPixels = 1024 * 1024;
// Unpacking more than this takes longer than a person should wait for a picture that then turns out to be damaged.
constexpr std::uint64_t kMostData = 12 * 1024 * 1024;
// Pictures with more data are read through once before memory is spent on their pixels.
constexpr std::uint64_t kTrustedData = 1024 * 1024;
// The most that one byte of compressed data can stand for.
constexpr std::uint64_t kBestCompression = 1032;

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n"sv;
constexpr std::size_t kChunkFrame = 12;  // length, name and check sum
constexpr std::size_t kHeaderSize = 13;

/// The header of a PNG file, as far as it decides about decoding.
struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bitDepth = 0;
    int colourType = 0;
    int interlace = 0;
};

// Walks over the chunks behind the signature. The data of pictures is as long as `dataSize` then.
bool HasWholeChunks(std::string_view bytes, std::uint64_t& dataSize) {
    dataSize = 0;
    while (bytes.size() >= kChunkFrame) {
        const std::uint32_t length = PngNumberAt(bytes, 0);
        const std::string_view name = bytes.substr(4, 4);
        if (length > bytes.size() - kChunkFrame) {
            return false;
        }
        if (name == "IEND"sv) {
            return dataSize > 0;
        }
        if (name == "IDAT"sv) {
            dataSize += length;
        }
        bytes.remove_prefix(kChunkFrame + length);
    }
    return false;
}

std::optional<Header> ReadHeader(std::string_view bytes) {
    constexpr std::string_view kHeaderFrame = "\0\0\0\x0dIHDR"sv;
    const std::size_t start = kSignature.size() + kHeaderFrame.size();
    if (!bytes.starts_with(kSignature) || bytes.size() < kSignature.size() + kHeaderSize + kChunkFrame ||
        bytes.substr(kSignature.size(), kHeaderFrame.size()) != kHeaderFrame ||
        PngNumberAt(bytes, start + kHeaderSize) != libdeflate_crc32(0, bytes.data() + start - 4, kHeaderSize + 4)) {
        return std::nullopt;
    }
    return Header{PngNumberAt(bytes, start), PngNumberAt(bytes, start + 4), bytes[start + 8], bytes[start + 9],
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

// Bytes that the rows take once they are unpacked, near enough.
std::uint64_t UnpackedSize(const Header& header) {
    const auto bits = static_cast<unsigned>(std::max(header.bitDepth, 1) * ChannelsOf(header.colourType));
    return std::uint64_t{header.width} * header.height * bits / 8;
}

bool IsReasonable(const Header& header, std::uint64_t dataSize) {
    const std::uint64_t pixels = std::uint64_t{header.width} * header.height;
    const std::uint64_t unpacked = UnpackedSize(header);
    return pixels > 0 && header.width <= kLongestSide && header.height <= kLongestSide &&
           pixels <= (header.interlace ? kMostInterlacedPixels : kMostPixels) && unpacked <= kMostData &&
           unpacked <= dataSize * kBestCompression;
}

// The header of a file that is worth decoding.
std::optional<Header> ReadReasonableHeader(std::string_view bytes) {
    const std::optional<Header> header = ReadHeader(bytes);
    std::uint64_t dataSize = 0;
    if (!header || !HasWholeChunks(bytes.substr(kSignature.size()), dataSize) || !IsReasonable(*header, dataSize)) {
        return std::nullopt;
    }
    return header;
}

void Fail(png_structp png, png_const_charp /*message*/) {
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp /*png*/, png_const_charp /*message*/) {}

void ReadBytes(png_structp png, png_bytep target, std::size_t count) {
    auto& bytes = *static_cast<std::string_view*>(png_get_io_ptr(png));
    if (bytes.size() < count) {
        png_error(png, "");
    }
    std::memcpy(target, bytes.data(), count);
    bytes.remove_prefix(count);
}

void AppendBytes(png_structp png, png_bytep source, std::size_t count) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(source), count);
}

/// The decoder's or encoder's state; freed outside of the functions that an error jumps out of.
class Codec {
public:
    explicit Codec(std::string_view bytes) : m_source(bytes) {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &Fail, &IgnoreWarning);
        Start();
        png_set_read_fn(png, &m_source, &ReadBytes);
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
    png_infop info = nullptr;  ///< Null when memory is short.

private:
    void Start() { info = png ? png_create_info_struct(png) : nullptr; }

    bool m_isReader = true;
    std::string_view m_source;
};

void BeginReading(png_structp png, png_infop info) {
    png_set_user_limits(png, kLongestSide, kLongestSide);
    // What only describes the picture isn't even unpacked.
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(png, info);
}

// Asks for rows of 32-bit pixels with straight alpha, whatever the file holds.
void SetReadTransforms(png_structp png, png_infop info) {
    png_set_expand(png);
    png_set_strip_16(png);
    png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_add_alpha(png, 0xff, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
}

// Errors jump back to the setjmp in here and below, so nothing in these functions may need its destructor.
bool CanReadRows(png_structp png, png_infop info, png_bytep row) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    BeginReading(png, info);
    const png_uint_32 height = png_get_image_height(png, info);
    for (png_uint_32 y = 0; y < height; ++y) {
        png_read_row(png, row, nullptr);
    }
    png_read_end(png, nullptr);
    return true;
}

bool ReadRows(png_structp png, png_infop info, Surface& surface) {
    if (setjmp(png_jmpbuf(png))) {
        return false;
    }
    BeginReading(png, info);
    const int passes = png_set_interlace_handling(png);
    SetReadTransforms(png, info);
    if (png_get_rowbytes(png, info) != static_cast<std::size_t>(surface.Width()) * 4) {
        return false;
    }
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < surface.Height(); ++y) {
            png_read_row(png, reinterpret_cast<png_bytep>(surface.Row(y)), nullptr);
        }
    }
    png_read_end(png, nullptr);
    return true;
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

// Reads a larger file through without keeping anything, so that a damaged one costs neither memory nor much time.
bool IsTrustworthy(std::string_view bytes, const Header& header) {
    if (UnpackedSize(header) <= kTrustedData || header.interlace) {
        return true;
    }
    Codec codec(bytes);
    std::vector<png_byte> row(std::size_t{header.width} * 8);
    return codec.info && CanReadRows(codec.png, codec.info, row.data());
}

CSize SizeOf(const Header& header) {
    return {static_cast<int>(header.width), static_cast<int>(header.height)};
}

// Pixels with straight alpha; null when the file is damaged.
std::unique_ptr<Surface> DecodeAnyPng(std::string_view bytes, const Header& header) {
    if (!IsTrustworthy(bytes, header)) {
        return nullptr;
    }
    const CSize size = SizeOf(header);
    Codec codec(bytes);
    auto surface = std::make_unique<Surface>(size.cx, size.cy);
    const bool isRead = codec.info && surface->Width() == size.cx && ReadRows(codec.png, codec.info, *surface);
    return isRead ? std::move(surface) : nullptr;
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
    std::unique_ptr<Surface> surface = DecodePlainPng(bytes);
    if (!surface) {
        surface = DecodeAnyPng(bytes, *header);
    }
    for (int y = 0; surface && y < surface->Height(); ++y) {
        PremultiplyPixels(surface->Row(y), static_cast<std::size_t>(surface->Width()));
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
