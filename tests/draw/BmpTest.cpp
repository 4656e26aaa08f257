#include "platform/draw/Bitmap.h"
#include "platform/draw/Bmp.h"
#include "platform/resource/Resource.h"

#include <gtest/gtest.h>

#include <string>

namespace veldan {
namespace {

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i) & 0xff);
    }
    return text;
}

/// A BMP file; `rows` is everything after the palette.
std::string File(int width, int height, int depth, const std::string& palette, const std::string& rows) {
    const auto pixels = static_cast<std::uint32_t>(54 + palette.size());
    return "BM" + Number(0, 8) + Number(pixels, 4) + Number(40, 4) + Number(static_cast<std::uint32_t>(width), 4) +
           Number(static_cast<std::uint32_t>(height), 4) + Number(1, 2) + Number(static_cast<std::uint32_t>(depth), 2) +
           std::string(24, '\0') + palette + rows;
}

std::string Colours(std::initializer_list<std::uint32_t> colours) {
    std::string text;
    for (const std::uint32_t colour : colours) {
        text += Number(colour, 4);
    }
    return text;
}

constexpr std::uint32_t kA = 0x112233;
constexpr std::uint32_t kB = 0x445566;

TEST(Bmp, DecodesEveryDepthFromBothDirections) {
    const std::string pair24 = Number(kA, 3) + Number(kB, 3) + Number(0, 2);
    const std::string back24 = Number(kB, 3) + Number(kA, 3) + Number(0, 2);
    const std::string palette = Colours({kA, kB});
    const std::string full16 = palette + std::string(std::size_t{14} * 4, '\0');
    const std::string full256 = palette + std::string(std::size_t{254} * 4, '\0');
    const std::string files[] = {
        File(2, 2, 24, "", back24 + pair24),
        File(2, -2, 24, "", pair24 + back24),
        File(2, 2, 32, "", Colours({kB, kA, kA, kB})),
        File(2, 2, 8, full256, Number(0x0001, 4) + Number(0x0100, 4)),
        File(2, 2, 4, full16, Number(0x10, 4) + Number(0x01, 4)),
        File(2, 2, 1, palette, Number(0x80, 4) + Number(0x40, 4)),
    };
    for (const std::string& file : files) {
        const std::unique_ptr<Surface> surface = DecodeBmp(file);
        ASSERT_NE(surface, nullptr) << &file - files;
        EXPECT_EQ(surface->At(0, 0), 0xff000000 | kA) << &file - files;
        EXPECT_EQ(surface->At(1, 0), 0xff000000 | kB);
        EXPECT_EQ(surface->At(0, 1), 0xff000000 | kB);
        EXPECT_EQ(surface->At(1, 1), 0xff000000 | kA);
    }
}

TEST(Bmp, RefusesDamagedAndHugeFiles) {
    const std::string good = File(2, 2, 24, "", std::string(16, 'x'));
    ASSERT_NE(DecodeBmp(good), nullptr);
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_EQ(DecodeBmp(good.substr(0, length)), nullptr) << length;
    }
    const std::pair<std::size_t, std::uint32_t> changes[] = {
        {10, 0}, {10, 0xffffffff}, {14, 12},           {14, 0xfffffff0},   {18, 0}, {18, 0x80000000}, {18, 9000},
        {22, 0}, {22, 0x80000000}, {26, 2 | 24 << 16}, {26, 1 | 16 << 16}, {30, 1}};
    for (const auto& [place, value] : changes) {
        std::string bad = good;
        bad.replace(place, 4, Number(value, 4));
        EXPECT_EQ(DecodeBmp(bad), nullptr) << place << " " << value;
    }
}

TEST(Bmp, BecomesABitmapFromItsResource) {
    const std::string file = File(1, 1, 24, "", Number(kA, 4));
    const Resource resources[] = {{137, "BITMAP", std::as_bytes(std::span(file))}};
    const ResourceTable table(resources);
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(137));
    EXPECT_EQ(bitmap.GetSurface()->At(0, 0), 0xff000000 | kA);
    EXPECT_FALSE(bitmap.LoadBitmap(138));
    EXPECT_EQ(bitmap.GetSize(), CSize());
}

}  // namespace
}  // namespace veldan
