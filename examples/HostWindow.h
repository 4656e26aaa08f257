#pragma once

#include "OpenButton.h"
#include "PickedProfile.h"

#include "platform/window/Wnd.h"

#include <cstdint>

/// A small host: a window with a button that opens the profile menu, and below it the profile that was picked last. It
/// prints what happens to the standard output.
class HostWindow : public veldan::CWnd {
public:
    /// The message number that this host chose for picks.
    static constexpr veldan::UINT kMsgPicked = veldan::WM_USER + 100;

    bool Create(const veldan::CRect& rect);
    void ShowMenu(veldan::CPoint screen);
    void SetExitAfterPick(bool exit) { m_bExitAfterPick = exit; }
    /// Whether the user has closed the window, or picked a profile when that is to end the host.
    [[nodiscard]] bool IsDone() const { return m_bDone; }
    /// The button's place on the screen.
    [[nodiscard]] veldan::CRect ButtonRect() const { return m_button.GetWindowRect(); }

protected:
    [[nodiscard]] const veldan::MessageMap& GetMessageMap() const override;
    bool PreTranslateMessage(veldan::MSG& message) override;

private:
    veldan::BOOL OnEraseBkgnd(veldan::CDC* pDC);
    void OnSize(veldan::UINT type, int width, int height);
    void OnSetFocus(veldan::CWnd* pOther);
    void OnClose();
    void OnOpen();
    veldan::LRESULT OnPicked(veldan::WPARAM wParam, veldan::LPARAM lParam);

    void DrawPicked(veldan::CDC& dc) const;

    OpenButton m_button;
    PickedProfile m_picked;
    bool m_bExitAfterPick = false;
    bool m_bDone = false;

    // A press on the button closes the open menu, and must not open it again.
    bool m_bMenuWasOpen = false;  // when it was last looked at
    std::int64_t m_nMenuClosedAt = 0;
    bool m_bPressClosesMenu = false;
};
