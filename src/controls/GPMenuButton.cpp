#include "controls/GPMenuButton.h"

#include "controls/FrozenSurface.h"

#include <utility>

namespace veldan {
namespace {

constexpr UINT kHoverTime = 10;
// Decoding more than this can be felt when a group opens.
constexpr int kMostIconPixels = 64 * 1024;

}  // namespace

CGPMenuButton::CGPMenuButton() : CGPSkinButton(kHoverTime) {}

CGPMenuButton::~CGPMenuButton() {
    for (const CGPFrozenState* pState : {&m_dcNormal, &m_dcHover, &m_dcDisabled}) {
        m_pCache->States().Forget(*pState);
    }
}

const MessageMap& CGPMenuButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<OCM_CTLCOLOR, &CGPMenuButton::CtlColor>(),         On<WM_KILLFOCUS, &CGPMenuButton::OnKillFocus>(),
        OnReflected<BN_CLICKED, &CGPMenuButton::OnClicked>(), On<WM_RBUTTONDOWN, &CGPMenuButton::OnRButtonDown>(),
        On<WM_MOUSEHOVER, &CGPMenuButton::OnMouseHover>(),
    };
    static const MessageMap kMap{&CGPSkinButton::ClassMessageMap(), kEntries};
    return kMap;
}

bool CGPMenuButton::LoadImageResource(UINT id, const char* type) {
    m_nImageBytes = 0;
    if (std::shared_ptr<CGPResourceImage> pPicture = m_pCache->Picture(id, type)) {
        m_pImage = std::move(pPicture);
        return true;
    }
    m_pImage = std::make_shared<CGPResourceImage>();
    return false;
}

bool CGPMenuButton::LoadImageFile(const CString& path, const char* /*type*/) {
    m_pImage = std::make_shared<CGPResourceImage>();
    const bool isRead = m_pImage->LoadFile(path, kMostIconPixels);
    m_nImageBytes = m_pImage->m_pBitmap->GetByteCount();
    return isRead;
}

bool CGPMenuButton::LoadImageBytes(CString bytes) {
    m_pImage = std::make_shared<CGPResourceImage>();
    const bool isRead = m_pImage->LoadBytes(std::move(bytes), kMostIconPixels);
    m_nImageBytes = m_pImage->m_pBitmap->GetByteCount();
    return isRead;
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
            m_pLook->Compose(frozen, state, *m_pCache);
        }
        m_pCache->States().Use(frozen, GetSafeHwnd());
    }
    PaintState(*lpDrawItemStruct, frozen);
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

LRESULT CGPMenuButton::OnMouseHover(WPARAM wParam, LPARAM lParam) {
    if (CWnd* parent = GetParent()) {
        parent->PostMessage(m_nKind == 0 ? kMsgGroupHover : kMsgItemHover, GetDlgCtrlID());
    }
    return CGPSkinButton::OnMouseHover(wParam, lParam);
}

}  // namespace veldan
