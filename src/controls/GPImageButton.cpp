#include "controls/GPImageButton.h"

#include <utility>
#include "controls/FrozenSurface.h"

namespace veldan {
namespace {

constexpr UINT kHoverTime = 1;
constexpr UINT_PTR kFrameTimer = 1;
constexpr UINT kFrameTime = 180;
constexpr UINT kToolId = 1;
constexpr LPARAM kToolTipDelay = 800;
constexpr std::size_t kLongestWindowText = 1023;

}  // namespace

CGPImageButton::CGPImageButton(int style) : CGPSkinButton(kHoverTime), m_nStyle(style) {}

CGPImageButton::~CGPImageButton() = default;

const MessageMap& CGPImageButton::ClassMessageMap() {
    static constexpr MessageMapEntry kEntries[] = {
        On<OCM_CTLCOLOR, &CGPImageButton::CtlColor>(),
        On<WM_MOUSELEAVE, &CGPImageButton::OnMouseLeave>(),
        On<WM_MOUSEHOVER, &CGPImageButton::OnMouseHover>(),
        On<WM_TIMER, &CGPImageButton::OnTimer>(),
    };
    static const MessageMap kMap{&CGPSkinButton::ClassMessageMap(), kEntries};
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

HBRUSH CGPImageButton::CtlColor(CDC* /*pDC*/, UINT /*ctlColor*/) {
    return nullptr;
}

LRESULT CGPImageButton::OnMouseLeave(WPARAM wParam, LPARAM lParam) {
    if (m_bAnimated) {
        KillTimer(kFrameTimer);
    }
    return CGPSkinButton::OnMouseLeave(wParam, lParam);
}

LRESULT CGPImageButton::OnMouseHover(WPARAM wParam, LPARAM lParam) {
    if (m_bAnimated) {
        SetTimer(kFrameTimer, kFrameTime);
    }
    return CGPSkinButton::OnMouseHover(wParam, lParam);
}

void CGPImageButton::OnTimer(UINT_PTR /*id*/) {
    if (++m_nFrame >= m_nFrameCount) {
        m_nFrame = 0;
    }
    Invalidate(false);
    Default();
}

}  // namespace veldan
