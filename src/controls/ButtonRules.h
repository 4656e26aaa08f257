#pragma once

#include "platform/widgets/ToolTip.h"
#include "platform/window/Wnd.h"

namespace veldan {

// Rules that all skinned buttons keep.

/// Makes a double click arrive as a second press.
void TakeDoubleClickAsPress(MSG& message);

/// Shows a retrieved message to the button's tooltip, if it has one.
void RelayToToolTip(CToolTipCtrl* pToolTip, MSG& message);

/// For a button that lost the focus: hides the popup that it stands in, unless the pointer is in that popup. The popup
/// and the button may be gone afterwards, since the host hears of the lost activation.
void HidePopupOnFocusLoss(const CWnd& button);

}  // namespace veldan
