#include "controls/GPMenuButtonLook.h"

#include "controls/ColorMatrices.h"
#include "controls/FrozenSurface.h"
#include "platform/draw/Graphics.h"

namespace veldan {
namespace {

using State = CGPMenuButtonLook::State;

constexpr COLORREF kDisabledTop = 0xc6c6c6;
constexpr COLORREF kDisabledBottom = 0x585858;
constexpr COLORREF kMark = 0x00ffff;
constexpr int kMarkSize = 5;

RectF Square(int left, int top, int side) {
    return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(side), static_cast<float>(side)};
}

/// The whole picture into a rectangle, whatever its own size.
void DrawWhole(Graphics& graphics, const CGPResourceImage& image, const RectF& target,
               const ImageAttributes* pColours) {
    const CSize size = image.GetSize();
    graphics.DrawImageRectRect(image.m_pBitmap.get(), target,
                               {0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy)}, pColours);
    // What is composed is kept as a surface, so the decoded picture isn't needed twice.
    if (image.m_pBitmap) {
        image.m_pBitmap->DropPixels();
    }
}

CFont CaptionFont(int nKind, State state) {
    const bool underlined = nKind == 1 && state == State::Hover;
    return {nKind == 1 ? 15 : 14, kFontBold, underlined ? Underline::Yes : Underline::No};
}

void DrawMark(CDC& dc, int left, int top) {
    CPen pen(1, kMark);
    CBrush brush(kMark);
    CPen* pOldPen = dc.SelectObject(&pen);
    CBrush* pOldBrush = dc.SelectObject(&brush);
    dc.RoundRect({left, top, left + kMarkSize, top + kMarkSize}, {kMarkSize, kMarkSize});
    dc.SelectObject(pOldBrush);
    dc.SelectObject(pOldPen);
}

}  // namespace

void CGPMenuButtonLook::Compose(CDC& surface, const CDC& reference, State state) const {
    MakeSurface(surface, reference, size);
    const RectF client = {0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy)};
    Graphics graphics(surface);
    switch (state) {
        case State::Normal:
            graphics.FillVerticalGradient(client, size.cy, crNormalTop, crNormalBottom);
            break;
        case State::Hover:
            graphics.FillVerticalGradient(client, size.cy, crHoverTop, crHoverBottom);
            break;
        case State::Disabled:
            graphics.FillVerticalGradient(client, size.cy, kDisabledTop, kDisabledBottom);
            break;
    }
    DrawImages(surface, state);
    if (state == State::Normal ? bTextInNormal : !strCaption.empty()) {
        DrawTexts(surface, state);
    }
}

void CGPMenuButtonLook::DrawImages(CDC& dc, State state) const {
    ImageAttributes colours;
    if (state != State::Normal) {
        colours.SetColorMatrix(state == State::Hover ? BrightenMatrix : GrayMatrix);
    }
    Graphics graphics(dc);
    const int height = size.cy;
    const int icon = nKind == 1 ? 35 : 16;
    const int iconPlace = (height - icon) / 2;
    DrawWhole(graphics, *pImage, Square(iconPlace, iconPlace, icon), &colours);
    if (pBadge && state != State::Disabled) {
        const int badge = nKind == 1 ? 32 : 16;
        const int badgePlace = (height - badge) / 2;
        DrawWhole(graphics, *pBadge, Square(badgePlace + (nKind == 1 ? 300 : 0), badgePlace, badge), &colours);
    }
}

void CGPMenuButtonLook::DrawTexts(CDC& dc, State state) const {
    constexpr int kMargin = 4;
    // That of the context's own font. Texts of one line are all of one height, so none is laid out to measure it.
    const int lineHeight = GetSystemFont()->LineHeight();
    CRect caption = {size.cy + kMargin, kMargin, size.cx - kMargin,
                     nKind == 1 ? lineHeight + kMargin : size.cy - kMargin};
    CRect description = {caption.left, lineHeight + kMargin, caption.right, size.cy};

    CFont captionFont = CaptionFont(nKind, state);
    CFont* pOldFont = dc.SelectObject(&captionFont);
    const COLORREF crOld = dc.SetTextColor(state == State::Hover ? crHoverText : crText);
    const int oldMode = dc.SetBkMode(TRANSPARENT);
    dc.DrawText(strCaption, caption, DT_SINGLELINE | DT_VCENTER);
    const int captionWidth = bNewMark ? dc.GetTextExtent(strCaption).cx : 0;
    CFont descriptionFont(14, kFontNormal);
    if (nKind == 1 && !strDescription.empty()) {
        dc.SelectObject(&descriptionFont);
        dc.DrawText(strDescription, description, DT_WORDBREAK | DT_VCENTER);
    }
    if (bNewMark) {
        DrawMark(dc, caption.left + captionWidth + 5, caption.top);
    }
    dc.SetBkMode(oldMode);
    dc.SetTextColor(crOld);
    dc.SelectObject(pOldFont);
}

}  // namespace veldan
