#include "platform/draw/Image.h"

#include "platform/core/File.h"
#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veldan {
namespace {

std::string MakeFile(int width, int height, std::uint32_t pixel) {
    Surface surface(width, height);
    for (int y = 0; y < height; ++y) {
        std::fill_n(surface.Row(y), width, pixel);
    }
    return EncodePng(surface, PngAlpha::Keep);
}

TEST(Image, OutlivesItsFileAndTheLossOfItsPixels) {
    const std::string path = testing::TempDir() + "outlived.png";
    ASSERT_TRUE(WriteFileWhole(path, MakeFile(7, 5, 0x80402010)));
    const auto image = Image::FromFile(path);
    ASSERT_TRUE(DeleteFile(path));
    EXPECT_EQ(image->GetWidth(), 7);
    EXPECT_EQ(image->GetHeight(), 5);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(image->Pixels());
        EXPECT_EQ(image->Pixels()->At(6, 4), 0x80402010);
        image->DropPixels();
    }
    EXPECT_EQ(image->GetLastStatus(), DrawStatus::Ok);
}

TEST(Image, IsDeadWithoutAFileOrAnImageInIt) {
    const std::string folder = testing::TempDir();
    const auto image = Image::FromFile(folder + "no such file.png");
    EXPECT_EQ(image->GetWidth(), 0);
    EXPECT_EQ(image->Pixels(), nullptr);
    EXPECT_EQ(image->GetLastStatus(), DrawStatus::FileNotFound);
    EXPECT_EQ(image->GetLastStatus(), DrawStatus::Ok) << "the status is kept until it is read";
    EXPECT_EQ(Image::FromFile(folder)->GetLastStatus(), DrawStatus::FileNotFound);
    EXPECT_EQ(Image::FromBytes(std::string_view("text"))->GetLastStatus(), DrawStatus::NotAnImage);
    EXPECT_EQ(Image::FromBytes(std::string_view())->GetHeight(), 0);
    const std::string file = MakeFile(2, 2, 0xff0000ff);
    EXPECT_EQ(Image::FromBytes(file + std::string(Image::kLargestFile, ' '))->GetWidth(), 0);
    const std::string path = folder + "long.png";
    ASSERT_TRUE(WriteFileWhole(path, file));
    const std::string padding(Image::kLongestPath - path.size(), '/');
    EXPECT_EQ(Image::FromFile(padding + path)->GetWidth(), 2);
    EXPECT_EQ(Image::FromFile('/' + padding + path)->GetWidth(), 0) << "the path is too long";
}

TEST(Image, DiesWhenItsPixelsCannotBeDecoded) {
    std::string file = MakeFile(20, 20, 0xff0000ff);
    file[file.find("IDAT") + 6] ^= 1;
    const auto image = Image::FromBytes(file);
    EXPECT_EQ(image->GetWidth(), 20);
    EXPECT_EQ(image->Pixels(), nullptr);
    EXPECT_EQ(image->GetWidth(), 0);
    EXPECT_EQ(image->GetLastStatus(), DrawStatus::NotAnImage);
}

}  // namespace
}  // namespace veldan
