#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

/// Asks for hover and leave at its first move, as controls do.
class HoverProbe : public ProbeWnd {
public:
    int hovers = 0;
    int leaves = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_MOUSEMOVE && !m_bTracking) {
            m_bTracking = TrackMouseEvent(TME_HOVER | TME_LEAVE, 10);
        }
        hovers += message == WM_MOUSEHOVER ? 1 : 0;
        if (message == WM_MOUSELEAVE) {
            m_bTracking = false;
            ++leaves;
        }
        return ProbeWnd::WindowProc(message, wParam, lParam);
    }

private:
    bool m_bTracking = false;
};

class PointerTest : public DesktopTest {
protected:
    PointerTest() {
        MakePopup(m_window, {100, 100, 300, 300});
        MakeChild(m_first, m_window, {0, 0, 100, 100});
        MakeChild(m_second, m_window, {100, 0, 200, 100});
        Person().Settle();
    }
    void HoverFirst() {
        Person().Rest({150, 150}, 12);
        ASSERT_EQ(m_first.hovers, 1);
    }

    ProbeWnd m_window;
    HoverProbe m_first;
    HoverProbe m_second;
    const CPoint m_ptFirst{150, 150};
};

TEST_F(PointerTest, HoverComesOnceAfterThePointerStayed) {
    Person().Move(m_ptFirst);
    for (int i = 1; i < 6; ++i) {
        Person().Wait(8);
        Person().Move({150 + 5 * i, 150});
    }
    EXPECT_EQ(m_first.hovers, 0) << "each move out of the box starts the wait anew";
    Person().Wait(10);
    EXPECT_EQ(m_first.hovers, 1);
    Person().Wait(100);
    EXPECT_EQ(m_first.hovers, 1);
}

TEST_F(PointerTest, LeavingComesBeforeTheOtherWindowsFirstMove) {
    HoverFirst();
    std::vector<HWND> order;
    TheDesktop().SetObserver([&](const MSG& message, bool) {
        if (message.message == WM_MOUSELEAVE || message.message == WM_MOUSEMOVE) {
            order.push_back(message.hwnd);
        }
    });
    Person().Move({250, 150});
    EXPECT_EQ(order, (std::vector{m_first.GetSafeHwnd(), m_second.GetSafeHwnd()}));
    TheDesktop().SetObserver({});
}

TEST_F(PointerTest, AHoveredWindowThatGoesAwayUnderThePointerGetsItsLeave) {
    const CRect all{0, 0, 400, 400};
    const std::vector<std::function<void()>> ways{
        [this] { m_first.ShowWindow(SW_HIDE); },
        [this] { m_first.EnableWindow(false); },
        [this] { m_window.EnableWindow(false); },
        [this] { m_first.SetWindowPos(nullptr, 0, 120, 100, 80, SWP_NOZORDER); },
        [this] { m_second.SetWindowPos(&CWnd::wndTop, 0, 0, 200, 200, 0); },
        [this] { m_window.ShowWindow(SW_HIDE); },
        [this] { m_window.SetWindowPos(nullptr, 600, 600, 0, 0, SWP_NOSIZE); },
        [&] { m_display->AddForeignWindow(all); },
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways.data());
        m_window.EnableWindow(true);
        m_window.SetWindowPos(nullptr, 100, 100, 0, 0, SWP_NOSIZE);
        m_window.ShowWindow(SW_SHOW);
        m_first.MoveWindow({0, 0, 100, 100});
        m_second.MoveWindow({100, 0, 200, 100});
        m_first.EnableWindow(true);
        m_first.ShowWindow(SW_SHOW);
        Person().Move({50, 500});
        m_first.hovers = m_first.leaves = 0;
        HoverFirst();
        way();
        Person().Settle();
        EXPECT_EQ(m_first.leaves, 1);
    }
}

TEST_F(PointerTest, AWindowThatComesUnderARestingPointerIsHovered) {
    m_first.ShowWindow(SW_HIDE);
    Person().Rest(m_ptFirst);
    m_first.ShowWindow(SW_SHOW);
    Person().Wait(12);
    EXPECT_EQ(m_first.hovers, 1);
    m_second.MoveWindow({0, 0, 100, 100});
    m_first.MoveWindow({100, 0, 200, 100});
    Person().Wait(12);
    EXPECT_EQ(m_second.hovers, 1);
    EXPECT_EQ(m_first.leaves, 1);
    m_window.ShowWindow(SW_HIDE);
    m_window.ShowWindow(SW_SHOW);
    Person().Wait(12);
    EXPECT_EQ(m_second.hovers, 2);
}

TEST_F(PointerTest, AWindowThatComesUnderARestingPointerSetsTheCursor) {
    HWND asked;
    TheDesktop().SetObserver(
        [&](const MSG& message, bool) { asked = message.message == WM_SETCURSOR ? message.hwnd : asked; });
    Person().Rest(m_ptFirst);
    m_first.ShowWindow(SW_HIDE);
    Person().Settle();
    EXPECT_EQ(asked, m_window.GetSafeHwnd());
    m_first.ShowWindow(SW_SHOW);
    Person().Settle();
    EXPECT_EQ(asked, m_first.GetSafeHwnd());
    TheDesktop().SetObserver({});
}

TEST_F(PointerTest, APressShowsItsButtonAlsoWhenTheReleaseIsThereAlready) {
    ProbeButton button;
    std::uint32_t seen = 0;
    button.Create("", WS_VISIBLE | BS_OWNERDRAW, {0, 120, 200, 200}, &m_window, 1);
    button.actAt = WM_LBUTTONUP;
    button.action = [&](auto&) { seen = Seen({150, 250}); };
    Person().Move({150, 250});
    m_display->PressButton(1);
    m_display->ReleaseButton(1);
    Person().Settle();
    EXPECT_EQ(seen, 0x0000faU);
    EXPECT_EQ(Seen({150, 250}), 0xc80000U);
}

TEST_F(PointerTest, CapturedPointerStaysWithItsWindowAndTheWheelWithItsParents) {
    m_first.SetCapture();
    Person().Move({290, 290});
    EXPECT_EQ(m_second.CountOf(WM_MOUSEMOVE), 0);
    EXPECT_GE(m_first.CountOf(WM_MOUSEMOVE), 1);
    m_first.ShowWindow(SW_HIDE);
    EXPECT_FALSE(TheDesktop().Capture());
    ProbeWnd owned;
    ProbeWnd child;
    MakePopup(owned, {400, 100, 500, 200}, &m_window);
    MakeChild(child, owned, {0, 0, 50, 50});
    Person().Wheel({410, 110}, -120);
    EXPECT_EQ(child.CountOf(WM_MOUSEWHEEL), 1);
    EXPECT_EQ(owned.CountOf(WM_MOUSEWHEEL), 1);
    EXPECT_EQ(m_window.CountOf(WM_MOUSEWHEEL), 0) << "the owner is no parent";
}

TEST_F(PointerTest, SecondPressInTimeOnTheSameWindowIsADoubleClick) {
    ProbeButton button;
    button.Create("", WS_VISIBLE | BS_OWNERDRAW, {0, 120, 200, 200}, &m_window, 1);
    const CPoint over{150, 250};
    Person().DoubleClick(over);
    EXPECT_EQ(button.CountOf(WM_LBUTTONDBLCLK), 1);
    Person().Click(over);
    EXPECT_EQ(button.CountOf(WM_LBUTTONDBLCLK), 1) << "a third press starts anew";
    Person().Wait(501);
    Person().Click(over);
    Person().Click({160, 250});
    EXPECT_EQ(button.CountOf(WM_LBUTTONDBLCLK), 1) << "too late, then too far";
    Person().DoubleClick(m_ptFirst);
    EXPECT_EQ(m_first.CountOf(WM_LBUTTONDBLCLK), 0) << "its class knows none";
}

TEST_F(PointerTest, PointOfAManyChildrenIsTheTopmostThere) {
    std::vector<std::unique_ptr<ProbeWnd>> many;
    for (int i = 0; i < 200; ++i) {
        many.push_back(std::make_unique<ProbeWnd>());
        MakeChild(*many.back(), m_window, {i % 20 * 10, 100 + i / 20 * 10, i % 20 * 10 + 15, 115 + i / 20 * 10});
    }
    for (int i = 0; i < 200; i += 3) {
        many[std::size_t(i)].reset();  // leaves gaps that are closed on the way
    }
    many[100]->SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    for (int y = 100; y < 200; y += 7) {
        for (int x = 0; x < 200; x += 7) {
            CWnd* expected = &m_window;
            for (auto& child : many) {
                const bool hit = child && m_window.ScreenToClient(child->GetWindowRect()).Contains({x, y});
                if (hit && (expected == &m_window || child == many[100])) {
                    expected = child.get();
                }
            }
            const HWND found = TheDesktop().WindowAt(m_window.GetSafeHwnd(), {100 + x, 100 + y});
            ASSERT_EQ(found, expected->GetSafeHwnd()) << x << ' ' << y;
        }
    }
}

}  // namespace veldan
