#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

using PaintingTest = DesktopTest;

TEST_F(PaintingTest, ChildrenLieOverEachOtherAndHidingOneShowsWhatIsUnderIt) {
    ProbeWnd window;
    ProbeWnd upper;
    ProbeWnd lower;
    upper.colour = RGB(0, 200, 0);
    lower.colour = RGB(0, 0, 200);
    window.CreateEx(0, CWnd::kPlainClass, "", WS_POPUP, {0, 0, 100, 100}, {}, 0);
    MakeChild(upper, window, {10, 10, 60, 60});
    MakeChild(lower, window, {40, 40, 90, 90});
    window.ShowWindow(SW_SHOW);
    EXPECT_EQ(Seen({9, 9}), 0xc80000U);
    EXPECT_EQ(Seen({10, 10}), 0x00c800U) << "the first frame has all of them";
    EXPECT_EQ(Seen({59, 59}), 0x00c800U) << "the child made first lies on top";
    upper.ShowWindow(SW_HIDE);
    Person().Settle();
    EXPECT_EQ(Seen({50, 50}), 0x0000c8U);
    EXPECT_EQ(Seen({20, 20}), 0xc80000U);
}

TEST_F(PaintingTest, NothingIsDrawnUnderAChildThatCoversItself) {
    ProbeWnd window;
    Probe<CButton> mute;
    ProbeWnd above;
    MakePopup(window, {0, 0, 100, 100});
    MakeChild(above, window, {40, 40, 60, 60});
    mute.Create("", WS_CHILD | WS_VISIBLE, {10, 10, 90, 90}, &window, 1);
    above.colour = RGB(0, 200, 0);
    mute.SetOpaque();
    Person().Settle();
    window.colour = RGB(0, 0, 200);
    window.Invalidate();
    Person().Settle();
    EXPECT_EQ(Seen({5, 5}), 0x0000c8U);
    EXPECT_EQ(Seen({20, 20}), 0xc80000U) << "left to the child, which draws nothing at all";
    EXPECT_EQ(Seen({50, 50}), 0x00c800U);
    const CClientDC dc(&window);
    window.Invalidate();
    const CClientDC whole(&window);
    EXPECT_EQ(whole.GetSurface()->At(5, 5), 0xff0000c8U);
}

TEST_F(PaintingTest, ShowingAWindowThatAnotherProgramHasJustHiddenShowsIt) {
    ProbeWnd window;
    MakePopup(window, {0, 0, 100, 100});
    m_display->UnmapByForce(window.GetSafeHwnd().Value());
    window.ShowWindow(SW_SHOW);
    Person().Settle();
    EXPECT_TRUE(window.IsWindowVisible());
    EXPECT_EQ(Seen({10, 10}), 0xc80000U);
}

TEST_F(PaintingTest, OnlyTheDirtyPartIsPresented) {
    ProbeWnd window;
    ProbeWnd child;
    MakePopup(window, {0, 0, 300, 300});
    MakeChild(child, window, {10, 10, 30, 30});
    Person().Settle();
    const auto before = m_display->PresentedPixels();
    child.Invalidate();
    Person().Settle();
    EXPECT_EQ(m_display->PresentedPixels() - before, 400U);
}

}  // namespace veldan
