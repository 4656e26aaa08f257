#include "platform/dialog/DataExchange.h"

#include "platform/dialog/Dialog.h"

namespace veldan {

void DDX_Control(CDataExchange* pDX, UINT id, CWnd& control) {
    if (!control.GetSafeHwnd()) {
        control.SubclassDlgItem(id, pDX->m_pDlgWnd);
    }
}

void DDX_Text(CDataExchange* pDX, UINT id, CString& text) {
    CWnd* control = pDX->m_pDlgWnd->GetDlgItem(id);
    if (control == nullptr) {
        return;
    }
    if (pDX->m_bSaveAndValidate) {
        text = control->GetWindowText();
    } else if (control->GetWindowText() != text) {
        control->SetWindowText(text);
    }
}

}  // namespace veldan
