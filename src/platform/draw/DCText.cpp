#include "platform/draw/DC.h"
#include "platform/draw/DCInternal.h"
#include "platform/draw/FontFaceInternal.h"
#include "platform/draw/PixelsInternal.h"

#include <cairo.h>

#include <algorithm>
#include <utility>

namespace veldan {
namespace {

constexpr int kUnbroken = -1;

struct CairoEnd {
    void operator()(cairo_t* target) const { cairo_destroy(target); }
};
using CairoPtr = std::unique_ptr<cairo_t, CairoEnd>;

const CFont& FontOf(const DeviceContext& context) {
    return context.font.value.Face() ? context.font.value : *GetSystemFont();
}

// A drawing context for text in the device context's colour, clipped to an area in surface coordinates; null if nothing
// of the area can be drawn on.
CairoPtr BeginText(DeviceContext& context, const CRect& area) {
    CairoPtr target;
    for (const CRect& rect : context.clip) {
        const CRect part = rect.Intersect(area);
        if (part.IsEmpty()) {
            continue;
        }
        if (!target) {
            target.reset(cairo_create(context.surface->Cairo()));
        }
        cairo_rectangle(target.get(), part.left, part.top, part.Width(), part.Height());
    }
    if (target) {
        cairo_clip(target.get());
        const COLORREF colour = context.textColour;
        cairo_set_source_rgb(target.get(), GetRValue(colour) / 255.0, GetGValue(colour) / 255.0,
                             GetBValue(colour) / 255.0);
    }
    return target;
}

/// One call of DrawText: goes through the lines from top to bottom and measures or draws them.
class TextBlock {
public:
    TextBlock(DeviceContext& context, const CRect& area, UINT format)
        : m_context(context),
          m_font(FontOf(context)),
          m_area(area),
          m_format(format),
          m_y(area.top),
          m_bDraws((format & DT_CALCRECT) == 0) {}

    /// Measures the text, and draws it unless only measures are requested.
    void Run(std::string_view text) {
        if (m_format & DT_SINGLELINE) {
            Centre();
            AddParagraph(text);
            return;
        }
        while (!text.empty() && !IsBelow()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            const std::string_view line = text.substr(0, end);
            AddParagraph(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    [[nodiscard]] CSize Size() const { return {m_nWidest, m_nHeight}; }

private:
    void Centre() {
        if (m_format & DT_VCENTER) {
            m_y += (m_area.Height() - m_font.LineHeight()) / 2;
        }
    }

    // Whether the remaining lines can't be seen.
    [[nodiscard]] bool IsBelow() const { return m_bDraws && m_y >= m_area.bottom; }

    void AddParagraph(std::string_view text) {
        const bool isBroken = (m_format & DT_WORDBREAK) && !(m_format & DT_SINGLELINE);
        const Tabs tabs = m_format & DT_EXPANDTABS ? Tabs::Stops : Tabs::Blank;
        const auto& lines = m_font.Face()->LayOut(text, isBroken ? std::max(m_area.Width(), 0) : kUnbroken, tabs);
        for (const TextLine& line : lines) {
            if (!IsBelow()) {
                AddLine(line);
            }
        }
    }

    void AddLine(const TextLine& line) {
        if (m_bDraws) {
            DrawLine(line);
        }
        m_nWidest = std::max(m_nWidest, line.width);
        m_nHeight += m_font.LineHeight();
        m_y += m_font.LineHeight();
    }

    void DrawLine(const TextLine& line) {
        const int x = m_area.left + (m_format & DT_CENTER ? (m_area.Width() - line.width) / 2 : 0);
        const CRect cell = CRect::FromSize({x, m_y}, {line.width, m_font.LineHeight()});
        const CRect room = RoomOf(cell);
        if (m_context.backgroundMode == OPAQUE) {
            m_context.Fill(cell.Intersect(m_area), m_context.backgroundColour);
        }
        const int base = m_y + m_font.Face()->Ascent();
        if (!line.line) {
            DrawPlain({x, base}, room);
        } else if (const CairoPtr target = BeginText(m_context, room)) {
            m_context.Note(FontFace::InkOf(line).Offset({x, base}).Intersect(room));
            FontFace::Draw(target.get(), line, {x, base});
        }
        if (m_font.IsUnderlined()) {
            m_context.Fill(CRect{cell.left, base + 1, cell.right, base + 2}.Intersect(m_area), m_context.textColour);
        }
    }

    // Where a line may draw. Letters with several accents are taller than a line, so a line inside the rectangle isn't
    // clipped above and below.
    [[nodiscard]] CRect RoomOf(const CRect& cell) const {
        if (cell.top < m_area.top || cell.bottom > m_area.bottom) {
            return m_area;
        }
        const CRect all = m_context.ClipBounds();
        return {m_area.left, std::min(all.top, m_area.top), m_area.right, std::max(all.bottom, m_area.bottom)};
    }

    void DrawPlain(CPoint at, const CRect& room) {
        Surface& surface = *m_context.surface;
        const TextMask mask = m_font.Face()->PlainMask();
        surface.BeginPixels();
        m_context.ForEachPart(mask.box.Offset(at).Intersect(room), [&](const CRect& part) {
            for (int y = part.top; y < part.bottom; ++y) {
                BlendMask(surface.Row(y) + part.left, mask.coverage.data() + mask.IndexOf(CPoint{part.left, y} - at),
                          static_cast<std::size_t>(part.Width()), PixelOf(m_context.textColour));
            }
        });
        surface.EndPixels();
    }

    DeviceContext& m_context;
    const CFont& m_font;
    CRect m_area;
    UINT m_format;
    int m_y;
    int m_nWidest = 0;
    int m_nHeight = 0;
    bool m_bDraws;
};

}  // namespace

CFont* GetSystemFont() {
    // Never freed, because a host may draw until it exits.
    static auto* const pFont = new CFont(kSystemFontHeight, kFontBold);
    return pFont;
}

int CDC::DrawText(std::string_view text, CRect& rect, UINT format) {
    if (!m_hDC) {
        return 0;
    }
    const CRect area = m_hDC->ToSurface(rect);
    if ((format & DT_CALCRECT) == 0 && !m_hDC->ClipBounds().Intersects(area)) {
        return 0;
    }
    TextBlock block(*m_hDC, area, format);
    block.Run(text);
    if (format & DT_CALCRECT) {
        rect.right = rect.left + block.Size().cx;
        rect.bottom = rect.top + block.Size().cy;
    }
    return block.Size().cy;
}

CSize CDC::GetTextExtent(std::string_view text) const {
    if (!m_hAttribDC) {
        return {};
    }
    const CFont& font = FontOf(*m_hAttribDC);
    if (text.empty()) {
        return {0, font.LineHeight()};
    }
    const auto& lines = font.Face()->LayOut(text, kUnbroken);
    return {lines.empty() ? 0 : lines.front().width, font.LineHeight()};
}

}  // namespace veldan
