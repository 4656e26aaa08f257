#include "platform/draw/Graphics.h"

#include "draw/Canvas.h"
#include "platform/draw/Png.h"
#include "platform/draw/Region.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veldan {
namespace {

constexpr ColorMatrix kBrighten{
    {{1.05F, 0, 0, 0, 0}, {0, 1.05F, 0, 0, 0}, {0, 0, 1.05F, 0, 0}, {0, 0, 0, 1, 0}, {0.15F, 0.15F, 0.15F, 0, 1}}};
constexpr ColorMatrix kDarken{
    {{1.05F, 0, 0, 0, 0}, {0, 1.05F, 0, 0, 0}, {0, 0, 1.05F, 0, 0}, {0, 0, 0, 1, 0}, {-0.15F, -0.15F, -0.15F, 0, 1}}};
constexpr ColorMatrix kGray{{{0.3F, 0.3F, 0.3F, 0, 0},
                             {0.59F, 0.59F, 0.59F, 0, 0},
                             {0.11F, 0.11F, 0.11F, 0, 0},
                             {0, 0, 0, 1, 0},
                             {0, 0, 0, 0, 1}}};

// An image of which every pixel comes from `pixel(x, y)`.
template <class Pixel>
std::unique_ptr<Image> MakeImage(int width, int height, Pixel pixel) {
    Surface surface(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            surface.Row(y)[x] = pixel(x, y);
        }
    }
    return Image::FromBytes(EncodePng(surface, PngAlpha::Keep));
}

std::unique_ptr<Image> MakePlain(int width, int height, std::uint32_t pixel) {
    return MakeImage(width, height, [=](int, int) { return pixel; });
}

std::uint32_t Transform(std::uint32_t pixel, const ColorMatrix& matrix) {
    Surface surface(1, 1);
    surface.Row(0)[0] = pixel;
    ApplyColorMatrix(surface, matrix);
    return surface.At(0, 0);
}

TEST(ColorMatrixOfStates, ScalesShiftsAndClampsTheTrueColours) {
    EXPECT_NEAR(static_cast<int>(Transform(0xffffffff, kDarken) & 0xff), 229.5, 0.6);
    EXPECT_EQ(Transform(0xff000000, kDarken), 0xff000000);
    EXPECT_EQ(Transform(0xffffffff, kBrighten), 0xffffffff);
    EXPECT_EQ(Transform(0xff000000, kBrighten), 0xff262626);
    EXPECT_EQ(Transform(0xffff0000, kGray), 0xff4d4d4d);
    for (const ColorMatrix& matrix : {kBrighten, kDarken, kGray}) {
        EXPECT_EQ(Transform(0, matrix), 0U);
        EXPECT_EQ(Transform(0x80402010, matrix) >> 24, 0x80U) << "the transparency is left alone";
    }
    // White at half: brightening must not go beyond its alpha, darkening takes 0.9 of it.
    EXPECT_EQ(Transform(0x80808080, kBrighten), 0x80808080);
    EXPECT_EQ(Transform(0x80808080, kDarken), 0x80737373);
}

TEST(Graphics, DrawsUnscaledPixelsExactly) {
    Canvas canvas(20, 20);
    const auto colour = [](int x, int y) { return 0xff000000U | static_cast<unsigned>(x * 20 + y * 4000); };
    const auto image = MakeImage(10, 10, colour);
    Graphics graphics(canvas.dc);
    canvas.dc.SetWindowOrg(-1, -1);
    EXPECT_EQ(graphics.DrawImageRectRect(image.get(), {3, 4, 5, 6}, {2, 1, 5, 6}), DrawStatus::Ok);
    const CRect drawn{4, 5, 9, 11};
    EXPECT_TRUE(canvas.Shows([&](int x, int y) { return drawn.Contains({x, y}) ? colour(x - 2, y - 4) : 0; }));
}

TEST(Graphics, TakesAStretchedSliceWithoutItsNeighbours) {
    for (const auto& [width, height] : {std::pair{35, 35}, {3, 50}, {1, 1}, {10, 10}}) {
        const auto isSlice = [width = width](int x, int) { return x / width == 1 ? kRedPixel : kBluePixel; };
        const auto image = MakeImage(4 * width, height, isSlice);
        const auto left = static_cast<float>(width);
        Canvas canvas(30, 30);
        Graphics(canvas.dc).DrawImageRectRect(image.get(), {4, 5, 16, 20}, {left, 0, left, static_cast<float>(height)});
        const CRect drawn{4, 5, 20, 25};
        EXPECT_TRUE(canvas.Shows([&](int x, int y) { return drawn.Contains({x, y}) ? kRedPixel : 0; })) << width;
    }
    const auto mixed = MakeImage(32, 32, [](int x, int y) { return (x + y) % 2 ? 0xffffffff : 0xff000000; });
    Canvas canvas(8, 8);
    Graphics(canvas.dc).DrawImageRectRect(mixed.get(), {0, 0, 8, 8}, {0, 0, 32, 32});
    EXPECT_NEAR(static_cast<int>(canvas.At(4, 4) & 0xff), 127, 4) << "shrinking keeps the mean colour";
}

TEST(Graphics, MirrorsWithItsPicture) {
    const auto picture = [](int x, int y) { return 0xff000000U | static_cast<unsigned>(x * x * 2 + y * 5 * 256); };
    const auto image = MakeImage(10, 10, picture);
    const auto mirrored = MakeImage(10, 10, [&](int x, int y) { return picture(9 - x, y); });
    Canvas a(16, 16);
    Canvas b(16, 16);
    Graphics(a.dc).DrawImageRectRect(image.get(), {0, 0, 16, 16}, {0, 0, 10, 10});
    Graphics(b.dc).DrawImageRectRect(mirrored.get(), {0, 0, 16, 16}, {0, 0, 10, 10});
    const auto differs = [](std::uint32_t p, std::uint32_t q, int shift) {
        return std::abs(static_cast<int>(p >> shift & 0xff) - static_cast<int>(q >> shift & 0xff)) > 1;
    };
    EXPECT_EQ(a.Count([&](int x, int y) {
        return differs(a.At(x, y), b.At(15 - x, y), 0) || differs(a.At(x, y), b.At(15 - x, y), 8);
    }),
              0);
}

TEST(Graphics, DrawsNothingForSourceOutsideOfTheImageOrPlacesOutsideOfTheClip) {
    const auto image = MakePlain(10, 10, kRedPixel);
    Canvas canvas(20, 20);
    Graphics graphics(canvas.dc);
    EXPECT_EQ(graphics.DrawImageRectRect(image.get(), {0, 0, 20, 20}, {-5, -5, 20, 20}), DrawStatus::Ok);
    graphics.DrawImageRectRect(image.get(), {0, 0, 20, 20}, {30, 0, 5, 5});
    EXPECT_EQ(canvas.CountInk({0, 0, 20, 20}), 100);
    EXPECT_EQ(canvas.CountInk({5, 5, 15, 15}), 100);
    CDC clipped;
    clipped.Attach(CreateSurfaceDC(canvas.bitmap.GetSurface(), {0, 0}, Region(CRect{0, 0, 5, 5})));
    Graphics corner(clipped);
    corner.DrawImageRectRect(image.get(), {-2, -2, 10, 10}, {0, 0, 10, 10});
    corner.DrawImageRectRect(image.get(), {0, 0, 20, 20}, {0, 0, 10, 10});
    corner.FillVerticalGradient({0, 0, 20, 20}, 20, kRed, kBlue);
    EXPECT_EQ(canvas.CountInk({0, 0, 20, 20}), 125);
    EXPECT_EQ(canvas.CountInk({0, 0, 5, 5}), 25);
}

TEST(Graphics, AppliesTheMatrixToTheImageOnly) {
    ImageAttributes attributes;
    attributes.SetColorMatrix(kGray);
    const auto image = MakeImage(2, 1, [](int x, int) { return x ? 0xffff0000 : 0; });
    Canvas canvas(3, 1);
    canvas.dc.FillSolidRect({0, 0, 3, 1}, kBlue);
    Graphics(canvas.dc).DrawImageRectRect(MakePlain(1, 1, 0x80800000).get(), {2, 0, 1, 1}, {0, 0, 1, 1});
    EXPECT_EQ(canvas.At(2, 0), 0xff80007f) << "it is blended over what is there";
    Graphics(canvas.dc).DrawImageRectRect(image.get(), {0, 0, 2, 1}, {0, 0, 2, 1}, &attributes);
    EXPECT_EQ(canvas.At(0, 0), kBluePixel);
    EXPECT_EQ(canvas.At(1, 0), 0xff4d4d4d);
    EXPECT_EQ(image->Pixels()->At(1, 0), 0xffff0000);
}

TEST(Graphics, StoresAFailureAndDrawsNothing) {
    Canvas canvas(4, 4);
    Graphics graphics(canvas.dc);
    const auto dead = Image::FromBytes(std::string_view("nothing"));
    graphics.DrawImageRectRect(dead.get(), {0, 0, 4, 4}, {0, 0, 0, 0});
    EXPECT_EQ(graphics.GetLastStatus(), DrawStatus::InvalidParameter);
    EXPECT_EQ(graphics.GetLastStatus(), DrawStatus::Ok);
    EXPECT_EQ(graphics.DrawImageRectRect(nullptr, {0, 0, 4, 4}, {0, 0, 4, 4}), DrawStatus::InvalidParameter);
    const auto image = MakePlain(4, 4, kRedPixel);
    EXPECT_EQ(graphics.DrawImageRectRect(image.get(), {0, 0, NAN, 4}, {0, 0, 4, 4}), DrawStatus::InvalidParameter);
    EXPECT_EQ(graphics.DrawImageRectRect(image.get(), {0, 0, 4, 4}, {0, 0, 0, 0}), DrawStatus::InvalidParameter);
    EXPECT_EQ(graphics.FillVerticalGradient({0, 0, 4, 4}, 0, kRed, kBlue), DrawStatus::InvalidParameter);
    EXPECT_EQ(canvas.CountInk({0, 0, 4, 4}), 0);
}

TEST(Graphics, RunsAGradientEvenlyDownAndBeginsAnew) {
    Canvas canvas(3, 40);
    const auto grey = [&](int y) { return static_cast<int>(canvas.At(1, y) & 0xff); };
    Graphics(canvas.dc).FillVerticalGradient({0, 0, 3, 40}, 20, RGB(0, 0, 0), RGB(255, 255, 255));
    for (int y = 0; y < 20; ++y) {
        EXPECT_NEAR(grey(y), (y + 0.5) * 255 / 20, 0.51);
        EXPECT_NEAR(grey(y) + grey(19 - y), 255, 1) << "mirrored rows add up";
        EXPECT_EQ(grey(y), grey(y + 20));
    }
    EXPECT_TRUE(canvas.Shows([&](int, int y) { return canvas.At(0, y); }));
}

}  // namespace
}  // namespace veldan
