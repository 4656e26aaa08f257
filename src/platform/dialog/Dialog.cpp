#include "platform/dialog/Dialog.h"

#include "platform/resource/Resource.h"
#include "platform/window/Desktop.h"

namespace veldan {

namespace {

constinit const WindowClass kDialogClass{"Dialog", CS_DBLCLKS};

// The dialog font at 96 dpi, in pixels.
constexpr int kAverageWidth = 6;
constexpr int kLineHeight = 13;

const DialogTemplate* FindTemplate(UINT id) {
    const std::span<const std::byte> data = FindResource(id, "DIALOG");
    return data.size() == sizeof(DialogTemplate) ? reinterpret_cast<const DialogTemplate*>(data.data()) : nullptr;
}

}  // namespace

CDialog::CDialog() = default;
CDialog::~CDialog() = default;

bool CDialog::Create(UINT templateId, CWnd* parent) {
    const DialogTemplate* form = FindTemplate(templateId);
    if (form == nullptr) {
        return false;
    }
    Desktop& desktop = Desktop::Get();
    const HWND owner = parent != nullptr ? parent->GetSafeHwnd() : desktop.DefaultOwner();
    const CRect rect{0, 0, form->size.cx * kAverageWidth / 4, form->size.cy * kLineHeight / 8};
    if (!CreateEx(0, kDialogClass, form->caption, form->style & ~WS_VISIBLE, rect, owner, 0)) {
        return false;
    }
    const HWND self = GetSafeHwnd();
    const bool show = (form->style & WS_VISIBLE) != 0;
    desktop.SendMessage(self, WM_INITDIALOG);
    if (show) {
        desktop.ShowWindow(self, SW_SHOW);
    }
    return desktop.Find(self) != nullptr;
}

BOOL CDialog::OnInitDialog() {
    return TRUE;
}

const MessageMap& CDialog::ClassMessageMap() {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_INITDIALOG, &CDialog::HandleInitDialog>(),
        On<WM_SETFOCUS, &CDialog::OnSetFocus>(),
    };
    static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
    return kMap;
}

const MessageMap& CDialog::GetMessageMap() const {
    return ClassMessageMap();
}

LRESULT CDialog::HandleInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return OnInitDialog();
}

void CDialog::OnSetFocus(CWnd* /*before*/) {
    if (CWnd* target = FocusTarget()) {
        target->SetFocus();
    }
}

CWnd* CDialog::FocusTarget() {
    const WindowRecord* record = Desktop::Get().Find(GetSafeHwnd());
    CWnd* last = record != nullptr && record->topLevel ? FromHandle(record->topLevel->lastFocus) : nullptr;
    return last != nullptr && last->IsWindowVisible() && last->IsWindowEnabled() ? last : GetFirstFocus();
}

}  // namespace veldan
