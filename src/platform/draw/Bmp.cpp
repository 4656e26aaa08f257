#include "platform/draw/Bmp.h"

#include "platform/draw/Surface.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace veldan {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr int kMaxSide = 8192;
constexpr std::uint32_t kOpaque = 0xff000000;

/// Numbers in a file, lowest byte first. What lies beyond its end reads as 0.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::uint32_t At(std::size_t place) const {
        return place < m_bytes.size() ? static_cast<unsigned char>(m_bytes[place]) : 0;
    }
    [[nodiscard]] std::uint32_t Word(std::size_t place) const { return At(place) | At(place + 1) << 8; }
    [[nodiscard]] std::uint32_t Long(std::size_t place) const { return Word(place) | Word(place + 2) << 16; }
    [[nodiscard]] std::uint32_t Colour(std::size_t place) const { return kOpaque | (Long(place) & ~kOpaque); }
    [[nodiscard]] std::size_t Size() const { return m_bytes.size(); }

private:
    std::string_view m_bytes;
};

struct Header {
    int width;
    int height;
    bool isTopDown;
    std::uint32_t depth;
    std::size_t palette;  ///< Number of its colours, which begin at `paletteAt`.
    std::size_t paletteAt;
    std::size_t pixels;  ///< Where the rows begin.
    std::size_t stride;
};

std::optional<Header> ReadHeader(const Bytes& file) {
    const std::uint32_t size = file.Long(kFileHeader);
    const auto width = static_cast<std::int32_t>(file.Long(kFileHeader + 4));
    const auto height = static_cast<std::int32_t>(file.Long(kFileHeader + 8));
    const std::uint32_t depth = file.Word(kFileHeader + 14);
    const bool isBmp = file.Word(0) == 0x4d42 && size >= kInfoHeader && file.Size() >= kFileHeader + kInfoHeader;
    const bool isPlain = file.Word(kFileHeader + 12) == 1 && file.Long(kFileHeader + 16) == 0;
    constexpr std::array<std::uint32_t, 5> kDepths{1, 4, 8, 24, 32};
    if (!isBmp || !isPlain || std::ranges::find(kDepths, depth) == kDepths.end()) {
        return {};
    }
    if (width < 1 || width > kMaxSide || height == 0 || height < -kMaxSide || height > kMaxSide) {
        return {};
    }
    Header header{width, std::abs(height), height < 0, depth, 0, kFileHeader + size, file.Long(10), 0};
    header.stride = (static_cast<std::size_t>(width) * depth + 31) / 32 * 4;
    if (depth <= 8) {
        const std::size_t most = std::size_t{1} << depth;
        const std::size_t used = file.Long(kFileHeader + 32);
        header.palette = used == 0 ? most : std::min(used, most);
    }
    const std::size_t rows = header.stride * static_cast<std::size_t>(header.height);
    if (header.pixels < header.paletteAt + header.palette * 4 || header.pixels > file.Size() ||
        file.Size() - header.pixels < rows) {
        return {};
    }
    return header;
}

std::uint32_t PixelAt(const Bytes& file, const Header& header, std::size_t row, std::size_t x) {
    if (header.depth >= 24) {
        return file.Colour(row + x * (header.depth / 8));
    }
    const std::size_t bit = x * header.depth;
    const std::uint32_t index = file.At(row + bit / 8) >> (8 - header.depth - bit % 8) & ((1U << header.depth) - 1);
    return index < header.palette ? file.Colour(header.paletteAt + index * std::size_t{4}) : kOpaque;
}

}  // namespace

std::unique_ptr<Surface> DecodeBmp(std::string_view bytes) {
    const Bytes file(bytes);
    const std::optional<Header> header = ReadHeader(file);
    if (!header) {
        return nullptr;
    }
    auto surface = std::make_unique<Surface>(header->width, header->height);
    for (int y = 0; y < surface->Height(); ++y) {
        const int stored = header->isTopDown ? y : header->height - 1 - y;
        const std::size_t row = header->pixels + static_cast<std::size_t>(stored) * header->stride;
        for (int x = 0; x < surface->Width(); ++x) {
            surface->Row(y)[x] = PixelAt(file, *header, row, static_cast<std::size_t>(x));
        }
    }
    return surface->Width() == header->width ? std::move(surface) : nullptr;
}

}  // namespace veldan
