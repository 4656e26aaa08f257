#include "platform/draw/PlainPngInternal.h"

#include "platform/draw/PngBytesInternal.h"
#include "platform/draw/Surface.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace veldan {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kMostData = 1024 * 1024;
constexpr std::size_t kPixel = 4;  // bytes
constexpr std::string_view kStart = "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR"sv;
// Depth, colour type, compression, filtering and interlacing, at the end of the header.
constexpr std::string_view kPlainForm = "\x08\x06\0\0\0"sv;

using Bytes = std::span<std::uint8_t>;

struct Chunk {
    std::string_view name;
    std::string_view data;
};

// Takes the first chunk off; nothing where it is cut short or its check sum is wrong.
std::optional<Chunk> TakeChunk(std::string_view& bytes) {
    constexpr std::size_t kFrame = 12;  // length, name and check sum
    const std::uint32_t length = bytes.size() >= kFrame ? PngNumberAt(bytes, 0) : 0;
    if (bytes.size() < kFrame || length > bytes.size() - kFrame) {
        return std::nullopt;
    }
    const std::string_view summed = bytes.substr(4, length + 4);
    if (libdeflate_crc32(0, summed.data(), summed.size()) != PngNumberAt(bytes, length + 8)) {
        return std::nullopt;
    }
    bytes.remove_prefix(length + kFrame);
    return Chunk{summed.substr(0, 4), summed.substr(4)};
}

bool IsLower(char c) {
    return c >= 'a' && c <= 'z';
}

bool IsLetter(char c) {
    return IsLower(c) || (c >= 'A' && c <= 'Z');
}

/// What makes the picture.
struct PlainFile {
    CSize size;
    std::string_view data;
};

// Reads all chunks up to the end. Only those that no decoder needs may stand beside the picture's own.
std::optional<PlainFile> ReadFile(std::string_view bytes) {
    if (!bytes.starts_with(kStart)) {
        return std::nullopt;
    }
    bytes.remove_prefix(8);
    PlainFile file;
    for (std::string_view last; last != "IEND"sv;) {
        const std::optional<Chunk> chunk = TakeChunk(bytes);
        if (!chunk) {
            return std::nullopt;
        }
        const bool isOptional = IsLower(chunk->name.front()) && std::ranges::all_of(chunk->name, IsLetter);
        if (chunk->name == "IHDR"sv && last.empty() && chunk->data.substr(8) == kPlainForm) {
            file.size = {static_cast<int>(PngNumberAt(chunk->data, 0)), static_cast<int>(PngNumberAt(chunk->data, 4))};
        } else if (chunk->name == "IDAT"sv && file.data.empty()) {
            file.data = chunk->data;
        } else if (!isOptional && (chunk->name != "IEND"sv || !chunk->data.empty())) {
            return std::nullopt;
        }
        last = chunk->name;
    }
    return file;
}

// The channels of a pixel, which are computed side by side, and as many again that nobody looks at, which makes vectors
// of the sizes that processors have.
using ChannelBytes [[gnu::vector_size(2 * kPixel)]] = std::uint8_t;
using Channels [[gnu::vector_size(2 * kPixel * sizeof(std::int16_t))]] = std::int16_t;

Channels Magnitude(Channels numbers) {
    return numbers > 0 ? numbers : -numbers;
}

Channels Paeth(Channels left, Channels above, Channels corner) {
    const Channels toLeft = Magnitude(above - corner);
    const Channels toAbove = Magnitude(left - corner);
    const Channels toCorner = Magnitude(above - corner + left - corner);
    const Channels nearest = toAbove < toCorner ? toAbove : toCorner;
    const Channels other = toAbove > toCorner ? corner : above;
    return toLeft > nearest ? other : left;
}

// Adds to each pixel what `guess` makes of its neighbours: those to the left, above, and above to the left.
template <class Guess>
void Add(Bytes row, const std::uint8_t* above, Guess guess) {
    const auto load = [](const std::uint8_t* bytes) {
        ChannelBytes pixel{};
        std::memcpy(&pixel, bytes, kPixel);
        return __builtin_convertvector(pixel, Channels);
    };
    Channels left{};
    Channels corner{};
    for (std::size_t i = 0; i < row.size(); i += kPixel) {
        const Channels up = load(&above[i]);
        left = (load(&row[i]) + guess(left, up, corner)) & 0xff;
        corner = up;
        const auto bytes = __builtin_convertvector(left, ChannelBytes);
        std::memcpy(&row[i], &bytes, kPixel);
    }
}

// Turns a row of differences into one of bytes. False for a filter that doesn't exist.
bool Unfilter(int filter, Bytes row, const std::uint8_t* above) {
    switch (filter) {
        case 0:
            return true;
        case 1:
            Add(row, above, [](Channels left, Channels, Channels) { return left; });
            return true;
        case 2:
            std::transform(row.begin(), row.end(), above, row.begin(),
                           [](int byte, int up) { return static_cast<std::uint8_t>(byte + up); });
            return true;
        case 3:
            Add(row, above, [](Channels left, Channels up, Channels) { return (left + up) >> 1; });
            return true;
        case 4:
            Add(row, above, Paeth);
            return true;
        default:
            return false;
    }
}

bool Inflate(std::string_view data, Bytes bytes) {
    // One for each thread that draws, kept: it holds the tables that are built anew for each picture.
    struct End {
        void operator()(libdeflate_decompressor* decompressor) const { libdeflate_free_decompressor(decompressor); }
    };
    thread_local const std::unique_ptr<libdeflate_decompressor, End> decompressor(libdeflate_alloc_decompressor());
    return decompressor && libdeflate_zlib_decompress(decompressor.get(), data.data(), data.size(), bytes.data(),
                                                      bytes.size(), nullptr) == LIBDEFLATE_SUCCESS;
}

void StorePixels(const std::uint8_t* bytes, std::span<std::uint32_t> pixels) {
    for (std::uint32_t& pixel : pixels) {
        pixel = std::uint32_t{bytes[3]} << 24 | std::uint32_t{bytes[0]} << 16 | std::uint32_t{bytes[1]} << 8 | bytes[2];
        bytes += kPixel;
    }
}

}  // namespace

std::unique_ptr<Surface> DecodePlainPng(std::string_view bytes) {
    const std::optional<PlainFile> file = ReadFile(bytes);
    if (!file || file->size.cx <= 0 || file->size.cy <= 0) {
        return nullptr;
    }
    const auto width = static_cast<std::size_t>(file->size.cx);
    const auto height = static_cast<std::size_t>(file->size.cy);
    const std::size_t length = width * kPixel;
    if (height > kMostData / (length + 1)) {
        return nullptr;
    }
    // A row of zeros stands above the first.
    std::vector<std::uint8_t> rows(length + height * (length + 1));
    if (!Inflate(file->data, Bytes(rows).subspan(length))) {
        return nullptr;
    }
    auto surface = std::make_unique<Surface>(file->size.cx, file->size.cy);
    if (surface->Width() != file->size.cx) {
        return nullptr;
    }
    const std::uint8_t* above = rows.data();
    for (int y = 0; y < surface->Height(); ++y) {
        std::uint8_t* filter = rows.data() + length + static_cast<std::size_t>(y) * (length + 1);
        if (!Unfilter(*filter, {filter + 1, length}, above)) {
            return nullptr;
        }
        above = filter + 1;
        StorePixels(above, {surface->Row(y), width});
    }
    return surface;
}

}  // namespace veldan
