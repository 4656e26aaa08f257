#include "platform/draw/FontFaceInternal.h"

#include "platform/draw/FontMapInternal.h"

#include <hb.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace veldan {
namespace {

constexpr int kDefaultHeight = 16;
constexpr int kLargestHeight = 1024;

// Size at which a font is asked for its proportions, in pixels.
constexpr int kMeasuringSize = 1024;

// Nobody sees more of a paragraph than this, and laying it out would take a while.
constexpr std::size_t kLongestParagraph = 8192;

// Faces that nobody has selected are forgotten when there are more than these.
constexpr std::size_t kKeptFaces = 64;

constexpr const char* kDefaultFamilies = "Tahoma, Liberation Sans, DejaVu Sans, sans-serif";

std::string FamiliesOf(const std::string& face) {
    const auto is = [&](const char* name) { return g_ascii_strcasecmp(face.c_str(), name) == 0; };
    if (face.empty() || is("MS Shell Dlg") || is("Tahoma") || !g_utf8_validate(face.c_str(), -1, nullptr)) {
        return kDefaultFamilies;
    }
    return face + ", " + kDefaultFamilies;
}

// Valid UTF-8 without control characters, which would be drawn as boxes or end the line.
std::string Presentable(std::string_view text) {
    std::string result(text.substr(0, kLongestParagraph));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return g_ascii_iscntrl(c); }, ' ');
    if (!g_utf8_validate(result.data(), static_cast<gssize>(result.size()), nullptr)) {
        char* valid = g_utf8_make_valid(result.data(), static_cast<gssize>(result.size()));
        result = valid;
        g_free(valid);
    }
    return result;
}

// How far letters reach above and below the base line, for a size of 1.
struct Proportions {
    double ascent = 0.8;
    double descent = 0.2;
};

Proportions Measure(PangoContext* context, PangoFontDescription* description) {
    Proportions result;
    pango_font_description_set_absolute_size(description, kMeasuringSize * PANGO_SCALE);
    if (PangoFont* font = pango_context_load_font(context, description)) {
        hb_font_extents_t extents;
        int scale = 0;
        hb_font_get_scale(pango_font_get_hb_font(font), &scale, nullptr);
        if (scale > 0 && hb_font_get_h_extents(pango_font_get_hb_font(font), &extents) &&
            extents.ascender > extents.descender) {
            result = {static_cast<double>(extents.ascender) / scale, -static_cast<double>(extents.descender) / scale};
        }
        g_object_unref(font);
    }
    return result;
}

}  // namespace

FontFace::FontFace(const FontTraits& traits) {
    const int height = traits.height == 0 ? kDefaultHeight : std::clamp(traits.height, -kLargestHeight, kLargestHeight);
    Proportions proportions;
    PangoContext* context = GetTextContext();
    PangoFontDescription* description = pango_font_description_new();
    if (context) {
        pango_font_description_set_family(description, FamiliesOf(traits.face).c_str());
        pango_font_description_set_weight(description, static_cast<PangoWeight>(std::clamp(traits.weight, 100, 1000)));
        proportions = Measure(context, description);
    }
    const double whole = proportions.ascent + proportions.descent;
    const double size = height > 0 ? height / whole : -height;
    m_ascent = static_cast<int>(std::lround(size * proportions.ascent));
    m_descent = height > 0 ? height - m_ascent : static_cast<int>(std::lround(size * proportions.descent));
    if (context) {
        pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
        m_layout = pango_layout_new(context);
        pango_layout_set_font_description(m_layout, description);
        pango_layout_set_single_paragraph_mode(m_layout, TRUE);
        pango_layout_set_auto_dir(m_layout, FALSE);
    }
    pango_font_description_free(description);
}

FontFace::~FontFace() {
    g_clear_object(&m_layout);
}

std::shared_ptr<FontFace> FontFace::Get(const FontTraits& traits) {
    // Never freed: device contexts and fonts of a host may outlive every other static object.
    static auto& faces = *new std::map<FontTraits, std::shared_ptr<FontFace>>;
    const auto found = faces.find(traits);
    if (found != faces.end()) {
        return found->second;
    }
    if (faces.size() >= kKeptFaces) {
        std::erase_if(faces, [](const auto& entry) { return entry.second.use_count() == 1; });
    }
    return faces[traits] = std::make_shared<FontFace>(traits);
}

const std::vector<TextLine>& FontFace::LayOut(std::string_view paragraph, int width) {
    if (!m_layout || (m_text == paragraph && m_width == width)) {
        return m_lines;
    }
    m_text = paragraph;
    m_width = width;
    const std::string text = Presentable(paragraph);
    pango_layout_set_width(m_layout, width < 0 ? -1 : width * PANGO_SCALE);
    pango_layout_set_text(m_layout, text.data(), static_cast<int>(text.size()));
    m_lines.clear();
    for (GSList* line = pango_layout_get_lines_readonly(m_layout); line; line = line->next) {
        PangoRectangle extents;
        pango_layout_line_get_extents(static_cast<PangoLayoutLine*>(line->data), nullptr, &extents);
        m_lines.push_back({static_cast<PangoLayoutLine*>(line->data), PANGO_PIXELS_CEIL(extents.width)});
    }
    return m_lines;
}

void FontFace::Draw(_cairo* target, const TextLine& line, CPoint at) {
    cairo_move_to(target, at.x, at.y);
    pango_cairo_show_layout_line(target, line.line);
}

}  // namespace veldan
