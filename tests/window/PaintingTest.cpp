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

TEST_F(PaintingTest, DrawingOnAHiddenChildShowsNothingButItsPixelsCanBeRead) {
    ProbeWnd window;
    ProbeWnd panel;
    ProbeWnd child;
    MakePopup(window, {0, 0, 100, 100});
    MakeChild(panel, window, {10, 10, 90, 90});
    MakeChild(child, panel, {10, 10, 50, 50});
    for (CWnd* hidden : std::initializer_list<CWnd*>{&child, &panel, &window}) {
        hidden->ShowWindow(SW_HIDE);
        Person().Settle();
        {
            CClientDC dc(&child);
            dc.FillSolidRect({0, 0, 40, 40}, RGB(0, 200, 0));
        }
        const CClientDC parent(&window);
        CBitmap copy;
        CDC target;
        target.CreateCompatibleDC(&parent);
        copy.CreateCompatibleBitmap(&parent, 1, 1);
        target.SelectObject(&copy);
        const CClientDC source(&child);
        EXPECT_TRUE(target.BitBlt(0, 0, 1, 1, &source, 5, 5, SRCCOPY));
        EXPECT_EQ(target.GetSurface()->At(0, 0) & 0xffffff, hidden == &window ? 0x00c800U : 0xc80000U);
        hidden->ShowWindow(SW_SHOW);
    }
}

TEST_F(PaintingTest, PlacingAWindowWhereItIsPaintsNothing) {
    ProbeWnd window;
    ProbeWnd children[3];
    MakePopup(window, {0, 0, 100, 100});
    for (int i = 0; i < 3; ++i) {
        MakeChild(children[i], window, {0, 30 * i, 50, 30 * i + 30});
    }
    CWnd gap;  // its place in the list of children is empty from here on
    MakeChild(gap, window, {0, 0, 9, 9});
    gap.DestroyWindow();
    Person().Settle();
    const auto before = m_display->PresentedPixels();
    window.SetWindowPos(&CWnd::wndTop, 0, 0, 100, 100, 0);
    children[0].SetWindowPos(&CWnd::wndTop, 0, 0, 50, 30, 0);
    children[1].SetWindowPos(&children[0], 0, 30, 50, 30, 0);
    children[2].SetWindowPos(&CWnd::wndBottom, 0, 60, 50, 30, 0);
    children[2].SetWindowPos(&window, 0, 60, 50, 30, 0);
    Person().Settle();
    EXPECT_EQ(m_display->PresentedPixels(), before);
    children[2].SetWindowPos(&children[0], 0, 60, 50, 30, 0);
    Person().Settle();
    EXPECT_GT(m_display->PresentedPixels(), before);
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
