#include "platform/core/Keys.h"
#include "platform/dialog/Dialog.h"
#include "platform/window/Desktop.h"

#include <vector>

namespace veldan {

namespace {

/// Top-level windows that can't be used until the object goes. Windows that were disabled before stay so.
class DisabledWindows {
public:
    DisabledWindows(HWND owner, bool all) {
        Desktop& desktop = Desktop::Get();
        const std::vector<HWND> windows = all ? desktop.TopLevels() : std::vector<HWND>{owner};
        for (const HWND window : windows) {
            const WindowRecord* record = desktop.Find(window);
            if (record != nullptr && record->enabled && (record->exStyle & WS_EX_NOACTIVATE) == 0) {
                m_windows.push_back(window);
                desktop.EnableWindow(window, false);
            }
        }
    }
    ~DisabledWindows() {
        for (const HWND window : m_windows) {
            Desktop::Get().EnableWindow(window, true);
        }
    }
    /// A press on one of them goes to this window.
    void SetModal(HWND modal) {
        for (const HWND window : m_windows) {
            Desktop::Get().EnableWindow(window, false, modal);
        }
    }
    DisabledWindows(const DisabledWindows&) = delete;
    DisabledWindows& operator=(const DisabledWindows&) = delete;

private:
    std::vector<HWND> m_windows;
};

}  // namespace

int CDialog::DoModal() {
    const DialogTemplate* form = FindDialogTemplate(m_uTemplateId);
    if (form == nullptr || GetSafeHwnd() || m_pModal != nullptr) {
        return -1;
    }
    Desktop& desktop = Desktop::Get();
    const HWND owner =
        desktop.TopLevelOf(m_pParentWnd != nullptr ? m_pParentWnd->GetSafeHwnd() : desktop.DefaultOwner());
    ModalRun run;
    m_pModal = &run;
    HWND self;
    {
        // Whatever held the pointer has no claim on it beside a modal dialog.
        desktop.CancelPopups();
        desktop.SetCapture({});
        desktop.ReleaseGrab();
        DisabledWindows disabled(owner, DisablesAllWindows());
        const bool created = !run.isObjectGone && CreateFrom(*form, owner);
        if (!created) {
            run.result = -1;
        } else {
            self = GetSafeHwnd();
            disabled.SetModal(self);
            BeginModal();
            desktop.RunWhile([&] { return run.goesOn && !run.isObjectGone && FromHandle(self) == this; });
        }
    }
    // The owner can be used again by now, so the activation goes to it.
    desktop.DestroyWindow(self);
    if (!run.isObjectGone) {
        m_pModal = nullptr;
    }
    return run.result;
}

/// Every step may end the dialog, and delete its object.
void CDialog::BeginModal() {
    Desktop& desktop = Desktop::Get();
    const HWND self = GetSafeHwnd();
    const bool focusesFirst = desktop.SendMessage(self, WM_INITDIALOG) != 0;
    if (FromHandle(self) == this && focusesFirst) {
        if (CWnd* first = GetNextDlgTabItem(nullptr)) {
            first->SetFocus();
        }
    }
    if (FromHandle(self) == this && m_pModal->goesOn) {
        desktop.ShowWindow(self, SW_SHOW);
    }
}

void CDialog::EndDialog(int result) {
    if (m_pModal != nullptr && m_pModal->goesOn) {
        m_pModal->goesOn = false;
        m_pModal->result = result;
        PostMessage(0);  // wakes the loop
    }
}

void CDialog::OnOK() {
    UpdateData(true);
    EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

bool CDialog::DisablesAllWindows() const {
    return false;
}

CWnd* CDialog::GetFirstFocus() {
    return m_pModal != nullptr ? GetNextDlgTabItem(nullptr) : nullptr;
}

void CDialog::OnClose() {
    if (m_pModal != nullptr) {
        ClickControl(IDCANCEL);
    } else {
        Default();
    }
}

bool CDialog::PreTranslateMessage(MSG& message) {
    const bool isKey = m_pModal != nullptr && message.message == WM_KEYDOWN;
    return (isKey && HandleDialogKey(static_cast<UINT>(message.wParam))) || CWnd::PreTranslateMessage(message);
}

bool CDialog::HandleDialogKey(UINT key) {
    switch (key) {
        case VK_TAB:
            if (CWnd* next = GetNextDlgTabItem(GetFocus(), Desktop::Get().GetKeyState(VK_SHIFT) < 0)) {
                next->SetFocus();
            }
            return true;
        case VK_RETURN:
            ClickControl(IDOK);
            return true;
        case VK_ESCAPE:
            ClickControl(IDCANCEL);
            return true;
        default:
            return false;
    }
}

/// Says what a click on the control would say; a disabled one can't be clicked.
void CDialog::ClickControl(int id) {
    const CWnd* control = GetDlgItem(static_cast<UINT>(id));
    if (control != nullptr && !control->IsWindowEnabled()) {
        return;
    }
    const HWND handle = control != nullptr ? control->GetSafeHwnd() : HWND();
    SendMessage(WM_COMMAND, static_cast<WPARAM>(id), static_cast<LPARAM>(handle.Value()));
}

}  // namespace veldan
