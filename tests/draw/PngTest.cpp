#include "platform/draw/Png.h"

#include "platform/draw/Surface.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <zlib.h>

#include <algorithm>

namespace {

// What decoding has cost so far, whoever asked for it.
std::size_t g_unpacked = 0;
int g_steps = 0;

}  // namespace

extern "C" int inflate(z_streamp stream, int flush) {
    static auto* const pReal = reinterpret_cast<decltype(&inflate)>(dlsym(RTLD_NEXT, "inflate"));
    const uInt before = stream->avail_out;
    const int result = pReal(stream, flush);
    g_unpacked += before - stream->avail_out;
    ++g_steps;
    return result;
}

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

std::string Compressed(const std::string& bytes) {
    std::string data(compressBound(bytes.size()), '\0');
    uLongf size = data.size();
    compress2(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(),
              9);
    data.resize(size);
    return data;
}

std::string MakeFile(std::uint32_t width, std::uint32_t height, const std::string& format, const std::string& chunks) {
    return "\x89PNG\r\n\x1a\n" + Chunk("IHDR" + Number(width) + Number(height) + format) + chunks + Chunk("IEND");
}

// A file whose header promises what its data, compressed zeros, may not hold.
std::string MakeFile(std::uint32_t width, std::uint32_t height, char bitDepth, char colourType, std::size_t dataSize) {
    return MakeFile(width, height, {bitDepth, colourType, 0, 0, 0},
                    Chunk("IDAT" + Compressed(std::string(dataSize, '\0'))));
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

TEST(Png, UnpacksNoMoreThanTheRows) {
    g_unpacked = 0;
    EXPECT_TRUE(DecodePng(MakeFile(30, 20, 8, 6, 20 * 121 + 4000000)));
    EXPECT_LE(g_unpacked, 3U * 20 * 121);
}

// Each takes a decoder thousands of steps for a picture of four rows.
TEST(Png, RefusesDataMadeToKeepItBusy) {
    const std::string format("\x08\x06\0\0\0", 5);
    const std::string data = Compressed(std::string(4 * 17, '\0'));
    std::string emptyBlocks;
    for (int i = 0; i < 5000; ++i) {
        emptyBlocks.append("\0\0\0\xff\xff", 5);
    }
    std::string emptyChunks;
    std::string otherChunks;
    for (int i = 0; i < 5000; ++i) {
        emptyChunks += Chunk("IDAT");
        otherChunks += Chunk("teSt");
    }
    ASSERT_TRUE(DecodePng(MakeFile(4, 4, format, Chunk("IDAT" + data))));
    g_steps = 0;
    EXPECT_FALSE(DecodePng(MakeFile(4, 4, format, Chunk("IDAT" + data.substr(0, 2) + emptyBlocks + data.substr(2)))));
    EXPECT_FALSE(DecodePng(MakeFile(4, 4, format, emptyChunks + Chunk("IDAT" + data))));
    EXPECT_FALSE(DecodePng(MakeFile(4, 4, format, otherChunks + Chunk("IDAT" + data))));
    EXPECT_LT(g_steps, 1000);
}

TEST(Png, PutsInterlacedRowsWhereTheyBelong) {
    constexpr int kSide = 9;
    constexpr struct {
        int x, y, stepX, stepY;
    } kPasses[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    std::string rows;
    for (const auto& pass : kPasses) {
        for (int y = pass.y; y < kSide; y += pass.stepY) {
            rows += '\0';
            for (int x = pass.x; x < kSide; x += pass.stepX) {
                rows += static_cast<char>(y * kSide + x);
            }
        }
    }
    const auto picture =
        DecodePng(MakeFile(kSide, kSide, std::string("\x08\0\0\0\x01", 5), Chunk("IDAT" + Compressed(rows))));
    ASSERT_TRUE(picture);
    for (int i = 0; i < kSide * kSide; ++i) {
        EXPECT_EQ(picture->Row(0)[i] & 0xffffff, static_cast<std::uint32_t>(i) * 0x010101);
    }
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
