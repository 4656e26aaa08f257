#include "platform/draw/DC.h"

#include "platform/draw/DCInternal.h"
#include "platform/draw/PixelsInternal.h"
#include "platform/draw/Region.h"

#include <utility>

namespace veldan {
namespace {

template <class T>
T* Select(Selected<T>& selected, T* pObject) {
    selected.value = pObject ? *pObject : T();
    return std::exchange(selected.pObject, pObject);
}

}  // namespace

CPoint DeviceContext::ToSurface(CPoint logical) const {
    return CPoint{Near(logical.x), Near(logical.y)} + Shift();
}

CRect DeviceContext::ToSurface(const CRect& logical) const {
    return CRect{Near(logical.left), Near(logical.top), Near(logical.right), Near(logical.bottom)}.Offset(Shift());
}

CRect DeviceContext::ClipBounds() const {
    CRect bounds;
    for (const CRect& rect : clip) {
        bounds = bounds.Around(rect);
    }
    return bounds;
}

void DeviceContext::Fill(const CRect& area, COLORREF colour) {
    if (!surface) {
        return;
    }
    const std::uint32_t pixel = PixelOf(colour);
    surface->BeginPixels();
    ForEachPart(area, [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            FillPixels(surface->Row(y) + part.left, static_cast<std::size_t>(part.Width()), pixel);
        }
    });
    surface->EndPixels();
}

HDC CreateSurfaceDC(std::shared_ptr<Surface> surface, CPoint origin, const Region& clip) {
    auto context = std::make_unique<DeviceContext>();
    if (surface) {
        context->clip = clip.Rects();
        for (CRect& rect : context->clip) {
            rect = rect.Intersect(surface->Bounds());
        }
        std::erase_if(context->clip, [](const CRect& rect) { return rect.IsEmpty(); });
    }
    context->surface = std::move(surface);
    context->origin = origin;
    return context.release();
}

void DeleteDC(HDC hDC) {
    delete hDC;
}

CDC::~CDC() {
    DeleteDC();
}

bool CDC::Attach(HDC hDC) {
    if (hDC != m_hDC) {
        DeleteDC();
    }
    m_hDC = hDC;
    m_hAttribDC = hDC;
    return hDC != nullptr;
}

HDC CDC::Detach() {
    m_hAttribDC = nullptr;
    return std::exchange(m_hDC, nullptr);
}

bool CDC::DeleteDC() {
    const HDC hDC = Detach();
    veldan::DeleteDC(hDC);
    return hDC != nullptr;
}

bool CDC::CreateCompatibleDC(const CDC* /*pDC*/) {
    auto context = std::make_unique<DeviceContext>();
    context->isMemory = true;
    return Attach(context.release());
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap) {
    if (!m_hDC || !m_hDC->isMemory) {
        return nullptr;
    }
    CBitmap* pOld = Select(m_hDC->bitmap, pBitmap);
    m_hDC->surface = m_hDC->bitmap.value.GetSurface();
    m_hDC->clip.clear();
    m_hDC->drawn = {};
    if (m_hDC->surface && !m_hDC->surface->Bounds().IsEmpty()) {
        m_hDC->clip.push_back(m_hDC->surface->Bounds());
    }
    return pOld;
}

CFont* CDC::SelectObject(CFont* pFont) {
    return m_hDC ? Select(m_hDC->font, pFont) : nullptr;
}

CPen* CDC::SelectObject(CPen* pPen) {
    return m_hDC ? Select(m_hDC->pen, pPen) : nullptr;
}

CBrush* CDC::SelectObject(CBrush* pBrush) {
    return m_hDC ? Select(m_hDC->brush, pBrush) : nullptr;
}

COLORREF CDC::SetTextColor(COLORREF colour) {
    return m_hDC ? std::exchange(m_hDC->textColour, colour) : 0;
}

COLORREF CDC::SetBkColor(COLORREF colour) {
    return m_hDC ? std::exchange(m_hDC->backgroundColour, colour) : 0;
}

int CDC::SetBkMode(int mode) {
    return m_hDC ? std::exchange(m_hDC->backgroundMode, mode) : 0;
}

CPoint CDC::SetWindowOrg(CPoint point) {
    return m_hDC ? std::exchange(m_hDC->windowOrg, {Near(point.x), Near(point.y)}) : CPoint();
}

CRect CDC::GetClipBox() const {
    if (!m_hAttribDC || m_hAttribDC->clip.empty()) {
        return {};
    }
    return m_hAttribDC->ClipBounds().Offset(-m_hAttribDC->Shift());
}

CRect CDC::TakeBoundsRect() {
    return m_hDC ? std::exchange(m_hDC->drawn, CRect()).Offset(-m_hDC->Shift()) : CRect();
}

std::shared_ptr<Surface> CDC::GetSurface() const {
    return m_hDC ? m_hDC->surface : nullptr;
}

}  // namespace veldan
