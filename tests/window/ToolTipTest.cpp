#include "platform/widgets/ToolTip.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

/// Relays its messages to its tooltip.
class TippedWnd : public ProbeWnd {
public:
    CToolTipCtrl tip;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_MOUSEMOVE) {
            TrackMouseEvent(TME_LEAVE, 0);
        }
        return ProbeWnd::WindowProc(message, wParam, lParam);
    }
    bool PreTranslateMessage(MSG& message) override {
        tip.SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
        return false;
    }
};

}  // namespace

class ToolTipTest : public DesktopTest {
protected:
    ToolTipTest() {
        MakePopup(m_window, {100, 100, 300, 200});
        m_window.tip.Create(&m_window);
        m_window.tip.AddTool(&m_window, "A tip", {0, 0, 100, 100}, 1);
        m_window.tip.SendMessage(TTM_ACTIVATE, TRUE);
        m_window.tip.SendMessage(TTM_SETDELAYTIME, 0, 800);
    }
    [[nodiscard]] bool TipShows() const { return m_window.tip.IsWindowVisible(); }

    TippedWnd m_window;
};

TEST_F(ToolTipTest, ShowsAfterTheRestAndGoesWithThePointer) {
    Person().Rest({150, 150}, 799);
    EXPECT_FALSE(TipShows());
    Person().Wait(1);
    EXPECT_TRUE(TipShows());
    EXPECT_EQ(Seen(m_window.tip.GetWindowRect().TopLeft() + CPoint{1, 1}), 0xffffe1U);
    EXPECT_EQ(TheDesktop().Active(), m_window.GetSafeHwnd()) << "a tip never takes the focus";
    Person().Move({151, 151});
    EXPECT_TRUE(TipShows());
    Person().Move({50, 50});
    EXPECT_FALSE(TipShows());
}

TEST_F(ToolTipTest, StaysAwayFromOtherPlacesAfterPressesAndWhenSwitchedOff) {
    Person().Rest({250, 150}, 900);
    EXPECT_FALSE(TipShows()) << "no tool is there";
    Person().Click({150, 150});
    Person().Wait(900);
    EXPECT_FALSE(TipShows()) << "a press ends the wait until the pointer has left";
    Person().Move({50, 50});
    m_window.tip.SendMessage(TTM_ACTIVATE, FALSE);
    Person().Rest({150, 150}, 900);
    EXPECT_FALSE(TipShows());
}

TEST_F(ToolTipTest, StaysOnTheScreen) {
    m_window.SetWindowPos(nullptr, 1820, 1000, 100, 80, 0);
    Person().Rest({1910, 1070}, 900);
    ASSERT_TRUE(TipShows());
    const CRect tip = m_window.tip.GetWindowRect();
    EXPECT_EQ(tip.Intersect(m_display->ScreenRect()), tip);
    EXPECT_FALSE(tip.Contains({1910, 1070}));
}

}  // namespace veldan
