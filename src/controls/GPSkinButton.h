#pragma once

#include "platform/widgets/Button.h"
#include "platform/widgets/ToolTip.h"

#include <memory>
#include <optional>

namespace veldan {

/// What all skinned buttons have in common. They are owner-drawn and cover all of themselves, so nothing is erased.
/// They know whether the pointer rests on them, may have a cursor and a tooltip of their own, and take the second press
/// of a double click as a press like any other.
class CGPSkinButton : public CButton {
public:
    ~CGPSkinButton() override;

    BOOL m_bHover = FALSE;                 ///< The pointer rests on the button.
    BOOL m_bTracking = FALSE;              ///< Rest and leave were asked for.
    std::optional<CursorShape> m_hCursor;  ///< Over the button; none leaves the class's.
    std::unique_ptr<CToolTipCtrl> m_pToolTip;
    CString m_strToolTip;

protected:
    /// The pointer rests on the button when it has stood still for so long, in milliseconds.
    explicit CGPSkinButton(UINT hoverTime);

    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;
    void PreSubclassWindow() override;
    bool PreTranslateMessage(MSG& message) override;

    /// These only note it and have the button painted anew. A derived class that does more calls them.
    LRESULT OnMouseHover(WPARAM wParam, LPARAM lParam);
    LRESULT OnMouseLeave(WPARAM wParam, LPARAM lParam);

private:
    void OnMouseMove(UINT flags, CPoint point);
    BOOL OnEraseBkgnd(CDC* pDC);
    BOOL OnSetCursor(CWnd* pWnd, UINT hitTest, UINT message);

    UINT m_nHoverTime;
};

/// For a button that lost the focus: hides the popup that it stands in, unless the pointer is in that popup. The popup
/// and the button may be gone afterwards, since the host hears of the lost activation.
void HidePopupOnFocusLoss(const CWnd& button);

}  // namespace veldan
