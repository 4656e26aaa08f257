#pragma once

#include "platform/widgets/Button.h"
#include "platform/window/Wnd.h"

/// The button that opens the menu.
class OpenButton : public veldan::CButton {
protected:
    [[nodiscard]] const veldan::MessageMap& GetMessageMap() const override;
    void DrawItem(veldan::DRAWITEMSTRUCT* lpDrawItemStruct) override;

private:
    void OnMouseMove(veldan::UINT flags, veldan::CPoint point);
    veldan::LRESULT OnMouseLeave(veldan::WPARAM wParam, veldan::LPARAM lParam);

    bool m_bHot = false;
};

/// A small host: a window with a button that opens the profile menu below it, and a line that tells the last pick.
/// Writes what happens to the standard output.
class HostWindow : public veldan::CWnd {
public:
    /// The number that this host chose for the pick.
    static constexpr veldan::UINT kMsgPicked = veldan::WM_USER + 100;

    bool Create(const veldan::CRect& rect);
    void ShowMenu(veldan::CPoint screen);
    /// Leave the loop when a pick is over.
    void SetExitAfterPick(bool exit) { m_bExitAfterPick = exit; }

protected:
    [[nodiscard]] const veldan::MessageMap& GetMessageMap() const override;

private:
    veldan::BOOL OnEraseBkgnd(veldan::CDC* pDC);
    void OnSize(veldan::UINT type, int width, int height);
    void OnClose();
    void OnOpen();
    veldan::LRESULT OnPicked(veldan::WPARAM wParam, veldan::LPARAM lParam);

    OpenButton m_button;
    veldan::CString m_strPicked;
    bool m_bExitAfterPick = false;
};
