#include "draw/Canvas.h"
#include "platform/draw/Region.h"
#include "platform/draw/SystemColors.h"

#include <gtest/gtest.h>

namespace veldan {
namespace {

TEST(Blocks, TransparentCopyByMaskLeavesTheKeyColourOut) {
    constexpr COLORREF kKey = RGB(255, 0, 255);
    Canvas source(4, 1);
    source.dc.FillSolidRect({0, 0, 4, 1}, kKey);
    source.dc.FillSolidRect({1, 0, 3, 1}, RGB(18, 52, 86));
    Canvas target(4, 1);
    target.dc.FillSolidRect({0, 0, 4, 1}, kBlue);
    CDC mask;
    mask.CreateCompatibleDC(nullptr);
    CBitmap monochrome;
    ASSERT_TRUE(monochrome.CreateMonochromeBitmap(4, 1));
    mask.SelectObject(&monochrome);
    source.dc.SetBkColor(kKey);
    EXPECT_TRUE(mask.BitBlt(0, 0, 4, 1, &source.dc, 0, 0, SRCCOPY));
    EXPECT_EQ(monochrome.GetSurface()->At(0, 0), 0xffffffffU);
    EXPECT_EQ(monochrome.GetSurface()->At(1, 0), 0xff000000U);
    target.dc.SetBkColor(RGB(255, 255, 255));
    target.dc.SetTextColor(RGB(0, 0, 0));
    EXPECT_TRUE(target.dc.BitBlt(0, 0, 4, 1, &source.dc, 0, 0, SRCINVERT));
    EXPECT_TRUE(target.dc.BitBlt(0, 0, 4, 1, &mask, 0, 0, SRCAND));
    EXPECT_TRUE(target.dc.BitBlt(0, 0, 4, 1, &source.dc, 0, 0, SRCINVERT));
    EXPECT_TRUE(target.Shows([](int x, int) { return x == 1 || x == 2 ? 0xff123456U : kBluePixel; }));
    EXPECT_FALSE(target.dc.BitBlt(0, 0, 4, 1, &source.dc, 0, 0, SRCAND + 1)) << "an unknown operation";
}

TEST(Blocks, MonochromePixelsTakeTheTargetsColours) {
    CDC mask;
    mask.CreateCompatibleDC(nullptr);
    CBitmap monochrome;
    monochrome.CreateMonochromeBitmap(2, 1);
    mask.SelectObject(&monochrome);
    mask.FillSolidRect({1, 0, 2, 1}, RGB(255, 255, 255));
    Canvas target(2, 1);
    target.dc.SetTextColor(kRed);
    target.dc.SetBkColor(kBlue);
    target.dc.BitBlt(0, 0, 2, 1, &mask, 0, 0, SRCCOPY);
    EXPECT_TRUE(target.Shows([](int x, int) { return x == 0 ? kRedPixel : kBluePixel; }));
}

TEST(Blocks, StretchingTakesTheNearestPixelOrTheAverage) {
    Canvas source(4, 2);
    source.dc.FillSolidRect({0, 0, 2, 2}, kRed);
    source.dc.FillSolidRect({2, 0, 4, 2}, kBlue);
    Canvas large(8, 4);
    EXPECT_TRUE(large.dc.StretchBlt({0, 0, 8, 4}, &source.dc, {0, 0, 4, 2}, SRCCOPY));
    EXPECT_TRUE(large.Shows([](int x, int) { return x < 4 ? kRedPixel : kBluePixel; }));
    Canvas small(1, 1);
    EXPECT_EQ(small.dc.SetStretchBltMode(HALFTONE), COLORONCOLOR);
    EXPECT_TRUE(small.dc.StretchBlt({0, 0, 1, 1}, &source.dc, {0, 0, 4, 2}, SRCCOPY));
    EXPECT_EQ(small.At(0, 0), 0xff800080U);
    Canvas third(3, 1);
    third.dc.SetStretchBltMode(HALFTONE);
    EXPECT_TRUE(third.dc.StretchBlt({0, 0, 3, 1}, &source.dc, {0, 0, 4, 2}, SRCCOPY));
    EXPECT_EQ(third.At(1, 0), 0xff800080U) << "two thirds of a pixel on either side";
    EXPECT_EQ(third.At(0, 0), kRedPixel);
}

TEST(Blocks, SourceThatRunsOutLeavesTheRest) {
    Canvas source(2, 1);
    source.dc.FillSolidRect({0, 0, 2, 1}, kRed);
    for (const int mode : {COLORONCOLOR, HALFTONE}) {
        Canvas target(8, 1);
        target.dc.FillSolidRect({0, 0, 8, 1}, kBlue);
        target.dc.SetStretchBltMode(mode);
        EXPECT_TRUE(target.dc.StretchBlt({0, 0, 8, 1}, &source.dc, {0, 0, 4, 1}, SRCCOPY));
        EXPECT_TRUE(target.Shows([](int x, int) { return x < 4 ? kRedPixel : kBluePixel; })) << mode;
        EXPECT_FALSE(target.dc.StretchBlt({0, 0, 0, 1}, &source.dc, {0, 0, 4, 1}, SRCCOPY));
    }
}

TEST(Shapes, FocusRectangleLeavesNoTraceWhenDrawnTwice) {
    for (const CRect& rect : {CRect{2, 2, 9, 7}, CRect{2, 2, 9, 3}, CRect{2, 2, 3, 9}, CRect{-3, -3, 30, 30}}) {
        Canvas canvas(12, 12);
        canvas.dc.FillSolidRect({0, 0, 12, 12}, RGB(10, 20, 30));
        canvas.dc.DrawFocusRect(rect);
        const CRect visible = rect.Intersect({0, 0, 12, 12});
        const auto isChanged = [&](int x, int y) { return canvas.At(x, y) != 0xff0a141eU; };
        EXPECT_EQ(canvas.Count(isChanged) > 0, rect.left >= 0);
        EXPECT_EQ(canvas.Count([&](int x, int y) { return isChanged(x, y) && !visible.Contains({x, y}); }), 0);
        EXPECT_EQ(canvas.Count([&](int x, int y) { return isChanged(x, y) && isChanged(x + 1, y); }), 0)
            << "only every second pixel";
        canvas.dc.DrawFocusRect(rect);
        EXPECT_TRUE(canvas.Shows([](int, int) { return 0xff0a141eU; }));
    }
}

TEST(Shapes, HollowBrushFillsNothing) {
    Canvas canvas(10, 10);
    CBrush hollow = CBrush::Hollow();
    CPen pen(1, kRed);
    canvas.dc.FillRect({0, 0, 10, 10}, hollow);
    canvas.dc.FrameRect({0, 0, 10, 10}, hollow);
    EXPECT_TRUE(canvas.Shows([](int, int) { return 0U; }));
    canvas.dc.SelectObject(&hollow);
    canvas.dc.SelectObject(&pen);
    canvas.dc.RoundRect({0, 0, 10, 10}, {6, 6});
    EXPECT_EQ(canvas.At(5, 0), kRedPixel);
    EXPECT_EQ(canvas.At(0, 5), kRedPixel);
    EXPECT_EQ(canvas.At(9, 5), kRedPixel);
    EXPECT_EQ(canvas.At(5, 9), kRedPixel);
    EXPECT_EQ(canvas.At(0, 0), 0U);
    EXPECT_EQ(canvas.CountInk({3, 3, 7, 7}), 0);
}

TEST(Shapes, RoundedRegionIsWhatRoundRectFills) {
    Canvas canvas(60, 50);
    CBrush brush(kRed);
    CPen pen(1, kRed);
    canvas.dc.SelectObject(&brush);
    canvas.dc.SelectObject(&pen);
    canvas.dc.RoundRect({2, 2, 57, 48}, {44, 44});
    const Region region = Region::RoundRect({2, 2, 57, 48}, {44, 44});
    EXPECT_EQ(region.Bounds(), (CRect{2, 2, 57, 48}));
    EXPECT_TRUE(canvas.Shows([&](int x, int y) { return region.Contains({x, y}) ? kRedPixel : 0U; }));
}

TEST(Shapes, PolygonHoldsThePixelsInsideAnOddNumberOfTimes) {
    const CPoint triangle[] = {{0, 0}, {8, 0}, {0, 8}};
    const Region region = Region::Polygon(triangle);
    EXPECT_TRUE(region.Contains({0, 0}) && region.Contains({0, 6}));
    EXPECT_FALSE(region.Contains({4, 4}) || region.Contains({8, 0}));
    const CPoint square[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    EXPECT_EQ(Region::Polygon(square), Region(CRect{0, 0, 4, 4}));
    const CPoint twice[] = {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {4, 2}, {4, 4}, {2, 4}, {2, 2}};
    EXPECT_FALSE(Region::Polygon(twice).Contains({3, 3})) << "a hole";
    EXPECT_TRUE(Region::Polygon(std::span(square).first(2)).IsEmpty());
    const CPoint far[] = {{0, 0}, {40000, 0}, {0, 4}};
    EXPECT_TRUE(Region::Polygon(far).IsEmpty());
}

}  // namespace
}  // namespace veldan
