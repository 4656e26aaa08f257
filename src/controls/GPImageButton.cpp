#include "controls/GPImageButton.h"

#include "controls/ButtonRules.h"
#include "controls/FrozenSurface.h"
#include "platform/window/Desktop.h"

namespace veldan {
namespace {

constexpr UINT kHoverTime = 1;
constexpr UINT_PTR kFrameTimer = 1;
constexpr UINT kFrameTime = 180;
constexpr UINT kToolId = 1;
constexpr LPARAM kToolTipDelay = 800;
constexpr std::size_t kLongestWindowText = 1023;

}  // namespace

CGPImageButton::CGPImageButton(int style) : m_nStyle(style) {}

CGPImageButton::~CGPImageButton() = default;

const MessageMap& CGPImageButton::ClassMessageMap() {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_MOUSEMOVE, &CGPImageButton::OnMouseMove>(),   On<WM_ERASEBKGND, &CGPImageButton::OnEraseBkgnd>(),
        On<WM_SETCURSOR, &CGPImageButton::OnSetCursor>(),   On<OCM_CTLCOLOR, &CGPImageButton::CtlColor>(),
        On<WM_MOUSELEAVE, &CGPImageButton::OnMouseLeave>(), On<WM_MOUSEHOVER, &CGPImageButton::OnMouseHover>(),
        On<WM_TIMER, &CGPImageButton::OnTimer>(),
    };
    static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
    return kMap;
}

const MessageMap& CGPImageButton::GetMessageMap() const {
    return ClassMessageMap();
}

bool CGPImageButton::LoadImageFile(const CString& path, const char* /*type*/, BOOL vertical, int stateCount,
                                   BOOL parentBackground) {
    m_bVertical = vertical;
    m_nStateCount = stateCount;
    m_bParentBackground = parentBackground;
    m_pImage = std::make_unique<CGPResourceImage>();
    return m_pImage->LoadFile(path);
}

void CGPImageButton::SetTooltipText(CString text, BOOL activate) {
    InitToolTip();
    m_strToolTip = std::move(text);
    if (m_strToolTip.empty()) {
        m_strToolTip = GetWindowText().substr(0, kLongestWindowText);
    }
    if (m_pToolTip->SendMessage(TTM_GETTOOLCOUNT) == 0) {
        m_pToolTip->AddTool(this, m_strToolTip, GetClientRect(), kToolId);
    }
    m_pToolTip->UpdateTipText(m_strToolTip, this, kToolId);
    m_pToolTip->SendMessage(TTM_SETDELAYTIME, 0, kToolTipDelay);
    m_pToolTip->SendMessage(TTM_ACTIVATE, static_cast<WPARAM>(activate != FALSE));
}

void CGPImageButton::InitToolTip() {
    if (!m_pToolTip) {
        m_pToolTip = std::make_unique<CToolTipCtrl>();
        m_pToolTip->Create(this, 0);
        m_pToolTip->SendMessage(TTM_ACTIVATE, TRUE);
    }
}

void CGPImageButton::ReleaseAnimationFrames() {
    m_pAnimation.reset();
    m_pFrames.reset();
    m_nFrameCount = 0;
    m_nFrame = -1;
    m_bAnimated = FALSE;
}

void CGPImageButton::PreSubclassWindow() {
    ModifyStyle(0, BS_OWNERDRAW);
    SetOpaque();
}

bool CGPImageButton::PreTranslateMessage(MSG& message) {
    TakeDoubleClickAsPress(message);
    RelayToToolTip(m_pToolTip.get(), message);
    return CButton::PreTranslateMessage(message);
}

void CGPImageButton::DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) {
    PaintSurface(*lpDrawItemStruct, SurfaceToPaint(lpDrawItemStruct->itemState));
}

const CDC& CGPImageButton::SurfaceToPaint(UINT itemState) const {
    if (m_bDisabledLook) {
        return m_dcDisabled;
    }
    if ((itemState & ODS_SELECTED) != 0) {
        return m_dcPressed;
    }
    if (m_bLatched) {
        return m_dcLatched;
    }
    if (m_bToggled) {
        return m_bHover ? m_dcToggledHover : m_dcPressed;
    }
    if (m_bAnimated && m_nFrame >= 0 && m_nFrame < m_nFrameCount) {
        return m_pFrames[static_cast<std::size_t>(m_nFrame)];
    }
    return m_bHover ? m_dcHover : m_dcNormal;
}

void CGPImageButton::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    if (!m_bTracking) {
        m_bTracking = TrackMouseEvent(TME_HOVER | TME_LEAVE, kHoverTime);
    }
    Default();
}

BOOL CGPImageButton::OnEraseBkgnd(CDC* /*pDC*/) {
    return TRUE;
}

BOOL CGPImageButton::OnSetCursor(CWnd* /*pWnd*/, UINT /*hitTest*/, UINT /*message*/) {
    if (!m_hCursor) {
        return static_cast<BOOL>(Default());
    }
    Desktop::Get().SetCursor(*m_hCursor);
    return TRUE;
}

HBRUSH CGPImageButton::CtlColor(CDC* /*pDC*/, UINT /*ctlColor*/) {
    return nullptr;
}

LRESULT CGPImageButton::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHover = FALSE;
    m_bTracking = FALSE;
    if (m_bAnimated) {
        KillTimer(kFrameTimer);
    }
    Invalidate();
    return 0;
}

LRESULT CGPImageButton::OnMouseHover(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHover = TRUE;
    if (m_bAnimated) {
        SetTimer(kFrameTimer, kFrameTime);
    }
    Invalidate();
    return 0;
}

void CGPImageButton::OnTimer(UINT_PTR /*id*/) {
    if (++m_nFrame >= m_nFrameCount) {
        m_nFrame = 0;
    }
    Invalidate(false);
    Default();
}

}  // namespace veldan
