#include "controls/ControlFixture.h"
#include "controls/FrozenSurface.h"
#include "controls/GPMemDC.h"
#include "controls/GPResourceImage.h"
#include "draw/Canvas.h"
#include "platform/resource/Resource.h"
#include "resources/Dialogs.h"

namespace veldan {
namespace {

TEST(GPMemDCTest, WhatIsDrawnArrivesAtTheEndAndAtOnceOnAPrinter) {
    const struct {
        bool isPrinting;
        CRect rect;
        int drawn;
    } cases[] = {{false, {10, 10, 20, 20}, 10 * 10}, {false, {0, 0, 0, 0}, 40 * 30}, {true, {10, 10, 20, 20}, 40 * 30}};
    for (const auto& [isPrinting, rect, drawn] : cases) {
        Canvas target(40, 30);
        target.dc.m_bPrinting = isPrinting;
        {
            CGPMemDC buffer(target.dc, rect);
            EXPECT_EQ(buffer.IsPrinting(), isPrinting);
            buffer.FillSolidRect({0, 0, 40, 30}, kBlue);
            EXPECT_EQ(target.CountInk({0, 0, 40, 30}), isPrinting ? drawn : 0);
        }
        EXPECT_EQ(target.CountInk({0, 0, 40, 30}), drawn);
        EXPECT_EQ(target.At(15, 15), kBluePixel);
        target.dc.FillSolidRect({0, 0, 1, 1}, kRed);
        EXPECT_EQ(target.At(0, 0), kRedPixel) << "it stays open";
    }
    CDC nothing;
    CGPMemDC quiet(nothing, {0, 0, 0, 0});
    EXPECT_EQ(quiet.GetClipBox(), CRect());
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
