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
constexpr int kMargin = 4;

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

/// Where states are drawn before they are kept; one for all rows, which mostly have one size.
CDC& DrawingBoard(CSize size) {
    static CDC board;
    if (board.GetClipBox().Size() != size) {
        MakeSurface(board, board, size);
    }
    return board;
}

}  // namespace

void CGPMenuButtonLook::Compose(CGPFrozenState& frozen, State state) const {
    const std::shared_ptr<const CDC> pBackground = Background(state);
    CDC& dc = DrawingBoard(size);
    dc.BitBlt(0, 0, size.cx, size.cy, pBackground.get(), 0, 0, SRCCOPY);
    DrawImages(dc, state);
    if (state == State::Normal ? bTextInNormal : !strCaption.empty()) {
        DrawTexts(dc, state);
    }
    // The icon, and one box for each text.
    const int cut = nKind == 1 ? GetSystemFont()->LineHeight() + kMargin : size.cy;
    const CRect areas[] = {{0, 0, size.cy, size.cy}, {size.cy, 0, size.cx, cut}, {size.cy, cut, size.cx, size.cy}};
    frozen.Keep(dc, pBackground, areas);
}

std::shared_ptr<const CDC> CGPMenuButtonLook::Background(State state) const {
    switch (state) {
        case State::Normal:
            return GetGradient(size, crNormalTop, crNormalBottom);
        case State::Hover:
            return GetGradient(size, crHoverTop, crHoverBottom);
        case State::Disabled:
            break;
    }
    return GetGradient(size, kDisabledTop, kDisabledBottom);
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
