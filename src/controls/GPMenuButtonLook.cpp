#include "controls/GPMenuButtonLook.h"

#include "controls/ButtonText.h"
#include "controls/ColorMatrices.h"
#include "controls/LookCache.h"
#include "platform/draw/Graphics.h"

namespace veldan {
namespace {

using State = CGPMenuButtonLook::State;

constexpr COLORREF kDisabledTop = 0xc6c6c6;
constexpr COLORREF kDisabledBottom = 0x585858;
constexpr COLORREF kMark = 0x00ffff;
constexpr int kMarkSize = 5;
constexpr int kMargin = 4;
/// Where a profile's second text begins: a line in a context's own font below the first.
constexpr int kDescriptionTop = kMargin + kSystemFontHeight;

RectF Square(int left, int top, int side) {
    return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(side), static_cast<float>(side)};
}

/// The whole picture into a rectangle, whatever its own size, in the colours of a state.
void DrawWhole(CDC& dc, const CGPResourceImage& image, const RectF& target, State state) {
    ImageAttributes colours;
    if (state != State::Normal) {
        colours.SetColorMatrix(state == State::Hover ? BrightenMatrix : GrayMatrix);
    }
    const CSize size = image.GetSize();
    Graphics(dc).DrawImageRectRect(image.m_pBitmap.get(), target,
                                   {0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy)}, &colours);
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

void CGPMenuButtonLook::Compose(CGPFrozenState& frozen, State state, CLookCache& cache) const {
    const std::shared_ptr<const CDC> pBackground = Background(state, cache);
    CDC& dc = cache.Board(nKind, size);
    dc.BitBlt(0, 0, size.cx, size.cy, pBackground.get(), 0, 0, SRCCOPY);
    static_cast<void>(dc.TakeBoundsRect());
    CRect boxes[CGPFrozenState::kMostBoxes];
    DrawIcon(dc, state);
    boxes[0] = dc.TakeBoundsRect();
    DrawBadge(dc, state);
    boxes[1] = dc.TakeBoundsRect();
    if (state == State::Normal ? bTextInNormal : !strCaption.empty()) {
        DrawCaption(dc, state);
        boxes[2] = dc.TakeBoundsRect();
        DrawDescription(dc, state);
        boxes[3] = dc.TakeBoundsRect();
    }
    frozen.Keep(dc, pBackground, boxes);
}

std::shared_ptr<const CDC> CGPMenuButtonLook::Background(State state, CLookCache& cache) const {
    switch (state) {
        case State::Normal:
            return cache.Gradient(size, crNormalTop, crNormalBottom);
        case State::Hover:
            return cache.Gradient(size, crHoverTop, crHoverBottom);
        case State::Disabled:
            break;
    }
    return cache.Gradient(size, kDisabledTop, kDisabledBottom);
}

void CGPMenuButtonLook::DrawIcon(CDC& dc, State state) const {
    const int side = nKind == 1 ? 35 : 16;
    const int place = (size.cy - side) / 2;
    DrawWhole(dc, *pImage, Square(place, place, side), state);
}

void CGPMenuButtonLook::DrawBadge(CDC& dc, State state) const {
    if (!pBadge || state == State::Disabled) {
        return;
    }
    const int side = nKind == 1 ? 32 : 16;
    const int place = (size.cy - side) / 2;
    DrawWhole(dc, *pBadge, Square(place + (nKind == 1 ? 300 : 0), place, side), state);
}

void CGPMenuButtonLook::DrawCaption(CDC& dc, State state) const {
    const int bottom = nKind == 1 ? kDescriptionTop : size.cy - kMargin;
    const CRect rect = {size.cy + kMargin, kMargin, size.cx - kMargin, bottom};
    CFont font = CaptionFont(nKind, state);
    DrawButtonText(dc, strCaption, rect, font, TextColour(state), DT_SINGLELINE | DT_VCENTER);
    if (bNewMark) {
        CFont* pOldFont = dc.SelectObject(&font);
        const int width = dc.GetTextExtent(strCaption).cx;
        dc.SelectObject(pOldFont);
        DrawMark(dc, rect.left + width + 5, rect.top);
    }
}

void CGPMenuButtonLook::DrawDescription(CDC& dc, State state) const {
    // Made for the groups too, which are drawn when the menu opens: the first profiles then needn't wait for it.
    const CFont font(14, kFontNormal);
    if (nKind != 1 || strDescription.empty()) {
        return;
    }
    const CRect rect = {size.cy + kMargin, kDescriptionTop, size.cx - kMargin, size.cy};
    DrawButtonText(dc, strDescription, rect, font, TextColour(state), DT_WORDBREAK | DT_VCENTER);
}

COLORREF CGPMenuButtonLook::TextColour(State state) const {
    return state == State::Hover ? crHoverText : crText;
}

}  // namespace veldan
