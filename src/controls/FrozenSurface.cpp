#include "controls/FrozenSurface.h"

#include "controls/GPFrozenState.h"
#include "controls/GPMemDC.h"
#include "platform/window/ClientDC.h"

namespace veldan {
namespace {

/// Paints straight to the window where the picture covers all of it, else over black.
template <class Paint>
void PaintWhole(const DRAWITEMSTRUCT& item, CSize picture, Paint paint) {
    if (picture.cx >= item.rcItem.Width() && picture.cy >= item.rcItem.Height()) {
        paint(*item.pDC);
    } else {
        CGPMemDC buffer(*item.pDC, item.rcItem);
        paint(buffer);
    }
}

}  // namespace

void MakeSurface(CDC& surface, const CDC& reference, CSize size) {
    CBitmap bitmap;
    surface.CreateCompatibleDC(&reference);
    bitmap.CreateCompatibleBitmap(&reference, size.cx, size.cy);
    // The context keeps the pixels.
    surface.SelectObject(&bitmap);
}

void FreezeSurface(CDC& surface, const CDC& reference, const CDC& drawing, CSize size) {
    MakeSurface(surface, reference, size);
    surface.BitBlt(0, 0, size.cx, size.cy, &drawing, 0, 0, SRCCOPY);
}

void SnapshotParent(CDC& surface, const CWnd& control) {
    const CWnd* parent = control.GetParent();
    if (surface.GetSafeHdc() || !parent) {
        return;
    }
    const CClientDC dc(parent);
    const CSize size = control.GetClientRect().Size();
    const CRect place = parent->ScreenToClient(control.GetWindowRect());
    MakeSurface(surface, dc, size);
    surface.BitBlt(0, 0, size.cx, size.cy, &dc, place.left, place.top, SRCCOPY);
}

void PaintSurface(const DRAWITEMSTRUCT& item, const CDC& surface) {
    PaintWhole(item, surface.GetClipBox().Size(), [&](CDC& dc) {
        dc.BitBlt(item.rcItem.left, item.rcItem.top, item.rcItem.Width(), item.rcItem.Height(), &surface, 0, 0,
                  SRCCOPY);
    });
}

void PaintState(const DRAWITEMSTRUCT& item, const CGPFrozenState& state) {
    PaintWhole(item, state.GetSize(), [&](CDC& dc) { state.Paint(dc, item.rcItem.TopLeft()); });
}

}  // namespace veldan
