#include "controls/ControlFixture.h"
#include "controls/FrozenSurface.h"
#include "controls/GPMemDC.h"
#include "controls/GPResourceImage.h"
#include "controls/LookCache.h"
#include "draw/Canvas.h"
#include "platform/resource/Resource.h"
#include "resources/Dialogs.h"

#include <optional>
#include <utility>

namespace veldan {
namespace {

TEST(GPMemDCTest, WhatIsDrawnArrivesAtTheEndAndAtOnceOnAPrinter) {
    for (const bool isPrinting : {false, true}) {
        Canvas target(40, 30);
        target.dc.m_bPrinting = isPrinting;
        {
            CGPMemDC buffer(target.dc, {10, 10, 20, 20});
            buffer.FillSolidRect({0, 0, 40, 30}, kBlue);
            EXPECT_EQ(target.CountInk({0, 0, 40, 30}), isPrinting ? 40 * 30 : 0);
        }
        EXPECT_EQ(target.CountInk({0, 0, 40, 30}), isPrinting ? 40 * 30 : 10 * 10);
        EXPECT_EQ(target.At(15, 15), kBluePixel);
    }
}

TEST(GPResourceImageTest, HoldsWhatItLoadedLast) {
    static constexpr std::byte kNoPicture[] = {std::byte{1}, std::byte{2}};
    static const Resource kResources[] = {{4000, "PNG", kNoPicture}};
    std::optional<ResourceTable> table(kResources);
    CGPResourceImage image;
    EXPECT_TRUE(image.Load(kAddIconId, "PNG"));
    EXPECT_EQ(image.GetSize(), (CSize{35, 35}));
    EXPECT_FALSE(image.Load(4000, "PNG"));
    EXPECT_EQ(image.m_pBitmap, nullptr);
    EXPECT_TRUE(image.Load(kAddIconId, "PNG"));
    EXPECT_FALSE(image.Load(kAddIconId, "BITMAP"));
    EXPECT_EQ(image.GetSize(), CSize());
    EXPECT_FALSE(FindResource(4000, "PNG").empty());
    table.reset();
    EXPECT_TRUE(FindResource(4000, "PNG").empty()) << "it goes with its table";
    EXPECT_FALSE(image.LoadFile("/nowhere/" + CString(2000, 'x') + ".png"));
    EXPECT_NE(image.m_pBitmap, nullptr);
    EXPECT_EQ(image.GetSize(), CSize());
}

TEST(LookCacheTest, IsSharedUntilItsLastHolderGoes) {
    auto pCache = CLookCache::Share();
    const std::weak_ptr<CLookCache> pSame = CLookCache::Share();
    EXPECT_EQ(pSame.lock(), pCache);
    auto pPicture = pCache->Picture(kAddIconId, "PNG");
    EXPECT_EQ(pCache->Picture(kAddIconId, "PNG"), pPicture);
    EXPECT_EQ(pCache->Picture(kAddIconId, "BITMAP"), nullptr);
    const auto pGradient = pCache->Gradient({10, 20}, kRed, kBlue);
    EXPECT_EQ(pCache->Gradient({10, 20}, kRed, kBlue), pGradient);
    EXPECT_NE(pCache->Gradient({10, 20}, kBlue, kBlue), pGradient);
    const std::weak_ptr<CGPResourceImage> pGone = std::exchange(pPicture, nullptr);
    EXPECT_TRUE(pGone.expired());
    pCache.reset();
    EXPECT_TRUE(pSame.expired());
}

using SnapshotTest = ControlTest;

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
