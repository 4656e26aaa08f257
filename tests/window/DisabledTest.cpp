#include "platform/core/Keys.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

/// A frame that is disabled as a whole, and a popup that has to be answered first.
class DisabledTest : public DesktopTest {
protected:
    DisabledTest() {
        m_frame.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {0, 0, 400, 400}, {}, 0);
        MakeChild(m_panel, m_frame, {50, 50, 300, 300});
        MakeChild(m_field, m_panel, {0, 0, 100, 100});
        MakePopup(m_modal, {500, 100, 600, 200});
        Person().Settle();
    }
    void Disable(const CWnd* modal) {
        TheDesktop().EnableWindow(m_frame.GetSafeHwnd(), false, modal != nullptr ? modal->GetSafeHwnd() : HWND());
        Person().Settle();
    }
    [[nodiscard]] HWND Active() const { return TheDesktop().Active(); }

    ProbeWnd m_frame;
    ProbeWnd m_panel;
    ProbeWnd m_field;
    ProbeWnd m_modal;
    const CPoint m_ptField{100, 100};
};

TEST_F(DisabledTest, ADisabledTopLevelAndAllInItTakeNoInput) {
    const std::pair<UINT, std::function<void()>> inputs[] = {
        {WM_LBUTTONDOWN, [this] { Person().Click(m_ptField); }},
        {WM_MOUSEMOVE,
         [this] {
             Person().Move(m_ptField + CPoint{5, 5});
         }},
        {WM_MOUSEWHEEL, [this] { Person().Wheel(m_ptField, 120); }},
        {WM_SETFOCUS, [this] { m_field.SetFocus(); }},
        {WM_KEYDOWN, [this] { Person().Type(VK_SPACE, " "); }},
        {WM_CAPTURECHANGED,
         [this] {
             m_field.SetCapture();
             CWnd::ReleaseCapture();
         }},
    };
    m_modal.DestroyWindow();
    for (CWnd* disabled : std::initializer_list<CWnd*>{nullptr, &m_frame, &m_panel}) {
        for (const auto& [message, act] : inputs) {
            SCOPED_TRACE(NameOfMessage(message));
            m_frame.EnableWindow(true);
            m_panel.EnableWindow(true);
            Person().Move({390, 390});
            m_frame.SetFocus();
            if (message == WM_KEYDOWN) {
                m_field.SetFocus();
            }
            if (disabled != nullptr) {
                disabled->EnableWindow(false);
            }
            m_field.log.clear();
            m_frame.log.clear();
            act();
            EXPECT_EQ(m_field.CountOf(message) != 0, disabled == nullptr);
            EXPECT_TRUE(disabled != &m_frame || m_frame.log.empty());
        }
    }
}

TEST_F(DisabledTest, APressOnADisabledTopLevelGoesToTheWindowThatItWasDisabledFor) {
    ProbeWnd nested;
    MakePopup(nested, {520, 120, 580, 180}, &m_modal);
    Disable(&m_modal);
    Person().Click({700, 700});
    EXPECT_FALSE(Active());
    Person().Click(m_ptField);
    EXPECT_EQ(Active(), m_modal.GetSafeHwnd());
    TheDesktop().EnableWindow(m_modal.GetSafeHwnd(), false, nested.GetSafeHwnd());
    Person().Click(m_ptField);
    EXPECT_EQ(Active(), nested.GetSafeHwnd()) << "that one waits for another";
    TheDesktop().EnableWindow(nested.GetSafeHwnd(), false, m_modal.GetSafeHwnd());
    Person().Click(m_ptField);
    EXPECT_EQ(Active(), nested.GetSafeHwnd()) << "nobody is left";
}

TEST_F(DisabledTest, WithoutSuchAWindowAPressGoesToTheTopmostThatItOwns) {
    ProbeWnd lower;
    ProbeWnd owned;
    ProbeWnd hidden;
    MakePopup(lower, {600, 100, 700, 200}, &m_frame);
    MakePopup(owned, {600, 100, 700, 200}, &m_frame);
    MakePopup(hidden, {600, 100, 700, 200}, &m_frame);
    hidden.ShowWindow(SW_HIDE);
    Disable(&m_modal);
    m_modal.DestroyWindow();
    Person().Click(m_ptField);
    EXPECT_EQ(Active(), owned.GetSafeHwnd());
}

TEST_F(DisabledTest, WhatAManagerWantsOfADisabledFrameGoesToItsModal) {
    Disable(&m_modal);
    Person().Click({700, 700});
    m_display->FocusForeignWindow(m_frame.GetSafeHwnd().Value());
    Person().Settle();
    EXPECT_EQ(Active(), m_modal.GetSafeHwnd());
    EXPECT_EQ(m_display->FocusWindow(), m_modal.GetSafeHwnd().Value());
    m_display->FocusForeignWindow(m_frame.GetSafeHwnd().Value());
    Person().Settle();
    EXPECT_EQ(m_display->FocusWindow(), m_modal.GetSafeHwnd().Value()) << "it was the active one";
    m_display->RequestClose(m_frame.GetSafeHwnd().Value());
    Person().Settle();
    EXPECT_EQ(m_frame.CountOf(WM_CLOSE), 0);
    m_modal.DestroyWindow();
    m_display->FocusForeignWindow(m_frame.GetSafeHwnd().Value());
    Person().Settle();
    m_frame.EnableWindow(true);
    EXPECT_EQ(CWnd::GetFocus(), &m_frame) << "the keyboard was there all the while";
}

TEST_F(DisabledTest, TheFrameOfTheModalFlashesAndIsAsBeforeThen) {
    const CPoint corner{500, 100};
    Disable(&m_modal);
    Person().Click(m_ptField);
    std::vector<bool> lit;
    for (int i = 0; i < 8; ++i) {
        lit.push_back(Seen(corner) == 0xffffff && Seen({599, 199}) == 0xffffff);
        EXPECT_EQ(Seen({510, 110}), 0xc80000U);
        Person().Wait(70);
    }
    EXPECT_EQ(lit, (std::vector{true, false, true, false, true, false, false, false}));
    Person().Click(m_ptField);
    m_modal.DestroyWindow();
    Person().Wait(500);
}

}  // namespace veldan
