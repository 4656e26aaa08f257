#include "platform/draw/Graphics.h"

#include "platform/draw/DC.h"
#include "platform/draw/DCInternal.h"
#include "platform/draw/PixelsInternal.h"

#include <cairo.h>

#include <cmath>
#include <utility>

namespace veldan {
namespace {

bool IsWhole(float number) {
    return number == std::nearbyint(number);
}

bool IsWhole(const RectF& rect) {
    return IsWhole(rect.x) && IsWhole(rect.y) && IsWhole(rect.width) && IsWhole(rect.height);
}

bool IsUsable(const RectF& rect) {
    constexpr float kFarthest = 1 << 20;
    const auto isNear = [](float number) { return std::abs(number) <= kFarthest; };
    return isNear(rect.x) && isNear(rect.y) && isNear(rect.width) && isNear(rect.height) && rect.width > 0 &&
           rect.height > 0;
}

CRect Around(const RectF& rect) {
    return {static_cast<int>(std::floor(rect.x)), static_cast<int>(std::floor(rect.y)),
            static_cast<int>(std::ceil(rect.x + rect.width)), static_cast<int>(std::ceil(rect.y + rect.height))};
}

// Clips one direction of the source to the image, and the destination in proportion.
void CutToImage(float& source, float& sourceSize, float& target, float& targetSize, int imageSize) {
    const float scale = targetSize / sourceSize;
    const float start = std::max(source, 0.0F);
    const float end = std::min(source + sourceSize, static_cast<float>(imageSize));
    target += (start - source) * scale;
    targetSize = (end - start) * scale;
    source = start;
    sourceSize = end - start;
}

// The pixels of a part of the image, with the colours changed.
std::unique_ptr<Surface> CopyPart(const Surface& image, const CRect& part, const ImageAttributes* pAttributes) {
    auto copy = std::make_unique<Surface>(part.Width(), part.Height());
    for (int y = 0; y < copy->Height(); ++y) {
        std::copy_n(image.Row(part.top + y) + part.left, copy->Width(), copy->Row(y));
    }
    if (pAttributes && pAttributes->GetColorMatrix()) {
        ApplyColorMatrix(*copy, *pAttributes->GetColorMatrix());
    }
    return copy;
}

// Blends a part of a picture pixel by pixel, with its top left corner at a point of the context's surface.
void DrawUnscaled(DeviceContext& context, const Surface& picture, const CRect& source, CPoint at) {
    Surface& target = *context.surface;
    const CPoint shift = source.TopLeft() - at;
    target.BeginPixels();
    context.ForEachPart(source.Offset(-shift), [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            BlendPixels(target.Row(y) + part.left, picture.Row(y + shift.y) + (part.left + shift.x),
                        static_cast<std::size_t>(part.Width()));
        }
    });
    target.EndPixels();
}

// Draws the part `source` of a picture into `destination` on the context's surface. Pixels outside the picture don't
// influence its edges.
void DrawScaled(DeviceContext& context, Surface& picture, const RectF& source, const RectF& destination) {
    cairo_t* target = cairo_create(context.surface->Cairo());
    context.ForEachPart(Around(destination), [&](const CRect& part) {
        cairo_rectangle(target, part.left, part.top, part.Width(), part.Height());
    });
    cairo_clip(target);
    cairo_rectangle(target, destination.x, destination.y, destination.width, destination.height);
    cairo_translate(target, destination.x, destination.y);
    cairo_scale(target, destination.width / source.width, destination.height / source.height);
    cairo_set_source_surface(target, picture.Cairo(), -source.x, -source.y);
    cairo_pattern_set_extend(cairo_get_source(target), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(cairo_get_source(target), CAIRO_FILTER_GOOD);
    cairo_fill(target);
    cairo_destroy(target);
}

COLORREF Mix(COLORREF from, COLORREF to, double share) {
    const auto channel = [&](unsigned a, unsigned b) {
        return static_cast<unsigned>(std::lround(a + (static_cast<double>(b) - a) * share));
    };
    return RGB(channel(GetRValue(from), GetRValue(to)), channel(GetGValue(from), GetGValue(to)),
               channel(GetBValue(from), GetBValue(to)));
}

}  // namespace

DrawStatus Graphics::DrawImageRectRect(Image* pImage, const RectF& destination, const RectF& source,
                                       const ImageAttributes* pAttributes) {
    const Surface* pixels = pImage ? pImage->Pixels() : nullptr;
    if (!pixels || !m_dc.m_hDC || !m_dc.m_hDC->surface || !IsUsable(destination) || !IsUsable(source)) {
        return m_status = DrawStatus::InvalidParameter;
    }
    DeviceContext& context = *m_dc.m_hDC;
    RectF from = source;
    RectF to = destination;
    CutToImage(from.x, from.width, to.x, to.width, pixels->Width());
    CutToImage(from.y, from.height, to.y, to.height, pixels->Height());
    if (from.width <= 0 || from.height <= 0) {
        return m_status = DrawStatus::Ok;
    }
    const CPoint shift = context.Shift();
    to.x += static_cast<float>(shift.x);
    to.y += static_cast<float>(shift.y);

    const CRect part = Around(from).Intersect(pixels->Bounds());
    const bool isUnscaled = IsWhole(from) && IsWhole(to) && from.width == to.width && from.height == to.height;
    if (isUnscaled && (!pAttributes || !pAttributes->GetColorMatrix())) {
        DrawUnscaled(context, *pixels, part, Around(to).TopLeft());
        return m_status = DrawStatus::Ok;
    }
    const std::unique_ptr<Surface> picture = CopyPart(*pixels, part, pAttributes);
    if (isUnscaled) {
        DrawUnscaled(context, *picture, picture->Bounds(), Around(to).TopLeft());
    } else {
        from.x -= static_cast<float>(part.left);
        from.y -= static_cast<float>(part.top);
        DrawScaled(context, *picture, from, to);
    }
    return m_status = DrawStatus::Ok;
}

DrawStatus Graphics::FillVerticalGradient(const RectF& rect, int height, COLORREF top, COLORREF bottom) {
    if (!m_dc.m_hDC || height <= 0 || !IsUsable(rect)) {
        return m_status = DrawStatus::InvalidParameter;
    }
    DeviceContext& context = *m_dc.m_hDC;
    const CRect area = Around(rect).Offset(context.Shift());
    if (top == bottom) {
        context.Fill(area, top);
        return m_status = DrawStatus::Ok;
    }
    const CRect visible = area.Intersect(context.ClipBounds());
    for (int y = visible.top; y < visible.bottom; ++y) {
        const int row = ((y - context.Shift().y) % height + height) % height;
        context.Fill({visible.left, y, visible.right, y + 1}, Mix(top, bottom, (row + 0.5) / height));
    }
    return m_status = DrawStatus::Ok;
}

DrawStatus Graphics::GetLastStatus() {
    return std::exchange(m_status, DrawStatus::Ok);
}

}  // namespace veldan
