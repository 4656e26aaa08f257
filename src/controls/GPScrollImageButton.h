#pragma once

#include "controls/GPImageButton.h"

namespace veldan {

/// An image button in a popup: when it loses the focus and the pointer is outside of the popup, the popup is hidden.
class CGPScrollImageButton : public CGPImageButton {
public:
    CGPScrollImageButton();

protected:
    [[nodiscard]] const MessageMap& GetMessageMap() const override;

private:
    void OnKillFocus(CWnd* pNewWnd);
};

}  // namespace veldan
