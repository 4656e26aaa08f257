#include "controls/ControlFixture.h"
#include "controls/FrozenSurface.h"
#include "controls/GPMemDC.h"
#include "controls/GPResourceImage.h"
#include "draw/Canvas.h"
#include "platform/resource/Resource.h"
#include "resources/Dialogs.h"

namespace veldan {
namespace {

TEST(GPMemDCTest, WhatIsDrawnArrivesAtTheEnd) {
    Canvas target(40, 30);
    {
        CGPMemDC buffer(target.dc, {10, 10, 20, 20});
        buffer.FillSolidRect({0, 0, 40, 30}, RGB(0, 0, 9));
        EXPECT_EQ(target.At(15, 15), 0U);
    }
    EXPECT_EQ(target.At(10, 10), 0xff000009);
    EXPECT_EQ(target.At(19, 19), 0xff000009);
    EXPECT_EQ(target.At(20, 15), 0U);
    EXPECT_EQ(target.At(9, 15), 0U);
}

TEST(GPMemDCTest, NoRectangleMeansAllThatCanBeDrawnOn) {
    Canvas target(40, 30);
    {
        CGPMemDC buffer(target.dc, {0, 0, 0, 0});
        buffer.FillSolidRect({0, 0, 40, 30}, RGB(0, 0, 9));
    }
    EXPECT_EQ(target.At(39, 29), 0xff000009);
    CDC nothing;
    CGPMemDC quiet(nothing, {0, 0, 0, 0});
    EXPECT_EQ(quiet.GetClipBox(), CRect());
}

TEST(GPMemDCTest, APrintersContextIsDrawnOnAtOnceAndStaysOpen) {
    Canvas target(40, 30);
    target.dc.m_bPrinting = true;
    {
        CGPMemDC direct(target.dc, {10, 10, 20, 20});
        EXPECT_TRUE(direct.IsPrinting());
        direct.FillSolidRect({0, 0, 40, 30}, RGB(0, 0, 9));
        EXPECT_EQ(target.At(39, 29), 0xff000009);
    }
    target.dc.FillSolidRect({0, 0, 1, 1}, RGB(0, 8, 0));
    EXPECT_EQ(target.At(0, 0), 0xff000800);
}

TEST(GPResourceImageTest, HoldsWhatItLoadedLast) {
    static constexpr std::byte kNoPicture[] = {std::byte{1}, std::byte{2}};
    static const Resource kResources[] = {{4000, "PNG", kNoPicture}};
    const ResourceTable table(kResources);
    CGPResourceImage image;
    EXPECT_TRUE(image.Load(kAddIconId, "PNG"));
    EXPECT_EQ(image.GetSize(), (CSize{35, 35}));
    EXPECT_FALSE(image.Load(4000, "PNG"));
    EXPECT_EQ(image.m_pBitmap, nullptr);
    EXPECT_TRUE(image.Load(kAddIconId, "PNG"));
    EXPECT_FALSE(image.Load(kAddIconId, "BITMAP"));
    EXPECT_EQ(image.GetSize(), CSize());
    EXPECT_FALSE(image.LoadFile("/nowhere/" + CString(2000, 'x') + ".png"));
    EXPECT_NE(image.m_pBitmap, nullptr);
    EXPECT_EQ(image.GetSize(), CSize());
}

class SnapshotTest : public ControlTest {};

TEST_F(SnapshotTest, ShowsTheParentUnderTheControlEvenBeforeItEverPainted) {
    ProbeWnd popup;
    popup.colour = RGB(1, 2, 3);
    popup.CreateEx(0, CWnd::kPlainClass, "", WS_POPUP, {0, 0, 100, 100}, {}, 0);
    ProbeWnd child;
    MakeChild(child, popup, {20, 30, 60, 50});
    CDC surface;
    SnapshotParent(surface, child);
    ASSERT_TRUE(surface.GetSafeHdc());
    EXPECT_EQ(surface.GetClipBox().Size(), (CSize{40, 20}));
    EXPECT_EQ(surface.GetSurface()->At(39, 19) & 0xffffff, 0x010203U);
    EXPECT_EQ(child.CountOf(WM_PAINT), 0);
    CDC none;
    SnapshotParent(none, popup);
    EXPECT_EQ(none.GetSafeHdc(), nullptr);
}

}  // namespace
}  // namespace veldan
