#include "controls/ButtonText.h"
#include "controls/ColorMatrices.h"
#include "controls/FrozenSurface.h"
#include "controls/GPImageButton.h"
#include "controls/GPMemDC.h"
#include "platform/window/ClientDC.h"

namespace veldan {
namespace {

constexpr int kStateCount = 6;
constexpr CRect kComputed = {-1, -1, -1, -1};

/// What becomes of the first picture where a state has none of its own; nothing for the first state.
constexpr std::array<const ColorMatrix*, kStateCount> kFallbacks = {nullptr,     &BrightenMatrix, &DarkenMatrix,
                                                                    &GrayMatrix, &DarkenMatrix,   &BrightenMatrix};

RectF Whole(const CGPResourceImage& image) {
    const CSize size = image.GetSize();
    return {0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy)};
}

}  // namespace

/// Where everything stands, the same for all states.
struct CGPImageButton::Layout {
    CSize client;
    std::array<RectF, kStateCount> slices;
    RectF icon = {17, 38, 35, 35};
    RectF iconSource;
    RectF overlay = {172, 33, 0, 0};
    RectF overlaySource;
    bool showOverlay = false;
    CRect text;
    CRect subText;
};

std::array<CDC*, 7> CGPImageButton::Surfaces() {
    // The six states in their order, then the background.
    return {&m_dcNormal, &m_dcHover, &m_dcPressed, &m_dcDisabled, &m_dcLatched, &m_dcToggledHover, &m_dcBackground};
}

void CGPImageButton::ReleaseStateBitmaps() {
    for (CDC* pSurface : Surfaces()) {
        pSurface->DeleteDC();
    }
    m_bStatesBuilt = FALSE;
}

bool CGPImageButton::BuildStateBitmaps() {
    ReleaseStateBitmaps();
    if (!m_pImage || m_nStateCount < 1) {
        return false;
    }
    CClientDC dc(this);
    CGPMemDC buffer(dc, GetClientRect());
    const Layout layout = MakeLayout(buffer);
    SnapshotParent(m_dcBackground, *this);
    for (int state = 0; state < kStateCount; ++state) {
        ComposeState(buffer, layout, state);
        FreezeSurface(*Surfaces()[static_cast<std::size_t>(state)], dc, buffer, layout.client);
    }
    m_bStatesBuilt = TRUE;
    Invalidate();
    return true;
}

CGPImageButton::Layout CGPImageButton::MakeLayout(CDC& buffer) const {
    Layout layout;
    layout.client = GetClientRect().Size();
    const CSize size = m_pImage->GetSize();
    const auto count = static_cast<float>(m_nStateCount);
    const float width = static_cast<float>(size.cx) / (m_bVertical ? 1 : count);
    const float height = static_cast<float>(size.cy) / (m_bVertical ? count : 1);
    for (int i = 0; i < kStateCount; ++i) {
        // A start is a whole pixel, the size of a slice need not be.
        const int start =
            m_nStateCount > i ? static_cast<int>(static_cast<float>(i) * (m_bVertical ? height : width)) : 0;
        const auto offset = static_cast<float>(start);
        layout.slices[static_cast<std::size_t>(i)] = {m_bVertical ? 0 : offset, m_bVertical ? offset : 0, width,
                                                      height};
    }
    if (m_rcfIcon.x != -1.0F && m_rcfIcon.y != -1.0F) {
        layout.icon = m_rcfIcon;
    }
    if (m_bShowIcon && m_pIcon) {
        layout.iconSource = Whole(*m_pIcon);
    }
    layout.showOverlay = m_bShowOverlay && m_bOverlayReady && m_pOverlay;
    if (layout.showOverlay) {
        layout.overlaySource = Whole(*m_pOverlay);
        layout.overlay.width = layout.overlaySource.width;
        layout.overlay.height = layout.overlaySource.height;
    }
    PlaceTexts(layout, buffer);
    return layout;
}

void CGPImageButton::PlaceTexts(Layout& layout, CDC& buffer) const {
    const int right = layout.client.cx - 2;
    const int bottom = layout.client.cy - 2;
    layout.text = m_rcText;
    layout.subText = m_rcSubText;
    if (m_bShowIcon) {
        layout.text = m_rcText == kComputed ? CRect{7, 7, right, 27} : m_rcText;
        layout.subText = m_rcSubText == kComputed ? CRect{79, 32, right, bottom} : m_rcSubText;
        return;
    }
    if (m_rcText == kComputed) {
        layout.text = {};
    }
    if (m_rcSubText == kComputed) {
        const int top = buffer.GetTextExtent(m_strText).cy + 4;
        layout.text.bottom = top;
        layout.subText = {2, top, right, bottom};
    }
}

void CGPImageButton::ComposeState(CDC& buffer, const Layout& layout, int state) {
    const auto index = static_cast<std::size_t>(state);
    if (m_bParentBackground) {
        DrawParentBackground(&buffer);
    }
    ImageAttributes colours;
    if (kFallbacks[index] && m_nStateCount <= state) {
        colours.SetColorMatrix(*kFallbacks[index]);
    }
    Graphics graphics(buffer);
    graphics.DrawImageRectRect(m_pImage->m_pBitmap.get(),
                               {0, 0, static_cast<float>(layout.client.cx), static_cast<float>(layout.client.cy)},
                               layout.slices[index], &colours);
    if (m_pIcon) {
        graphics.DrawImageRectRect(m_pIcon->m_pBitmap.get(), layout.icon, layout.iconSource, &colours);
    }
    if (layout.showOverlay) {
        graphics.DrawImageRectRect(m_pOverlay->m_pBitmap.get(), layout.overlay, layout.overlaySource, &colours);
    }
    DrawTexts(buffer, layout);
}

void CGPImageButton::DrawTexts(CDC& buffer, const Layout& layout) const {
    if (!m_strText.empty()) {
        DrawButtonText(buffer, m_strText, layout.text, {m_nTextHeight, m_bTextBold ? kFontBold : kFontNormal}, m_crText,
                       m_nTextFormat);
    }
    if (!m_strSubText.empty()) {
        DrawButtonText(buffer, m_strSubText, layout.subText,
                       {m_nSubTextHeight, m_bSubTextBold ? kFontBold : kFontNormal}, m_crText, m_nSubTextFormat);
    }
}

void CGPImageButton::DrawParentBackground(CDC* pDC) {
    const CSize size = GetClientRect().Size();
    pDC->BitBlt(0, 0, size.cx, size.cy, &m_dcBackground, 0, 0, SRCCOPY);
}

}  // namespace veldan
