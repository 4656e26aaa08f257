#include "platform/dialog/Dialog.h"

#include "platform/draw/Font.h"
#include "platform/window/Desktop.h"

#include <algorithm>
#include <utility>

namespace veldan {

namespace {

constinit const WindowClass kDialogClass{"Dialog", CS_DBLCLKS};

/// The cells of a point font's letters, without the room above them, at 96 dots an inch.
constexpr int HeightOfPoints(int points) {
    return -(points * 96 + 36) / 72;
}

bool IsTabStop(const WindowRecord* control) {
    return control != nullptr && (control->style & WS_TABSTOP) != 0 && control->visible && control->enabled;
}

}  // namespace

CDialog::CDialog() = default;

CDialog::CDialog(UINT templateId, CWnd* parent) : m_uTemplateId(templateId), m_pParentWnd(parent) {}

CDialog::~CDialog() {
    if (m_pModal != nullptr) {
        std::exchange(m_pModal, nullptr)->isObjectGone = true;
    }
    // The one that has the focus hands it to the dialog, which looks at its other members then.
    m_controls.clear();
}

bool CDialog::Create(UINT templateId, CWnd* parent) {
    const DialogTemplate* form = FindDialogTemplate(templateId);
    Desktop& desktop = Desktop::Get();
    if (form == nullptr || !CreateFrom(*form, parent != nullptr ? parent->GetSafeHwnd() : desktop.DefaultOwner())) {
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

bool CDialog::CreateFrom(const DialogTemplate& form, HWND owner) {
    return CreateEx(0, kDialogClass, form.caption, form.style & ~WS_VISIBLE, form.size.ToPixels(), owner, 0) &&
           CreateControls(form);
}

/// False if the dialog did not survive it.
bool CDialog::CreateControls(const DialogTemplate& form) {
    m_controls.clear();
    m_templateOrder.clear();
    if (form.controls.empty()) {
        return true;
    }
    const HWND self = GetSafeHwnd();
    const CFont font(HeightOfPoints(form.pointSize), kFontNormal, Underline::No, form.face);
    SetFont(&font, false);
    for (const DialogControl& control : form.controls) {
        if (FromHandle(self) != this) {
            return false;
        }
        CWnd& object = *m_controls.emplace_back(control.make());
        if (object.CreateEx(0, *control.windowClass, control.text, control.style, control.place.ToPixels(), self,
                            control.id) &&
            FromHandle(self) == this) {
            m_templateOrder.push_back(object.GetSafeHwnd());
            object.SetFont(&font, false);
        }
    }
    return FromHandle(self) == this;
}

BOOL CDialog::OnInitDialog() {
    UpdateData(false);
    return TRUE;
}

void CDialog::DoDataExchange(CDataExchange* /*pDX*/) {}

bool CDialog::UpdateData(bool saveAndValidate) {
    if (!GetSafeHwnd()) {
        return false;
    }
    CDataExchange exchange(*this, saveAndValidate);
    DoDataExchange(&exchange);
    return true;
}

/// The controls of the template in its order, whatever their stacking, then the other children.
std::vector<HWND> CDialog::TabOrder() const {
    std::vector<HWND> order = m_templateOrder;
    for (const HWND child : Desktop::Get().VisibleChildrenOf(GetSafeHwnd())) {
        if (std::ranges::find(m_templateOrder, child) == m_templateOrder.end()) {
            order.push_back(child);
        }
    }
    return order;
}

CWnd* CDialog::GetNextDlgTabItem(const CWnd* current, bool previous) const {
    std::vector<HWND> order = TabOrder();
    if (previous) {
        std::ranges::reverse(order);
    }
    const auto at = std::ranges::find(order, current != nullptr ? current->GetSafeHwnd() : HWND());
    if (at != order.end()) {
        std::rotate(order.begin(), at + 1, order.end());
    }
    const auto next = std::ranges::find_if(order, [](HWND control) { return IsTabStop(Desktop::Get().Find(control)); });
    return next != order.end() ? FromHandle(*next) : nullptr;
}

const MessageMap& CDialog::ClassMessageMap() {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_INITDIALOG, &CDialog::HandleInitDialog>(),
        On<WM_SETFOCUS, &CDialog::OnSetFocus>(),
        On<WM_CLOSE, &CDialog::OnClose>(),
        OnCommand<IDOK, &CDialog::OnOK>(),
        OnCommand<IDCANCEL, &CDialog::OnCancel>(),
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
    const bool isUsable = last != nullptr && last->IsWindowVisible() && Desktop::Get().TakesInput(last->GetSafeHwnd());
    return isUsable ? last : GetFirstFocus();
}

}  // namespace veldan
