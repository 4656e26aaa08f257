#include "platform/draw/Png.h"

#include "platform/draw/Surface.h"

#include <gtest/gtest.h>

#include <zlib.h>

#include <algorithm>

namespace veldan {
namespace {

std::string Number(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

std::string Chunk(const std::string& nameAndData) {
    const auto* bytes = reinterpret_cast<const Bytef*>(nameAndData.data());
    const uLong sum = crc32(0, bytes, static_cast<uInt>(nameAndData.size()));
    return Number(static_cast<std::uint32_t>(nameAndData.size() - 4)) + nameAndData +
           Number(static_cast<std::uint32_t>(sum));
}

// A file whose header promises what its data, compressed zeros, may not hold.
std::string MakeFile(std::uint32_t width, std::uint32_t height, char bitDepth, char colourType, std::size_t dataSize) {
    std::string data(compressBound(dataSize), '\0');
    uLongf size = data.size();
    const std::string zeros(dataSize, '\0');
    compress2(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(zeros.data()), dataSize, 9);
    data.resize(size);
    const std::string format{bitDepth, colourType, 0, 0, 0};
    return "\x89PNG\r\n\x1a\n" + Chunk("IHDR" + Number(width) + Number(height) + format) + Chunk("IDAT" + data) +
           Chunk("IEND");
}

std::unique_ptr<Surface> MakePicture() {
    auto picture = std::make_unique<Surface>(5, 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            picture->Row(y)[x] = 0xff000000U | static_cast<std::uint32_t>(x * 50) << 16 | static_cast<unsigned>(y * 99);
        }
    }
    picture->Row(0)[0] = 0;
    picture->Row(1)[1] = 0x80402010;
    return picture;
}

// Flat, sloping and noisy rows are each stored in another way.
TEST(Png, ReadsBackPicturesOfEveryTexture) {
    Surface picture(35, 60);
    std::uint32_t noise = 1;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 35; ++x) {
            noise = noise * 1664525 + 1013904223;
            const auto slope = static_cast<std::uint32_t>(x * 3 + y * 2);
            picture.Row(y)[x] = 0xff000000U | (y < 20 ? 0x336699U : y < 40 ? slope << 16 | slope << 8 : noise >> 8);
        }
    }
    const auto small = MakePicture();
    for (const Surface* original : {&picture, small.get()}) {
        const auto copy = DecodePng(EncodePng(*original, PngAlpha::Keep));
        ASSERT_TRUE(copy);
        ASSERT_EQ(copy->Bounds(), original->Bounds());
        const CSize size = original->Bounds().Size();
        EXPECT_TRUE(std::equal(original->Row(0), original->Row(0) + size.cx * size.cy, copy->Row(0)));
    }
}

TEST(Png, RefusesAFileCutShortAnywhereOrWithAnyByteChanged) {
    const std::string file = EncodePng(*MakePicture(), PngAlpha::Keep);
    for (std::size_t place = 0; place < file.size(); ++place) {
        std::string damaged = file;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x15);
        EXPECT_FALSE(DecodePng(damaged)) << place;
        EXPECT_FALSE(DecodePng(file.substr(0, place))) << place;
    }
}

TEST(Png, RefusesAtItsHeaderWhatIsTooLarge) {
    EXPECT_EQ(ReadPngSize(MakeFile(8192, 4, 8, 0, 4 * 8193)), (CSize{8192, 4}));
    EXPECT_FALSE(ReadPngSize(MakeFile(8193, 4, 8, 0, 4 * 8194)));
    EXPECT_FALSE(ReadPngSize(MakeFile(0, 4, 8, 0, 100)));
    EXPECT_FALSE(ReadPngSize(MakeFile(8192, 8192, 1, 0, 8193 * 1024)));
    EXPECT_FALSE(ReadPngSize(MakeFile(1000, 1000, 8, 6, 1000))) << "more pixels than the data can hold";
}

TEST(Png, RefusesDataThatEndEarly) {
    EXPECT_TRUE(DecodePng(MakeFile(30, 20, 8, 6, 20 * 121)));
    EXPECT_FALSE(DecodePng(MakeFile(30, 20, 8, 6, 19 * 121)));
    EXPECT_TRUE(DecodePng(MakeFile(1200, 1000, 8, 0, 1000 * 1201)));
    EXPECT_FALSE(DecodePng(MakeFile(1200, 1000, 8, 0, 999 * 1201)));
}

TEST(Png, DecodesEveryKindToThePixelsOfTheScreen) {
    for (const auto& [bitDepth, colourType, rowSize] : {std::tuple{1, 0, 2}, {16, 0, 9}, {8, 2, 13}, {8, 4, 9}}) {
        const auto picture = DecodePng(MakeFile(4, 2, static_cast<char>(bitDepth), static_cast<char>(colourType),
                                                2 * static_cast<std::size_t>(rowSize)));
        ASSERT_TRUE(picture) << bitDepth << ' ' << colourType;
        EXPECT_EQ(picture->At(3, 1), colourType == 4 ? 0 : 0xff000000);
    }
    EXPECT_FALSE(DecodePng(MakeFile(4, 2, 3, 0, 10)));
}

}  // namespace
}  // namespace veldan
