#include "platform/draw/FontFaceInternal.h"

#include "platform/draw/FontMapInternal.h"

#include <hb.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>

namespace veldan {
namespace {

constexpr int kDefaultHeight = 16;
constexpr int kLargestHeight = 1024;

// The size at which a font's proportions are measured, in pixels.
constexpr int kMeasuringSize = 1024;

constexpr int kUnbroken = -1;
constexpr int kNotLaidOut = INT_MIN;
constexpr gunichar kLastAscii = 0x7f;

constexpr std::string_view kPrintable =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";

// Nobody sees more of a paragraph, and laying it out would take a while.
constexpr std::size_t kLongestParagraph = 8192;

// Longer texts are drawn by the library, which leaves out what can't be seen.
constexpr std::size_t kLongestPlain = 1024;
constexpr int kTallestPlain = 64;

// If there are more faces, those that aren't in use are freed.
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
std::string Presentable(std::string_view text, Tabs tabs) {
    std::string result(text.substr(0, kLongestParagraph));
    std::replace_if(
        result.begin(), result.end(),
        [tabs](char c) { return g_ascii_iscntrl(c) && (c != '\t' || tabs == Tabs::Blank); }, ' ');
    if (!g_utf8_validate(result.data(), static_cast<gssize>(result.size()), nullptr)) {
        char* valid = g_utf8_make_valid(result.data(), static_cast<gssize>(result.size()));
        result = valid;
        g_free(valid);
    }
    return result;
}

// Whether the library may search for a special font for the character, which it doesn't remember.
bool MayBeEmoji(gunichar character) {
    constexpr gunichar kVariation = 0xfe0f;
    return (character >= 0x203c && character < 0x2c00) || (character >= 0x1f000 && character < 0x20000) ||
           character == kVariation;
}

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

// The mask without rows and columns at its sides that cover nothing.
TextMask Cropped(const TextMask& mask) {
    CRect box = {mask.box.right, mask.box.bottom, mask.box.left, mask.box.top};
    for (int y = mask.box.top; y < mask.box.bottom; ++y) {
        for (int x = mask.box.left; x < mask.box.right; ++x) {
            if (mask.coverage[mask.IndexOf({x, y})] != 0) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), y + 1};
            }
        }
    }
    if (box.IsEmpty()) {
        return {};
    }
    TextMask cropped(box);
    for (int y = box.top; y < box.bottom; ++y) {
        std::copy_n(&mask.coverage[mask.IndexOf({box.left, y})], box.Width(),
                    &cropped.coverage[cropped.IndexOf({box.left, y})]);
    }
    return cropped;
}

// Lets the drawing library draw the letter, without a colour.
TextMask MakeMask(PangoFont* font, PangoGlyph number) {
    cairo_scaled_font_t* scaled = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font));
    cairo_glyph_t glyph{number, 0, 0};
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(scaled, &glyph, 1, &extents);
    const CRect box = {static_cast<int>(std::floor(extents.x_bearing)), static_cast<int>(std::floor(extents.y_bearing)),
                       static_cast<int>(std::ceil(extents.x_bearing + extents.width)),
                       static_cast<int>(std::ceil(extents.y_bearing + extents.height))};
    // Antialiased edges extend a little further.
    TextMask mask(box.Inflate(1, 1));
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_A8, mask.box.Width(), mask.box.Height());
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return {};
    }
    cairo_t* target = cairo_create(surface);
    cairo_set_scaled_font(target, scaled);
    glyph.x = -mask.box.left;
    glyph.y = -mask.box.top;
    cairo_show_glyphs(target, &glyph, 1);
    cairo_destroy(target);
    cairo_surface_flush(surface);
    for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
        const unsigned char* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
        std::copy_n(row, mask.box.Width(), &mask.coverage[mask.IndexOf({mask.box.left, mask.box.top + y})]);
    }
    cairo_surface_destroy(surface);
    return Cropped(mask);
}

}  // namespace

TextMask::TextMask(const CRect& around)
    : box(around), stride((static_cast<std::size_t>(around.Width()) + kBlock - 1) / kBlock * kBlock) {
    coverage.resize(stride * static_cast<std::size_t>(around.Height()) + kBlock);
}

void TextMask::Add(const TextMask& letter, CPoint at) {
    using Block [[gnu::vector_size(kBlock)]] = std::uint8_t;
    const std::uint8_t* from = letter.coverage.data();
    std::uint8_t* to = coverage.data() + IndexOf(letter.box.TopLeft() + at);
    for (int y = 0; y < letter.box.Height(); ++y) {
        for (std::size_t x = 0; x < letter.stride; x += kBlock) {
            Block mine;
            Block more;
            std::memcpy(&mine, to + x, kBlock);
            std::memcpy(&more, from + x, kBlock);
            const Block sum = mine + more;
            const Block cut = sum < mine ? 255 : sum;
            std::memcpy(to + x, &cut, kBlock);
        }
        from += letter.stride;
        to += stride;
    }
}

FontFace::FontFace(FontTraits traits) : m_traits(std::move(traits)) {
    m_traits.height =
        m_traits.height == 0 ? kDefaultHeight : std::clamp(m_traits.height, -kLargestHeight, kLargestHeight);
    if (!Start()) {
        SetSize({});
    }
}

// Returns the resulting size of the letters.
double FontFace::SetSize(const Proportions& proportions) {
    const int height = m_traits.height;
    const double size = height > 0 ? height / (proportions.ascent + proportions.descent) : -height;
    m_ascent = static_cast<int>(std::lround(size * proportions.ascent));
    m_descent = height > 0 ? height - m_ascent : static_cast<int>(std::lround(size * proportions.descent));
    return size;
}

// True once the face can lay out text.
bool FontFace::Start() {
    PangoContext* context = m_layout ? nullptr : GetTextContext();
    // There are two searches for fonts: to measure the letters, and at the final size.
    if (!context || !CanSearchFonts(2)) {
        return m_layout != nullptr;
    }
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, FamiliesOf(m_traits.face).c_str());
    pango_font_description_set_weight(description, static_cast<PangoWeight>(std::clamp(m_traits.weight, 100, 1000)));
    const double size = SetSize(Measure(context, description));
    pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
    m_layout = pango_layout_new(context);
    pango_layout_set_font_description(m_layout, description);
    pango_layout_set_single_paragraph_mode(m_layout, TRUE);
    pango_layout_set_auto_dir(m_layout, FALSE);
    PrepareTabs();
    PreparePlainText(context);
    pango_font_description_free(description);
    return true;
}

// Stops lie eight average letters apart.
void FontFace::PrepareTabs() {
    constexpr int kLetters = 8;
    pango_layout_set_text(m_layout, "xxxxxxxx", kLetters);
    int width = 0;
    pango_layout_get_size(m_layout, &width, nullptr);
    PangoTabArray* tabs = pango_tab_array_new_with_positions(1, FALSE, PANGO_TAB_LEFT, std::max(width, 1));
    pango_layout_set_tabs(m_layout, tabs);
    pango_tab_array_free(tabs);
}

FontFace::~FontFace() {
    g_clear_object(&m_layout);
    g_clear_pointer(&m_plainItem, pango_item_free);
    g_clear_pointer(&m_plainGlyphs, pango_glyph_string_free);
}

// Plain text is shaped as the layout would do it after determining font, script and direction. These are the same for
// every text of printable ASCII characters if the first font has them all, so they are determined once.
void FontFace::PreparePlainText(PangoContext* context) {
    const PangoFontDescription* description = pango_layout_get_font_description(m_layout);
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_font_desc_new(description));
    GList* items =
        pango_itemize(context, kPrintable.data(), 0, static_cast<int>(kPrintable.size()), attributes, nullptr);
    if (items && !items->next) {
        m_plainItem = pango_item_copy(static_cast<PangoItem*>(items->data));
        m_plainGlyphs = pango_glyph_string_new();
    }
    g_list_free_full(items, [](void* item) { pango_item_free(static_cast<PangoItem*>(item)); });
    pango_attr_list_unref(attributes);
}

// A text without letters has no script of its own.
bool FontFace::IsPlain(std::string_view text) const {
    return m_plainItem && text.size() <= kLongestPlain && LineHeight() <= kTallestPlain &&
           std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; }) &&
           std::ranges::any_of(text, [](char c) { return g_ascii_isalpha(c); });
}

void FontFace::LayOutPlain(std::string_view text) {
    const int length = static_cast<int>(text.size());
    pango_shape_with_flags(text.data(), length, text.data(), length, &m_plainItem->analysis, m_plainGlyphs,
                           PANGO_SHAPE_ROUND_POSITIONS);
    m_lines.assign(1, {nullptr, PANGO_PIXELS_CEIL(pango_glyph_string_get_width(m_plainGlyphs))});
}

std::shared_ptr<FontFace> FontFace::Get(const FontTraits& traits) {
    // Never freed, because device contexts and fonts of a host may outlive all other static objects.
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

const std::vector<TextLine>& FontFace::LayOut(std::string_view paragraph, int width, Tabs tabs) {
    // Most texts fit on one line, and to see that costs less than breaking them does.
    if (width >= 0 && LayOut(paragraph, kUnbroken, tabs).size() == 1 && m_lines.front().width <= width) {
        return m_lines;
    }
    if (Start() && (m_text != paragraph || m_width != width || m_tabs != tabs)) {
        m_text = paragraph;
        m_width = width;
        m_tabs = tabs;
        if (width < 0 && IsPlain(paragraph)) {
            LayOutPlain(paragraph);
        } else if (!LayOutAny(Presentable(paragraph, tabs), width)) {
            m_width = kNotLaidOut;
        }
    }
    return m_lines;
}

// Whether the library has fonts for all of the text, or can start threads to find them.
bool FontFace::CanShape(const std::string& text) {
    std::set<int> added;
    bool hasEmoji = false;
    for (const char* place = text.c_str(); *place; place += g_utf8_skip[static_cast<unsigned char>(*place)]) {
        const gunichar character = g_utf8_get_char(place);
        hasEmoji = hasEmoji || MayBeEmoji(character);
        if (character > kLastAscii) {
            added.insert(g_unichar_get_script(character));
        }
    }
    std::erase_if(added, [this](int script) { return m_scripts.contains(script); });
    const std::size_t searches = added.size() + (hasEmoji ? 1 : 0);
    if (searches > 0 && !CanSearchFonts(searches)) {
        return false;
    }
    m_scripts.merge(added);
    return true;
}

bool FontFace::LayOutAny(const std::string& text, int width) {
    m_lines.clear();
    if (!CanShape(text)) {
        return false;
    }
    pango_layout_set_width(m_layout, width < 0 ? -1 : width * PANGO_SCALE);
    pango_layout_set_text(m_layout, text.data(), static_cast<int>(text.size()));
    for (GSList* line = pango_layout_get_lines_readonly(m_layout); line; line = line->next) {
        PangoRectangle extents;
        pango_layout_line_get_extents(static_cast<PangoLayoutLine*>(line->data), nullptr, &extents);
        m_lines.push_back({static_cast<PangoLayoutLine*>(line->data), PANGO_PIXELS_CEIL(extents.width)});
    }
    return true;
}

CRect FontFace::InkOf(const TextLine& line) {
    PangoRectangle ink;
    pango_layout_line_get_pixel_extents(line.line, &ink, nullptr);
    // Antialiased edges extend a little further.
    return CRect::FromSize({ink.x, ink.y}, {ink.width, ink.height}).Inflate(2, 2);
}

void FontFace::Draw(_cairo* target, const TextLine& line, CPoint at) {
    cairo_move_to(target, at.x, at.y);
    pango_cairo_show_layout_line(target, line.line);
}

TextMask FontFace::PlainMask() {
    struct Letter {
        const TextMask* pMask;
        CPoint at;
    };
    std::vector<Letter> letters;
    CRect around;
    int x = 0;
    for (int i = 0; i < m_plainGlyphs->num_glyphs; ++i) {
        const PangoGlyphInfo& info = m_plainGlyphs->glyphs[i];
        const TextMask* pMask = info.glyph != PANGO_GLYPH_EMPTY ? &MaskOf(info.glyph) : nullptr;
        if (pMask && !pMask->IsEmpty()) {
            const CPoint at{PANGO_PIXELS(x + info.geometry.x_offset), PANGO_PIXELS(info.geometry.y_offset)};
            around = around.Around(pMask->box.Offset(at));
            letters.push_back({pMask, at});
        }
        x += info.geometry.width;
    }
    TextMask line(around);
    for (const Letter& letter : letters) {
        line.Add(*letter.pMask, letter.at);
    }
    return line;
}

const TextMask& FontFace::MaskOf(std::uint32_t glyph) {
    const auto [entry, isNew] = m_masks.try_emplace(glyph);
    if (isNew) {
        entry->second = MakeMask(m_plainItem->analysis.font, glyph);
    }
    return entry->second;
}

}  // namespace veldan
