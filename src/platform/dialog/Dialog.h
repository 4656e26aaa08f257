#pragma once

#include "platform/dialog/DataExchange.h"
#include "platform/dialog/DialogTemplate.h"
#include "platform/window/Wnd.h"

#include <memory>
#include <vector>

namespace veldan {

/// A popup window made from a template, with the template's controls. It owns an object for each of them; a member of a
/// derived class takes a control over by DDX_Control or SubclassDlgItem. A dialog that receives the focus hands it on
/// at once: to its child that had it last, if that can be seen and is enabled, else to the one that GetFirstFocus
/// names, else it keeps it.
class VELDAN_PLATFORM_API CDialog : public CWnd {
public:
    CDialog();
    ~CDialog() override;

    /// Makes the modeless dialog and runs OnInitDialog. It stays hidden unless the template says otherwise. Without a
    /// parent the owner is the active window, or else the host's frame. False without the template, or if the window
    /// did not survive its own creation.
    bool Create(UINT templateId, CWnd* parent = nullptr);

    /// Exchanges texts between members and controls, and binds members to controls. True: from the controls to the
    /// members. False while there is no window.
    bool UpdateData(bool saveAndValidate = true);
    /// The control that the Tab key moves on to from `current`, or back to with `previous`: the next that has
    /// WS_TABSTOP, can be seen and is enabled, in the template's order, then those made later; after the last comes the
    /// first. Null if there is none.
    [[nodiscard]] CWnd* GetNextDlgTabItem(const CWnd* current, bool previous = false) const;

protected:
    /// Runs when the window and its controls exist. The default binds members and shows their texts.
    virtual BOOL OnInitDialog();
    /// Overridden to exchange each member with its control. The default does nothing.
    virtual void DoDataExchange(CDataExchange* pDX);

    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;

private:
    [[nodiscard]] bool CreateControls(const DialogTemplate& form);
    [[nodiscard]] std::vector<HWND> TabOrder() const;
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    void OnSetFocus(CWnd* before);
    [[nodiscard]] CWnd* FocusTarget();

    std::vector<std::unique_ptr<CWnd>> m_controls;  // without a window once a member has taken it over
    std::vector<HWND> m_templateOrder;
};

}  // namespace veldan
