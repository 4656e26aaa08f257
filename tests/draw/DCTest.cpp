#include "draw/Canvas.h"
#include "platform/draw/Region.h"

#include <gtest/gtest.h>

#include <climits>

namespace veldan {
namespace {

TEST(DC, FillsOnlyTheRectangleAndFramesInsideOfIt) {
    Canvas canvas(6, 6);
    EXPECT_EQ(canvas.CountInk({0, 0, 6, 6}), 0);
    canvas.dc.FrameRect({1, 1, 5, 5}, CBrush(kRed));
    EXPECT_EQ(canvas.CountInk({0, 0, 6, 6}), 12);
    EXPECT_EQ(canvas.At(1, 1), kRedPixel);
    EXPECT_EQ(canvas.At(4, 4), kRedPixel);
    EXPECT_EQ(canvas.CountInk({2, 2, 4, 4}), 0);
    canvas.dc.FillSolidRect({1, 1, 5, 5}, kBlue);
    EXPECT_EQ(canvas.CountInk({0, 0, 6, 6}), 16);
    EXPECT_EQ(canvas.At(4, 4), kBluePixel);
}

TEST(DC, LeavesTheLastPixelOfALineOut) {
    Canvas canvas(8, 8);
    CPen pen(1, kRed);
    canvas.dc.SelectObject(&pen);
    canvas.dc.MoveTo(3, 0);
    canvas.dc.LineTo(3, 7);
    EXPECT_EQ(canvas.At(3, 6), kRedPixel);
    EXPECT_EQ(canvas.At(3, 7), 0U);
    canvas.dc.LineTo(0, 7);
    EXPECT_EQ(canvas.At(3, 7), kRedPixel);
    EXPECT_EQ(canvas.At(0, 7), 0U);
    EXPECT_EQ(canvas.CountInk({0, 0, 8, 8}), 7 + 3);
    EXPECT_EQ(canvas.dc.MoveTo(6, 1), (CPoint{0, 7}));
    canvas.dc.LineTo(4, 2);
    EXPECT_EQ(canvas.CountInk({0, 0, 8, 8}), 7 + 3 + 2) << "a slanted line is one pixel a step";
}

TEST(DC, RoundsCornersTheSameOnAllSides) {
    Canvas canvas(20, 12);
    CPen pen(1, kRed);
    CBrush brush(kBlue);
    canvas.dc.SelectObject(&pen);
    canvas.dc.SelectObject(&brush);
    canvas.dc.RoundRect({0, 0, 20, 12}, {8, 8});
    EXPECT_EQ(canvas.At(0, 0), 0U);
    EXPECT_EQ(canvas.At(10, 0), kRedPixel);
    EXPECT_EQ(canvas.At(0, 6), kRedPixel);
    EXPECT_EQ(canvas.At(10, 6), kBluePixel);
    EXPECT_TRUE(canvas.Shows([&](int x, int y) { return canvas.At(19 - x, y); }));
    EXPECT_TRUE(canvas.Shows([&](int x, int y) { return canvas.At(x, 11 - y); }));
}

TEST(DC, ClipsToARegionOfTheSurface) {
    auto surface = std::make_shared<Surface>(20, 10);
    Region clip(CRect{2, 2, 6, 6});
    clip.Add(CRect{10, 4, 30, 5});
    CDC dc;
    dc.Attach(CreateSurfaceDC(surface, {2, 2}, clip));
    EXPECT_EQ(dc.GetClipBox(), (CRect{0, 0, 18, 4}));
    dc.FillSolidRect({-100, -100, 100, 100}, kRed);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(surface->At(x, y), clip.Contains({x, y}) ? kRedPixel : 0);
        }
    }
}

TEST(DC, CopiesABlockAndLeavesOutWhatTheSourceHasNot) {
    Canvas source(4, 4);
    source.dc.FillSolidRect({0, 0, 4, 4}, kRed);
    source.dc.FillSolidRect({3, 3, 4, 4}, kBlue);
    Canvas target(10, 10);
    EXPECT_TRUE(target.dc.BitBlt(1, 2, 8, 8, &source.dc, 2, 2, SRCCOPY));
    EXPECT_EQ(target.CountInk({0, 0, 10, 10}), 4);
    EXPECT_EQ(target.At(1, 2), kRedPixel);
    EXPECT_EQ(target.At(2, 3), kBluePixel);
    EXPECT_TRUE(target.dc.BitBlt(0, 0, 0, 0, &source.dc, 0, 0, SRCCOPY));
    EXPECT_FALSE(target.dc.BitBlt(0, 0, 4, 4, &source.dc, 0, 0, 0x42));
}

TEST(DC, MovesPixelsWithinABitmapWithoutSmearing) {
    for (const CPoint by : {CPoint{1, 0}, CPoint{-1, 0}, CPoint{0, 1}, CPoint{0, -1}, CPoint{2, -1}, CPoint{-1, 2}}) {
        Canvas canvas(9, 9);
        const auto mark = [](int x, int y) { return 0xff000000U | static_cast<unsigned>(x << 8 | y); };
        for (int i = 0; i < 9 * 9; ++i) {
            canvas.bitmap.GetSurface()->Row(i / 9)[i % 9] = mark(i % 9, i / 9);
        }
        canvas.dc.BitBlt(2 + by.x, 2 + by.y, 5, 5, &canvas.dc, 2, 2, SRCCOPY);
        const CRect moved = CRect{2, 2, 7, 7}.Offset(by);
        EXPECT_TRUE(canvas.Shows([&](int x, int y) {
            return moved.Contains({x, y}) ? mark(x - by.x, y - by.y) : mark(x, y);
        }));
    }
}

TEST(DC, IsQuietWithoutAHandleOrABitmap) {
    CDC none;
    CDC empty;
    EXPECT_TRUE(empty.CreateCompatibleDC(&none));
    Canvas canvas(4, 4);
    CRect rect{0, 0, 4, 4};
    for (CDC* pDC : {&none, &empty}) {
        EXPECT_FALSE(pDC->BitBlt(0, 0, 4, 4, &canvas.dc, 0, 0, SRCCOPY));
        EXPECT_FALSE(canvas.dc.BitBlt(0, 0, 4, 4, pDC, 0, 0, SRCCOPY));
        pDC->FillSolidRect(rect, kRed);
        pDC->RoundRect(rect, {2, 2});
        pDC->LineTo(3, 3);
        pDC->DrawText("text", rect, DT_LEFT);
        EXPECT_TRUE(pDC->GetClipBox().IsNull());
        EXPECT_EQ(pDC->GetSurface(), nullptr);
    }
    EXPECT_FALSE(none.DeleteDC());
    EXPECT_EQ(canvas.CountInk({0, 0, 4, 4}), 0);
}

TEST(DC, GivesBackWhatWasSelectedBefore) {
    Canvas canvas(4, 4);
    CBitmap other;
    other.CreateCompatibleBitmap(&canvas.dc, 2, 2);
    EXPECT_EQ(canvas.dc.SelectObject(&other), &canvas.bitmap);
    canvas.dc.FillSolidRect({0, 0, 4, 4}, kRed);
    EXPECT_EQ(canvas.dc.SelectObject(&canvas.bitmap), &other);
    EXPECT_EQ(canvas.CountInk({0, 0, 4, 4}), 0);
    EXPECT_EQ(other.GetSurface()->At(1, 1), kRedPixel);
    CPen pen(1, kRed);
    EXPECT_EQ(canvas.dc.SelectObject(&pen), nullptr);
    EXPECT_EQ(canvas.dc.SelectObject(static_cast<CPen*>(nullptr)), &pen);
    EXPECT_EQ(canvas.dc.SetTextColor(kRed), RGB(0, 0, 0));
    EXPECT_EQ(canvas.dc.SetTextColor(kBlue), kRed);
    EXPECT_EQ(canvas.dc.SetBkMode(TRANSPARENT), OPAQUE);
    {
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(&canvas.dc, 3, 3);
        canvas.dc.SelectObject(&bitmap);
    }
    canvas.dc.FillSolidRect({0, 0, 3, 3}, kRed);
    EXPECT_EQ(canvas.dc.GetSurface()->At(2, 2), kRedPixel) << "it keeps the pixels when the object goes";
}

TEST(DC, AllowsBitmapsWithoutPixelsAndRefusesImpossibleOnes) {
    Canvas canvas(0, 7);
    EXPECT_TRUE(canvas.bitmap.GetSurface());
    CRect rect{0, 0, 9, 9};
    canvas.dc.FillSolidRect(rect, kRed);
    canvas.dc.DrawText("text", rect, DT_LEFT);
    EXPECT_TRUE(canvas.dc.GetClipBox().IsNull());
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.CreateCompatibleBitmap(nullptr, -1, 5));
    EXPECT_FALSE(bitmap.CreateCompatibleBitmap(nullptr, 30000, 30000));
    EXPECT_EQ(bitmap.GetSize(), CSize());
}

TEST(DC, StandsAnyRectangle) {
    Canvas canvas(3, 3);
    const CRect insideOut = CRect{0, 0, 3, 1}.Inflate(-1, -1);
    canvas.dc.FillSolidRect(insideOut, kRed);
    canvas.dc.FrameRect(insideOut, CBrush(kRed));
    canvas.dc.RoundRect(insideOut, {5, 5});
    EXPECT_EQ(canvas.CountInk({0, 0, 3, 3}), 0);
    canvas.dc.SetWindowOrg(INT_MIN, INT_MAX);
    canvas.dc.FillSolidRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kRed);
    canvas.dc.RoundRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MAX, 1});
    canvas.dc.BitBlt(INT_MAX, INT_MIN, INT_MAX, INT_MAX, &canvas.dc, INT_MIN, INT_MAX, SRCCOPY);
    canvas.dc.SetWindowOrg(0, 0);
    canvas.dc.FillSolidRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kBlue);
    EXPECT_EQ(canvas.At(2, 2), kBluePixel);
}

}  // namespace
}  // namespace veldan
