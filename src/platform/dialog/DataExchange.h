#pragma once

#include "platform/core/Export.h"
#include "platform/core/Text.h"

namespace veldan {

class CDialog;
class CWnd;

/// One exchange between a dialog's members and its controls; lives for the length of a DoDataExchange.
class CDataExchange {
public:
    CDataExchange(CDialog& dialog, bool saveAndValidate) : m_pDlgWnd(&dialog), m_bSaveAndValidate(saveAndValidate) {}

    CDialog* m_pDlgWnd;
    bool m_bSaveAndValidate;  ///< True: from the controls to the members; false: from the members to the controls.
};

/// Binds a member to the control with an id, at the first exchange; later ones do nothing. Without such a control the
/// member stays without a window.
VELDAN_PLATFORM_API void DDX_Control(CDataExchange* pDX, UINT id, CWnd& control);
/// Moves the text of the control with an id. Without such a control the text stays as it is.
VELDAN_PLATFORM_API void DDX_Text(CDataExchange* pDX, UINT id, CString& text);

}  // namespace veldan
