#include "draw/Canvas.h"
#include "platform/draw/Graphics.h"
#include "platform/draw/Image.h"
#include "platform/draw/Png.h"

#include <gtest/gtest.h>

#include <functional>

namespace veldan {
namespace {

constexpr CRect kText = {10, 8, 190, 60};

struct Drawing {
    const char* name;
    std::function<void(CDC&)> draw;
    int slack;  // by how much the box may be larger than what can be seen, on each side
};

void DrawScaledPicture(CDC& dc) {
    Surface picture(9, 9);
    std::fill_n(picture.Row(0), 81, kRedPixel);
    const auto image = Image::FromBytes(EncodePng(picture, PngAlpha::Keep));
    Graphics(dc).DrawImageRectRect(image.get(), {30.5F, 20.25F, 40, 13}, {0, 0, 9, 9});
}

void DrawTextOn(CDC& dc, std::string_view text, UINT format) {
    CRect rect = kText;
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kRed);
    dc.DrawText(text, rect, format);
}

class Bounds : public testing::TestWithParam<Drawing> {};

TEST_P(Bounds, HoldAllThatWasDrawnAndLittleMore) {
    Canvas canvas(200, 70);
    EXPECT_TRUE(canvas.dc.TakeBoundsRect().IsEmpty());
    GetParam().draw(canvas.dc);
    const CRect bounds = canvas.dc.TakeBoundsRect();
    const CRect seen = canvas.Around([&](int x, int y) { return canvas.At(x, y) != 0; });
    ASSERT_FALSE(seen.IsEmpty());
    EXPECT_EQ(bounds.Intersect(seen), seen);
    EXPECT_EQ(seen.Inflate(GetParam().slack, GetParam().slack).Intersect(bounds), bounds);
    EXPECT_TRUE(canvas.dc.TakeBoundsRect().IsEmpty()) << "each call starts anew";
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, Bounds,
    testing::Values(
        Drawing{"Fills",
                [](CDC& dc) {
                    dc.FillSolidRect({-5, 60, 20, 90}, kRed);
                },
                0},
        Drawing{"Lines", [](CDC& dc) { dc.MoveTo(3, 3), dc.LineTo(40, 30); }, 1},
        Drawing{"Pictures", DrawScaledPicture, 1},
        Drawing{"PlainText", [](CDC& dc) { DrawTextOn(dc, "Plain, jQ", DT_SINGLELINE); }, 0},
        Drawing{"AccentedText", [](CDC& dc) { DrawTextOn(dc, "\u00c5ngstr\u00f6m", DT_SINGLELINE); }, 3},
        Drawing{"WrappedText", [](CDC& dc) { DrawTextOn(dc, "some words in several lines", DT_WORDBREAK); }, 3},
        Drawing{"CutText",
                [](CDC& dc) { DrawTextOn(dc, "\u00dc a line that is longer than its place is", DT_SINGLELINE); }, 3}),
    [](const testing::TestParamInfo<Drawing>& drawing) { return drawing.param.name; });

TEST(BoundsOfAContext, AreLogicalAndThoseOfItsOwnBitmap) {
    Canvas canvas(100, 50);
    canvas.dc.SetWindowOrg(-10, -5);
    canvas.dc.FillSolidRect({0, 0, 4, 4}, kRed);
    EXPECT_EQ(canvas.dc.TakeBoundsRect(), (CRect{0, 0, 4, 4}));
    canvas.dc.FillSolidRect({50, 20, 60, 30}, kRed);
    CBitmap smaller;
    smaller.CreateCompatibleBitmap(&canvas.dc, 20, 20);
    canvas.dc.SelectObject(&smaller);
    EXPECT_TRUE(canvas.dc.TakeBoundsRect().IsEmpty());
}

}  // namespace
}  // namespace veldan
