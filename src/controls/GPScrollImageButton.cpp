#include "controls/GPScrollImageButton.h"

namespace veldan {

CGPScrollImageButton::CGPScrollImageButton() : CGPImageButton(0) {}

const MessageMap& CGPScrollImageButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_KILLFOCUS, &CGPScrollImageButton::OnKillFocus>(),
    };
    static const MessageMap kMap{&CGPImageButton::ClassMessageMap(), kEntries};
    return kMap;
}

void CGPScrollImageButton::OnKillFocus(CWnd* /*pNewWnd*/) {
    Default();
    HidePopupOnFocusLoss(*this);
}

}  // namespace veldan
