#pragma once

#include "platform/window/Wnd.h"

namespace veldan {

/// Style bits of buttons. Only owner-drawn ones have a look.
inline constexpr UINT BS_PUSHBUTTON = 0x00;
inline constexpr UINT BS_OWNERDRAW = 0x0b;

/// A push button that its owner draws: at each paint and each change of state the parent gets WM_CTLCOLORBTN and
/// WM_DRAWITEM, which come back to the button as OCM_CTLCOLOR and DrawItem. A press captures the pointer; a release
/// inside sends the parent WM_COMMAND with BN_CLICKED, by which time the button is up again and has let go of the
/// pointer. The space bar presses the button that has the focus. Takes the focus on a left press.
class VELDAN_PLATFORM_API CButton : public CWnd {
public:
    CButton();
    ~CButton() override;

    /// `rect` is in the parent's client pixels.
    bool Create(const CString& text, UINT style, const CRect& rect, CWnd* parent, UINT id);

    static const WindowClass kWindowClass;

protected:
    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Press(bool down);
    void BeginPress(CPoint point);
    void BeginHold();
    void TrackPress(CPoint point);
    void EndPress(bool click);
    void Paint();

    bool m_bHeld = false;     // the pointer or the space bar holds the button
    bool m_bPressed = false;  // and it is drawn down
};

}  // namespace veldan
