#include "controls/GPMenuButton.h"

#include "controls/ButtonRules.h"
#include "controls/FrozenSurface.h"
#include "controls/StatePool.h"
#include "platform/window/Desktop.h"

#include <utility>

namespace veldan {
namespace {

constexpr UINT kHoverTime = 10;
// Decoding more than this can be felt when a group opens.
constexpr int kMostIconPixels = 64 * 1024;

}  // namespace

CGPMenuButton::CGPMenuButton() = default;

CGPMenuButton::~CGPMenuButton() {
    for (const CGPFrozenState* pState : {&m_dcNormal, &m_dcHover, &m_dcDisabled}) {
        CStatePool::Get().Forget(*pState);
    }
}

const MessageMap& CGPMenuButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_MOUSEMOVE, &CGPMenuButton::OnMouseMove>(),     On<WM_ERASEBKGND, &CGPMenuButton::OnEraseBkgnd>(),
        On<WM_SETCURSOR, &CGPMenuButton::OnSetCursor>(),     On<OCM_CTLCOLOR, &CGPMenuButton::CtlColor>(),
        On<WM_KILLFOCUS, &CGPMenuButton::OnKillFocus>(),     OnReflected<BN_CLICKED, &CGPMenuButton::OnClicked>(),
        On<WM_RBUTTONDOWN, &CGPMenuButton::OnRButtonDown>(), On<WM_MOUSELEAVE, &CGPMenuButton::OnMouseLeave>(),
        On<WM_MOUSEHOVER, &CGPMenuButton::OnMouseHover>(),
    };
    static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
    return kMap;
}

bool CGPMenuButton::LoadImageResource(UINT id, const char* type) {
    m_pImage = std::make_shared<CGPResourceImage>();
    return m_pImage->Load(id, type);
}

bool CGPMenuButton::LoadImageFile(const CString& path, const char* /*type*/) {
    m_pImage = std::make_shared<CGPResourceImage>();
    return m_pImage->LoadFile(path, kMostIconPixels);
}

bool CGPMenuButton::LoadImageBytes(CString bytes) {
    m_pImage = std::make_shared<CGPResourceImage>();
    return m_pImage->LoadBytes(std::move(bytes), kMostIconPixels);
}

void CGPMenuButton::PreSubclassWindow() {
    ModifyStyle(0, BS_OWNERDRAW);
    SetOpaque();
}

bool CGPMenuButton::PreTranslateMessage(MSG& message) {
    TakeDoubleClickAsPress(message);
    RelayToToolTip(m_pToolTip.get(), message);
    return CButton::PreTranslateMessage(message);
}

HBRUSH CGPMenuButton::CtlColor(CDC* /*pDC*/, UINT /*ctlColor*/) {
    if (!m_bStatesBuilt && m_pImage) {
        FreezeLook();
    }
    return nullptr;
}

void CGPMenuButton::FreezeLook() {
    CGPMenuButtonLook look;
    look.bTextInNormal = !m_strCaption.empty();
    if (m_strCaption.ends_with('*')) {
        m_bNewMark = TRUE;
        m_strCaption.erase(m_strCaption.find_last_not_of('*') + 1);
    }
    look.nKind = m_nKind;
    look.size = GetClientRect().Size();
    look.strCaption = m_strCaption;
    look.strDescription = m_strDescription;
    look.bNewMark = m_bNewMark != FALSE;
    look.crText = m_crText;
    look.crHoverText = m_crHoverText;
    look.crHoverBottom = m_crHoverBottom;
    look.crHoverTop = m_crHoverTop;
    look.crNormalTop = m_crNormalTop;
    look.crNormalBottom = m_crNormalBottom;
    look.pImage = m_pImage;
    look.pBadge = m_bShowBadge ? m_pBadge : nullptr;
    m_pLook = std::make_unique<const CGPMenuButtonLook>(std::move(look));
    m_bStatesBuilt = TRUE;
}

void CGPMenuButton::DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) {
    using State = CGPMenuButtonLook::State;
    const State state = m_bDisabledLook ? State::Disabled : m_bHover || m_bSelected ? State::Hover : State::Normal;
    CGPFrozenState& frozen = state == State::Disabled ? m_dcDisabled : state == State::Hover ? m_dcHover : m_dcNormal;
    if (m_bStatesBuilt) {
        if (!frozen.Exists()) {
            m_pLook->Compose(frozen, state);
        }
        CStatePool::Get().Use(frozen, GetSafeHwnd());
    }
    PaintState(*lpDrawItemStruct, frozen);
}

void CGPMenuButton::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    if (!m_bTracking) {
        m_bTracking = TrackMouseEvent(TME_HOVER | TME_LEAVE, kHoverTime);
    }
    Default();
}

BOOL CGPMenuButton::OnEraseBkgnd(CDC* /*pDC*/) {
    return TRUE;
}

BOOL CGPMenuButton::OnSetCursor(CWnd* /*pWnd*/, UINT /*hitTest*/, UINT /*message*/) {
    if (!m_hCursor) {
        return static_cast<BOOL>(Default());
    }
    Desktop::Get().SetCursor(*m_hCursor);
    return TRUE;
}

void CGPMenuButton::OnKillFocus(CWnd* /*pNewWnd*/) {
    Default();
    HidePopupOnFocusLoss(*this);
}

/// The parent's handler may delete this button.
void CGPMenuButton::OnClicked() {
    if (CWnd* parent = GetParent()) {
        parent->SendMessage(kMsgItemClick, GetDlgCtrlID());
    }
}

void CGPMenuButton::OnRButtonDown(UINT /*flags*/, CPoint point) {
    const HWND self = GetSafeHwnd();
    if (m_bRightClickEnabled == TRUE && m_pfnRightClick) {
        const MenuButtonClickInfo info = {static_cast<int>(GetDlgCtrlID()), point.x, point.y, this};
        m_pfnRightClick(&info);
    }
    if (FromHandle(self) == this) {
        Default();
    }
}

LRESULT CGPMenuButton::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHover = FALSE;
    m_bTracking = FALSE;
    Invalidate();
    return 0;
}

LRESULT CGPMenuButton::OnMouseHover(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (CWnd* parent = GetParent()) {
        parent->PostMessage(m_nKind == 0 ? kMsgGroupHover : kMsgItemHover, GetDlgCtrlID());
    }
    m_bHover = TRUE;
    Invalidate();
    return 0;
}

}  // namespace veldan
