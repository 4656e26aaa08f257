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
    m_form.buttons[0].actAt = WM_DESTROY;
    m_form.buttons[0].action = [](auto& button) { button.SetFocus(); };
    m_form.buttons[0].DestroyWindow();
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
}

TEST_F(FocusTest, AFocusedChildThatIsDisabledPassesTheFocusOnAndAnswersNoKey) {
    ShowForm();
    m_form.buttons[2].SetFocus();
    m_form.buttons[2].EnableWindow(false);
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[1]);
    m_form.buttons[1].EnableWindow(false);
    EXPECT_EQ(CWnd::GetFocus(), &m_form) << "no other wants it";
    m_form.buttons[1].SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_form);
    Person().Type(VK_SPACE, " ");
    EXPECT_EQ(m_form.CountOf(WM_COMMAND), 0);
    m_form.EnableWindow(false);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    m_form.buttons[0].SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), nullptr) << "its parent is disabled";
    m_form.EnableWindow(true);
    EXPECT_EQ(CWnd::GetFocus(), &m_form) << "it was active all the while";
}

TEST_F(FocusTest, AFocusThatIsSetWhileTheDialogIsHiddenCountsWhenItIsShown) {
    m_form.buttons[0].SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_frame);
    m_form.ShowWindow(SW_SHOWNA);
    EXPECT_EQ(CWnd::GetFocus(), &m_frame);
    Person().Click({640, 600});
    EXPECT_EQ(CWnd::GetFocus(), &m_form.buttons[0]);
}

TEST_F(FocusTest, ActivationRaisesAWindowWithAllThatItOwns) {
    ProbeWnd other;
    ProbeWnd deeper;
    other.colour = RGB(0, 200, 0);
    deeper.colour = RGB(0, 0, 200);
    MakePopup(other, {480, 480, 560, 640});
    MakePopup(deeper, {480, 480, 520, 520}, &m_form);
    ShowForm();
    EXPECT_EQ(Seen({500, 500}), 0x0000c8U);
    EXPECT_EQ(Seen({530, 505}), 0xc80000U);
    Person().Click({485, 600});
    EXPECT_EQ(Seen({505, 505}), 0x00c800U) << "the press activated the other";
    EXPECT_EQ(Seen({500, 500}), 0x00c800U);
    TheDesktop().Activate(m_form.GetSafeHwnd());
    Person().Settle();
    EXPECT_EQ(Seen({530, 505}), 0xc80000U);
    EXPECT_EQ(Seen({505, 505}), 0x0000c8U) << "what it owns lies above it";
    TheDesktop().Activate(m_form.GetSafeHwnd());
    other.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Person().Click({600, 600});
    EXPECT_EQ(Seen({530, 505}), 0xc80000U) << "also where it is the active one already";
}

TEST_F(FocusTest, WhatAFrameOwnsFollowsItWhenAManagerRaisesIt) {
    ProbeWnd other;
    ProbeWnd owned;
    MakePopup(owned, {350, 350, 450, 450}, &m_frame);
    other.colour = RGB(0, 200, 0);
    MakePopup(other, {380, 380, 480, 480});
    Person().Settle();
    EXPECT_EQ(Seen({410, 410}), 0x00c800U);
    m_display->FocusForeignWindow(m_frame.GetSafeHwnd().Value());
    Person().Settle();
    EXPECT_EQ(Seen({410, 410}), 0xc80000U);
    EXPECT_EQ(Seen({460, 460}), 0x00c800U);
}

TEST_F(FocusTest, WhenTheActiveWindowIsHiddenTheNextOwnerThatCanBeActiveIs) {
    ProbeWnd popup;
    ProbeWnd inner;
    ProbeWnd modal;
    MakePopup(popup, {500, 500, 600, 600}, &m_frame);
    MakePopup(inner, {500, 500, 600, 600}, &popup);
    inner.ShowWindow(SW_HIDE);
    Person().Settle();
    EXPECT_EQ(TheDesktop().Active(), popup.GetSafeHwnd());
    EXPECT_EQ(m_display->FocusWindow(), popup.GetSafeHwnd().Value());
    inner.ShowWindow(SW_SHOW);
    popup.ShowWindow(SW_HIDE);
    inner.ShowWindow(SW_HIDE);
    Person().Settle();
    EXPECT_EQ(TheDesktop().Active(), m_frame.GetSafeHwnd()) << "its owner was hidden before";
    EXPECT_EQ(m_display->FocusWindow(), m_frame.GetSafeHwnd().Value());
    MakePopup(modal, {700, 500, 800, 600}, &m_frame);
    popup.ShowWindow(SW_SHOW);
    TheDesktop().EnableWindow(m_frame.GetSafeHwnd(), false, modal.GetSafeHwnd());
    popup.ShowWindow(SW_HIDE);
    EXPECT_EQ(TheDesktop().Active(), modal.GetSafeHwnd());
    TheDesktop().Activate(popup.GetSafeHwnd());
    EXPECT_EQ(TheDesktop().Active(), modal.GetSafeHwnd()) << "a hidden window is never active";
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

TEST_F(FocusTest, ShownPopupsHearOfPressesOutsideOfThemAndOfWhatTheyOwn) {
    ShowForm();
    ProbeWnd inner;
    MakePopup(inner, {900, 500, 1000, 600}, &m_form);
    Person().Settle();
    struct {
        const char* what;
        CPoint at;
        bool isInnerShown;
        int formHears;
        int innerHears;
    } const cases[] = {
        {"the bare screen", {1500, 900}, true, 0, 1}, {"the form, with a popup of its own", {510, 510}, true, 0, 1},
        {"the popup", {950, 550}, true, 0, 0},        {"the bare screen, without the popup", {1500, 900}, false, 1, 0},
        {"the frame", {100, 100}, false, 1, 0},       {"the form", {510, 510}, false, 0, 0},
    };
    for (const auto& [what, at, isInnerShown, formHears, innerHears] : cases) {
        SCOPED_TRACE(what);
        inner.ShowWindow(isInnerShown ? SW_SHOW : SW_HIDE);
        m_form.log.clear();
        inner.log.clear();
        Person().Click(at, 3);
        EXPECT_EQ(m_form.CountOf(WM_OUTSIDEPRESS), formHears);
        EXPECT_EQ(inner.CountOf(WM_OUTSIDEPRESS), innerHears);
    }
    EXPECT_EQ(m_frame.CountOf(WM_OUTSIDEPRESS), 0);
}

TEST_F(FocusTest, APressFromBeforeAShowIsNoneOutsideOfWhatIsShownSince) {
    ShowForm();
    for (const bool wasHidden : {true, false}) {
        m_form.ShowWindow(wasHidden ? SW_HIDE : SW_SHOW);
        Person().Move({1500, 900});
        m_display->PressButton(1);
        m_form.log.clear();
        ShowForm();
        EXPECT_EQ(m_form.CountOf(WM_OUTSIDEPRESS), 0);
        EXPECT_EQ(TheDesktop().Active(), m_form.GetSafeHwnd());
        Person().Release();
        Person().Press();
        EXPECT_EQ(m_form.CountOf(WM_OUTSIDEPRESS), 1);
        EXPECT_FALSE(TheDesktop().Active());
        Person().Release();
    }
}

}  // namespace veldan
