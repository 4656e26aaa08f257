#include "controls/FrozenSurface.h"

#include "controls/GPMemDC.h"
#include "platform/window/ClientDC.h"

namespace veldan {

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
    const CRect& rect = item.rcItem;
    const CRect pixels = surface.GetClipBox();
    if (pixels.Width() >= rect.Width() && pixels.Height() >= rect.Height()) {
        item.pDC->BitBlt(rect.left, rect.top, rect.Width(), rect.Height(), &surface, 0, 0, SRCCOPY);
    } else {
        CGPMemDC buffer(*item.pDC, rect);
        buffer.BitBlt(rect.left, rect.top, rect.Width(), rect.Height(), &surface, 0, 0, SRCCOPY);
    }
}

}  // namespace veldan
