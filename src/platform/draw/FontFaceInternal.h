#pragma once

#include "platform/core/Geometry.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct _cairo;
struct _PangoGlyphString;
struct _PangoItem;
struct _PangoLayout;
struct _PangoLayoutLine;
struct _PangoContext;

namespace veldan {

/// What distinguishes faces. Underlines aren't part of it, because they are drawn separately.
struct FontTraits {
    int height = 0;  ///< As in CFont::CreateFont.
    int weight = 400;
    std::string face;

    auto operator<=>(const FontTraits&) const = default;
};

/// Whether a tab is drawn as a blank or goes on to the next stop.
enum class Tabs { Blank, Stops };

/// One line of text that is ready to be drawn. Points into the face's layout: good until the face lays out other text.
struct TextLine {
    _PangoLayoutLine* line = nullptr;  ///< Null for a line of plain text, of which the face has the glyphs.
    int width = 0;
};

/// How far letters extend above and below the base line, for a size of 1.
struct Proportions {
    double ascent = 0.8;
    double descent = 0.2;
};

/// How much of each pixel is covered by letters, row by row. Each row is padded with zeros to a whole number of blocks,
/// and one more block of zeros follows the last row.
struct TextMask {
    static constexpr std::size_t kBlock = 16;

    CRect box;  ///< Relative to the point on the base line where the text begins.
    std::size_t stride = 0;
    std::vector<std::uint8_t> coverage;

    TextMask() = default;
    /// A mask that covers nothing.
    explicit TextMask(const CRect& around);

    /// The index of a point in the box.
    [[nodiscard]] std::size_t IndexOf(CPoint point) const {
        return static_cast<std::size_t>(point.y - box.top) * stride + static_cast<std::size_t>(point.x - box.left);
    }
    [[nodiscard]] bool IsEmpty() const { return box.IsEmpty(); }

    /// Adds a letter. Neighbouring letters may share pixels, where their coverage is added up. The letter's box must be
    /// inside this one.
    void Add(const TextMask& letter, CPoint at);
};

/// A font at one size. It lays out one text at a time and keeps the result, because a text is usually measured and then
/// drawn.
class FontFace {
public:
    explicit FontFace(FontTraits traits);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// The face with these traits, which all its users share.
    static std::shared_ptr<FontFace> Get(const FontTraits& traits);

    [[nodiscard]] int LineHeight() const { return m_ascent + m_descent; }
    /// From the top of a line to its base line.
    [[nodiscard]] int Ascent() const { return m_ascent; }

    /// Lays out one paragraph, which is broken into lines of this width in pixels, or not broken when it is negative.
    /// Any bytes will do. Empty where there is no font at all, and where the system has no threads to spare for one;
    /// the next call tries again then.
    const std::vector<TextLine>& LayOut(std::string_view paragraph, int width, Tabs tabs = Tabs::Blank);

    /// The rectangle of everything that is drawn of a line that isn't plain text, relative to the point where it begins
    /// on the base line.
    [[nodiscard]] static CRect InkOf(const TextLine& line);
    /// Draws a line that isn't plain text in the current colour, with its left end on the base line at this point.
    static void Draw(_cairo* target, const TextLine& line, CPoint at);
    /// The mask of the text that was laid out last, which must be a line of plain text. It is composed of letters that
    /// the drawing library has drawn once, in a small part of the time that drawing a line takes.
    [[nodiscard]] TextMask PlainMask();

private:
    bool Start();
    double SetSize(const Proportions& proportions);
    [[nodiscard]] bool CanShape(const std::string& text);
    void PrepareTabs();
    void PreparePlainText(_PangoContext* context);
    [[nodiscard]] bool IsPlain(std::string_view text) const;
    void LayOutPlain(std::string_view text);
    [[nodiscard]] const TextMask& MaskOf(std::uint32_t glyph);
    bool LayOutAny(const std::string& text, int width);

    FontTraits m_traits;
    _PangoLayout* m_layout = nullptr;   // null until the first text
    std::set<int> m_scripts;            // for which fonts have been found
    _PangoItem* m_plainItem = nullptr;  // null if the font lacks a letter of plain text
    _PangoGlyphString* m_plainGlyphs = nullptr;
    std::unordered_map<std::uint32_t, TextMask> m_masks;  // by the letter's number in the font
    int m_ascent = 0;
    int m_descent = 0;
    std::string m_text;
    int m_width = INT_MIN;
    Tabs m_tabs = Tabs::Blank;
    std::vector<TextLine> m_lines;
};

}  // namespace veldan
