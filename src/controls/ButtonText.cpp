#include "controls/ButtonText.h"

namespace veldan {

void DrawButtonText(CDC& dc, std::string_view text, CRect rect, CFont font, COLORREF colour, UINT format) {
    CFont* pOldFont = dc.SelectObject(&font);
    const COLORREF crOld = dc.SetTextColor(colour);
    const int nOldMode = dc.SetBkMode(TRANSPARENT);
    dc.DrawText(text, rect, format);
    dc.SetBkMode(nOldMode);
    dc.SetTextColor(crOld);
    dc.SelectObject(pOldFont);
}

}  // namespace veldan
