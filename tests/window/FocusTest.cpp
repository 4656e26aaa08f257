#include "platform/core/Keys.h"
#include "platform/dialog/Dialog.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

constexpr DialogTemplate kForms[] = {{.id = 900, .size = {0, 0, 100, 80}, .caption = "form"}};

/// A dialog with three buttons, of which the second is its first focus.
class Form : public Probe<CDialog> {
public:
    ProbeButton buttons[3];

protected:
    BOOL OnInitDialog() override {
        for (int i = 0; i < 3; ++i) {
            buttons[i].Create("", WS_VISIBLE | BS_OWNERDRAW, {10, 10 + 30 * i, 100, 35 + 30 * i}, this, UINT(i + 1));
        }
        return TRUE;
    }
    // Asked by its id, since the buttons die before the window does.
    CWnd* GetFirstFocus() override { return GetDlgItem(2); }
};

}  // namespace

class FocusTest : public DesktopTest {
protected:
    FocusTest() {
        m_frame.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {0, 0, 400, 400}, {}, 0);
        m_form.Create(900);
        m_form.SetWindowPos(nullptr, 500, 500, 150, 120, SWP_NOACTIVATE);
        Person().Settle();
    }
    void ShowForm() {
        m_form.ShowWindow(SW_SHOW);
        Person().Settle();
    }

    DialogTemplateTable m_forms{kForms};
    ProbeWnd m_frame;
    Form m_form;
};

TEST_F(FocusTest, AShownDialogHandsTheFocusToItsFirstAndThenToItsLast) {
    EXPECT_EQ(m_form.GetParent(), &m_frame) << "made without a parent it is the active window's";
    EXPECT_FALSE(m_form.IsWindowVisible());
    EXPECT_FALSE(Form().Create(901)) << "there is no such template";
    ShowForm();
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
    EXPECT_EQ(m_display->FocusWindow(), m_form.GetSafeHwnd().Value());
    m_form.buttons[2].SetFocus();
    m_form.ShowWindow(SW_HIDE);
    Person().Settle();
    EXPECT_EQ(m_display->FocusWindow(), m_frame.GetSafeHwnd().Value());
    ProbeWnd another;
    another.CreateEx(0, CWnd::kPlainClass, "another host", WS_VISIBLE, {0, 0, 400, 400}, {}, 0);
    TheDesktop().Settle();
    ShowForm();
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[2]) << "the frame's news came later";
}

TEST_F(FocusTest, AFocusedChildThatIsHiddenOrDestroyedPassesTheFocusOn) {
    ShowForm();
    m_form.buttons[2].SetFocus();
    m_form.buttons[2].ShowWindow(SW_HIDE);
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
    m_form.buttons[0].SetFocus();
    m_form.buttons[0].DestroyWindow();
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
}

TEST_F(FocusTest, OnlyALeftPressTakesTheFocusToAButtonAndOnlySpacePressesIt) {
    ShowForm();
    Person().Click({520, 520}, 3);
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
    Person().Click({520, 520});
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[0]);
    EXPECT_NE(m_form.buttons[0].drawnState & ODS_FOCUS, 0U);
    m_form.log.clear();
    Person().Type(VK_RETURN, "\r");
    EXPECT_EQ(m_form.CountOf(WM_COMMAND), 0);
    Person().Type(VK_SPACE, " ");
    EXPECT_EQ(m_form.CountOf(WM_COMMAND), 1);
    EXPECT_EQ(m_form.buttons[0].CountOf(WM_CHAR), 2);
}

TEST_F(FocusTest, AHandlerThatMovesTheFocusOnHasTheLastWord) {
    ShowForm();
    m_form.buttons[1].actAt = WM_KILLFOCUS;
    m_form.buttons[1].action = [this](auto&) { m_form.buttons[2].SetFocus(); };
    m_form.buttons[0].log.clear();
    m_form.buttons[0].SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[2]);
    EXPECT_EQ(m_form.buttons[0].CountOf(WM_SETFOCUS), 0);
}

}  // namespace veldan
