#include "platform/core/Keys.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

/// Hides when it is told to end.
class Popup : public ProbeWnd {
public:
    Popup(CWnd& owner, CRect rect) {
        CreateEx(WS_EX_NOACTIVATE, kPlainClass, "popup", WS_POPUP, rect, owner.GetSafeHwnd(), 0);
        ShowWindow(SW_SHOWNA);
        Desktop::Get().OpenPopup(GetSafeHwnd(), owner.GetSafeHwnd());
    }
    [[nodiscard]] bool IsOpen() const { return IsWindowVisible(); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CANCELMODE) {
            ShowWindow(SW_HIDE);
        }
        return ProbeWnd::WindowProc(message, wParam, lParam);
    }
};

}  // namespace

class PopupsTest : public DesktopTest {
protected:
    PopupsTest() {
        MakePopup(m_window, {0, 0, 200, 200});
        MakeChild(m_owner, m_window, {0, 0, 50, 50});
        MakePopup(m_other, {300, 0, 500, 200});
        m_owner.SetFocus();
        Person().Settle();
    }

    ProbeWnd m_window;
    ProbeWnd m_owner;
    ProbeWnd m_other;
};

TEST_F(PopupsTest, LastPopupGetsTheKeysAndTheFocusStays) {
    Popup first(m_owner, {0, 60, 50, 100});
    Popup second(first, {60, 60, 100, 100});
    Person().Type(VK_DOWN);
    Person().Type('A', "a");
    EXPECT_EQ(second.CountOf(WM_KEYDOWN), 2);
    EXPECT_EQ(second.CountOf(WM_CHAR), 1);
    EXPECT_EQ(first.CountOf(WM_KEYDOWN) + m_owner.CountOf(WM_KEYDOWN), 0);
    EXPECT_EQ(CWnd::GetFocus(), &m_owner);
    TheDesktop().ClosePopup(first.GetSafeHwnd());
    EXPECT_FALSE(second.IsOpen()) << "what it opened ends with it";
    EXPECT_EQ(first.CountOf(WM_CANCELMODE), 0) << "it ended by itself";
    Person().Type(VK_DOWN);
    EXPECT_EQ(m_owner.CountOf(WM_KEYDOWN), 1);
}

TEST_F(PopupsTest, PressOutsideEndsTheChainAndDoesNothingElse) {
    for (const CPoint outside : {CPoint{150, 150}, CPoint{400, 100}, CPoint{900, 900}}) {
        Popup first(m_owner, {0, 60, 50, 100});
        Popup second(first, {60, 60, 100, 100});
        Person().Move(outside);
        Person().Press();
        EXPECT_FALSE(first.IsOpen() || second.IsOpen());
        EXPECT_EQ(m_window.CountOf(WM_LBUTTONDOWN) + m_other.CountOf(WM_LBUTTONDOWN), 0);
        EXPECT_EQ(TheDesktop().Active(), m_window.GetSafeHwnd());
        EXPECT_EQ(m_window.CountOf(WM_OUTSIDEPRESS) + m_other.CountOf(WM_OUTSIDEPRESS), 0);
        Person().Release();
    }
    Person().Click({150, 150});
    EXPECT_EQ(m_window.CountOf(WM_LBUTTONDOWN), 1);
}

TEST_F(PopupsTest, PressInAnEarlierPopupEndsTheLaterOnes) {
    Popup first(m_owner, {0, 60, 50, 100});
    Popup second(first, {60, 60, 100, 100});
    Person().Click({20, 80});
    EXPECT_TRUE(first.IsOpen());
    EXPECT_FALSE(second.IsOpen());
    EXPECT_EQ(first.CountOf(WM_LBUTTONDOWN), 1);
}

TEST_F(PopupsTest, PointerAndWheelAreForTheChainAlone) {
    Person().Move({20, 20});
    m_owner.TrackMouseEvent(TME_LEAVE, 0);
    m_window.log.clear();
    m_owner.log.clear();
    Popup popup(m_owner, {0, 60, 50, 100});
    Person().Settle();
    EXPECT_EQ(m_owner.CountOf(WM_MOUSELEAVE), 1) << "nothing under it stays lit";
    Person().Move({30, 20});
    EXPECT_EQ(m_owner.CountOf(WM_MOUSEMOVE), 0);
    Person().Wheel({30, 20}, 120);
    EXPECT_EQ(m_window.CountOf(WM_MOUSEWHEEL), 0);
    EXPECT_EQ(popup.CountOf(WM_MOUSEWHEEL), 1);
    Person().Move({20, 80});
    EXPECT_GT(popup.CountOf(WM_MOUSEMOVE), 0);
}

TEST_F(PopupsTest, NewChainEndsTheOneBefore) {
    Popup first(m_owner, {0, 60, 50, 100});
    Popup other(m_other, {300, 60, 350, 100});
    EXPECT_FALSE(first.IsOpen());
    EXPECT_TRUE(other.IsOpen());
}

TEST_F(PopupsTest, EndsWithItsOwner) {
    const std::function<void()> ends[] = {
        [&] { m_window.EnableWindow(false), m_window.EnableWindow(true); },
        [&] { m_owner.EnableWindow(false), m_owner.EnableWindow(true); },
        [&] { m_owner.ShowWindow(SW_HIDE), m_owner.ShowWindow(SW_SHOW); },
        [&] { m_window.ShowWindow(SW_HIDE), m_window.ShowWindow(SW_SHOW); },
        [&] { m_other.SetFocus(), m_owner.SetFocus(); },
        [&] { TheDesktop().Deactivate(), m_owner.SetFocus(); },
        [&] { m_owner.DestroyWindow(); },
    };
    for (const auto& end : ends) {
        Popup popup(m_owner, {0, 60, 50, 100});
        end();
        EXPECT_EQ(popup.CountOf(WM_CANCELMODE), 1) << &end - ends;
        EXPECT_FALSE(popup.IsOpen());
    }
}

}  // namespace veldan
