#pragma once

#include "platform/window/Wnd.h"

#include <vector>

namespace veldan {

/// Messages to a tooltip control.
///   TTM_ACTIVATE      wParam: whether tips may show.
///   TTM_SETDELAYTIME  lParam: milliseconds that the pointer rests before a tip shows.
///   TTM_RELAYEVENT    lParam: MSG*, a retrieved message of a tool's window.
///   TTM_GETTOOLCOUNT  the result is the number of tools.
inline constexpr UINT TTM_ACTIVATE = 1025;
inline constexpr UINT TTM_SETDELAYTIME = 1027;
inline constexpr UINT TTM_RELAYEVENT = 1031;
inline constexpr UINT TTM_GETTOOLCOUNT = 1037;

/// Shows a short text beside the pointer once that has rested over a tool, a rectangle of some window. The messages of
/// that window are relayed to it. A tip goes when the pointer leaves or a button is pressed; it never takes the focus.
class VELDAN_PLATFORM_API CToolTipCtrl : public CWnd {
public:
    CToolTipCtrl();
    ~CToolTipCtrl() override;

    bool Create(CWnd* parent, UINT style = 0);
    /// `rect` is in the client pixels of `window`.
    bool AddTool(CWnd* window, const CString& text, const CRect& rect, UINT id);
    void UpdateTipText(const CString& text, CWnd* window, UINT id);

protected:
    [[nodiscard]] const MessageMap& GetMessageMap() const override;

private:
    struct Tool {
        HWND window;
        UINT id = 0;
        CRect rect;
        CString text;
    };

    LRESULT OnActivate(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetDelayTime(WPARAM wParam, LPARAM lParam);
    LRESULT OnRelayEvent(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetToolCount(WPARAM wParam, LPARAM lParam);
    void OnTimer(UINT_PTR id);
    void OnPaint();

    [[nodiscard]] Tool* FindTool(HWND window, UINT id);
    [[nodiscard]] const Tool* ToolAt(const MSG& message) const;
    void PointerMoved(const MSG& message);
    void Dismiss();
    void ShowTip();

    std::vector<Tool> m_arrTools;
    bool m_bActive = false;
    bool m_bDismissed = false;  // by a press; until the pointer has left
    UINT m_nDelay = 500;
    CPoint m_ptRest{-1, -1};
    CString m_strText;
};

}  // namespace veldan
