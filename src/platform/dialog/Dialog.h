#pragma once

#include "platform/dialog/DataExchange.h"
#include "platform/dialog/DialogTemplate.h"
#include "platform/window/Wnd.h"

#include <memory>
#include <vector>

namespace veldan {

// Results of dialogs, and the ids of the controls that give them.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

/// A popup window made from a template, with the template's controls. It owns an object for each of them; a member of a
/// derived class takes a control over by DDX_Control or SubclassDlgItem. A dialog that receives the focus hands it on
/// at once: to its child that had it last, if that can be seen and is enabled, else to the one that GetFirstFocus
/// names, else it keeps it.
class VELDAN_PLATFORM_API CDialog : public CWnd {
public:
    CDialog();
    /// For DoModal: the template, and the window over which the dialog is to stand, whose object lives until then.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    /// Makes the modeless dialog and runs OnInitDialog. It stays hidden unless the template says otherwise. Without a
    /// parent the owner is the active window, or else the host's frame. False without the template, or if the window
    /// did not survive its own creation.
    bool Create(UINT templateId, CWnd* parent = nullptr);

    /// Makes the dialog, shows it and handles messages until it ends; the result of EndDialog. IDCANCEL if its window,
    /// its object, its owner or the display went away or the program quits; -1 without the template, or if the window
    /// could not be made. Its owner is the parent's top-level window, else the active window, else the topmost frame,
    /// and can't be used meanwhile. The object may be deleted by any handler meanwhile.
    ///
    /// In a modal dialog the Tab key moves the focus, Enter is a click on the control IDOK and Escape one on IDCANCEL,
    /// whichever control has the focus.
    int DoModal();
    /// Ends DoModal with a result once the current message is handled. Does nothing to a modeless dialog.
    void EndDialog(int result);

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
    /// The click on IDOK: takes the texts over into the members and ends with IDOK.
    virtual void OnOK();
    /// The click on IDCANCEL, and a person's wish to close: ends with IDCANCEL.
    virtual void OnCancel();
    /// Whether all other top-level windows can't be used while the dialog runs, and not just its owner.
    [[nodiscard]] virtual bool DisablesAllWindows() const;
    bool PreTranslateMessage(MSG& message) override;
    /// In a modal dialog the first control that the Tab key stops at.
    [[nodiscard]] CWnd* GetFirstFocus() override;

    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;

private:
    /// A run of DoModal, on its stack.
    struct ModalRun {
        bool isObjectGone = false;
        bool goesOn = true;
        int result = IDCANCEL;
    };

    [[nodiscard]] bool CreateFrom(const DialogTemplate& form, HWND owner);
    void BeginModal();
    bool HandleDialogKey(UINT key);
    void ClickControl(int id);
    void OnClose();
    [[nodiscard]] bool CreateControls(const DialogTemplate& form);
    [[nodiscard]] std::vector<HWND> TabOrder() const;
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    void OnSetFocus(CWnd* before);
    [[nodiscard]] CWnd* FocusTarget();

    std::vector<std::unique_ptr<CWnd>> m_controls;  // without a window once a member has taken it over
    std::vector<HWND> m_templateOrder;
    UINT m_uTemplateId = 0;
    CWnd* m_pParentWnd = nullptr;
    ModalRun* m_pModal = nullptr;  // while DoModal runs
};

}  // namespace veldan
