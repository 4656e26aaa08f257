#include "platform/draw/DC.h"
#include "platform/draw/DCInternal.h"
#include "platform/draw/PixelsInternal.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veldan {
namespace {

constexpr std::uint32_t kOpaque = 0xff000000;
constexpr std::uint32_t kColour = 0x00ffffff;

// Copies a block of pixels to a place on the same or another surface. Both lie inside of their surfaces.
void CopyBlock(Surface& target, const CRect& area, const Surface& source, CPoint from) {
    const int height = area.Height();
    // Within one surface rows are taken in an order in which none is overwritten before it was copied.
    const bool upwards = &target == &source && area.top > from.y;
    for (int i = 0; i < height; ++i) {
        const int row = upwards ? height - 1 - i : i;
        const std::uint32_t* first = source.Row(from.y + row) + from.x;
        std::uint32_t* to = target.Row(area.top + row) + area.left;
        if (to <= first) {
            std::copy(first, first + area.Width(), to);
        } else {
            std::copy_backward(first, first + area.Width(), to + area.Width());
        }
    }
}

/// How the pixels of a source become what is combined with a target: monochrome ones take the target's colours, and a
/// monochrome target asks whether a pixel has the source's background colour.
class Conversion {
public:
    Conversion(const DeviceContext& target, const DeviceContext& source) {
        const bool fromMono = source.bitmap.value.IsMonochrome();
        const bool toMono = target.bitmap.value.IsMonochrome();
        if (fromMono && !toMono) {
            m_kind = Kind::FromMono;
            m_black = PixelOf(target.textColour);
            m_white = PixelOf(target.backgroundColour);
        } else if (toMono && !fromMono) {
            m_kind = Kind::ToMono;
            m_key = PixelOf(source.backgroundColour);
        }
    }

    [[nodiscard]] bool IsPlain() const { return m_kind == Kind::Plain; }
    [[nodiscard]] std::uint32_t Convert(std::uint32_t pixel) const {
        switch (m_kind) {
            case Kind::FromMono:
                return (pixel & kColour) != 0 ? m_white : m_black;
            case Kind::ToMono:
                return ((pixel ^ m_key) & kColour) == 0 ? kOpaque | kColour : kOpaque;
            case Kind::Plain:
                break;
        }
        return pixel;
    }

private:
    enum class Kind { Plain, FromMono, ToMono };

    Kind m_kind = Kind::Plain;
    std::uint32_t m_black = 0;
    std::uint32_t m_white = 0;
    std::uint32_t m_key = 0;
};

std::uint32_t Combine(std::uint32_t target, std::uint32_t source, UINT operation) {
    switch (operation) {
        case SRCINVERT:
            return kOpaque | ((target ^ source) & kColour);
        case SRCAND:
            return kOpaque | (target & source & kColour);
        default:
            return source;
    }
}

bool IsKnown(UINT operation) {
    return operation == SRCCOPY || operation == SRCINVERT || operation == SRCAND;
}

/// Part of one axis of a stretched picture: which pixels of the source one of the target is made of. In units of which
/// `per` make up a pixel of the source.
struct Span {
    std::int64_t first;
    std::int64_t end;
    std::int64_t per;
};

Span SpanOf(int index, int source, int target) {
    return {std::int64_t{index} * source, std::int64_t{index + 1} * source, target};
}

/// The average of the source's pixels in an area, by how much of each lies in it; pixels outside of the source don't
/// count. Nothing where none is left.
bool Average(const Surface& source, CPoint from, const Span& across, const Span& down, std::uint32_t& pixel) {
    std::array<std::uint64_t, 4> sums{};
    std::uint64_t total = 0;
    for (std::int64_t row = down.first / down.per; row * down.per < down.end; ++row) {
        const std::int64_t y = from.y + row;
        const std::int64_t high = std::min(down.end, (row + 1) * down.per) - std::max(down.first, row * down.per);
        for (std::int64_t column = across.first / across.per; column * across.per < across.end; ++column) {
            const std::int64_t x = from.x + column;
            if (x < 0 || y < 0 || x >= source.Width() || y >= source.Height()) {
                continue;
            }
            const std::int64_t wide =
                std::min(across.end, (column + 1) * across.per) - std::max(across.first, column * across.per);
            const auto weight = static_cast<std::uint64_t>(wide * high);
            const std::uint32_t value = source.Row(static_cast<int>(y))[x];
            for (std::size_t i = 0; i < sums.size(); ++i) {
                sums[i] += (value >> (8 * i) & 0xff) * weight;
            }
            total += weight;
        }
    }
    pixel = 0;
    for (std::size_t i = 0; total != 0 && i < sums.size(); ++i) {
        pixel |= static_cast<std::uint32_t>((sums[i] + total / 2) / total) << (8 * i);
    }
    return total != 0;
}

}  // namespace

bool CDC::BitBlt(int x, int y, int width, int height, const CDC* pSource, int xSource, int ySource, UINT operation) {
    if (!m_hDC || !m_hDC->surface || !pSource || !pSource->m_hDC || !pSource->m_hDC->surface || !IsKnown(operation)) {
        return false;
    }
    Surface& target = *m_hDC->surface;
    Surface& source = *pSource->m_hDC->surface;
    const CPoint at = m_hDC->ToSurface(CPoint{x, y});
    const CRect area = CRect::FromSize(at, {Near(width), Near(height)});
    const CPoint shift = pSource->m_hDC->ToSurface(CPoint{xSource, ySource}) - at;
    const CRect readable = area.Intersect(source.Bounds().Offset(-shift));
    const Conversion conversion(*m_hDC, *pSource->m_hDC);
    const bool isPlain = conversion.IsPlain() && operation == SRCCOPY;
    source.BeginPixels();
    target.BeginPixels();
    m_hDC->ForEachPart(readable, [&](const CRect& part) {
        if (isPlain) {
            CopyBlock(target, part, source, part.TopLeft() + shift);
            return;
        }
        for (int row = part.top; row < part.bottom; ++row) {
            const std::uint32_t* from = source.Row(row + shift.y) + shift.x;
            std::uint32_t* to = target.Row(row);
            for (int column = part.left; column < part.right; ++column) {
                to[column] = Combine(to[column], conversion.Convert(from[column]), operation);
            }
        }
    });
    target.EndPixels();
    return true;
}

bool CDC::StretchBlt(const CRect& rect, const CDC* pSource, const CRect& source, UINT operation) {
    if (rect.Size() == source.Size()) {
        return BitBlt(rect.left, rect.top, rect.Width(), rect.Height(), pSource, source.left, source.top, operation);
    }
    if (!m_hDC || !m_hDC->surface || !pSource || !pSource->m_hDC || !pSource->m_hDC->surface || !IsKnown(operation) ||
        rect.IsEmpty() || source.IsEmpty()) {
        return false;
    }
    Surface& target = *m_hDC->surface;
    Surface& pixels = *pSource->m_hDC->surface;
    const CRect area = m_hDC->ToSurface(rect);
    const CRect from = pSource->m_hDC->ToSurface(source);
    const bool averages = m_hDC->stretchMode == HALFTONE;
    const Conversion conversion(*m_hDC, *pSource->m_hDC);
    pixels.BeginPixels();
    target.BeginPixels();
    m_hDC->ForEachPart(area, [&](const CRect& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            const Span down = SpanOf(y - area.top, from.Height(), area.Height());
            for (int x = part.left; x < part.right; ++x) {
                const Span across = SpanOf(x - area.left, from.Width(), area.Width());
                std::uint32_t pixel = 0;
                if (averages) {
                    if (!Average(pixels, from.TopLeft(), across, down, pixel)) {
                        continue;
                    }
                } else {
                    const CPoint nearest{from.left + static_cast<int>((across.first + across.end) / (2 * across.per)),
                                         from.top + static_cast<int>((down.first + down.end) / (2 * down.per))};
                    if (!pixels.Bounds().Contains(nearest)) {
                        continue;
                    }
                    pixel = pixels.Row(nearest.y)[nearest.x];
                }
                std::uint32_t& to = target.Row(y)[x];
                to = Combine(to, conversion.Convert(pixel), operation);
            }
        }
    });
    target.EndPixels();
    return true;
}

int CDC::SetStretchBltMode(int mode) {
    return m_hDC ? std::exchange(m_hDC->stretchMode, mode) : 0;
}

}  // namespace veldan
