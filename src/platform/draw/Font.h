#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"

#include <memory>
#include <string_view>

namespace veldan {

class FontFace;

/// Reads the list of the system's fonts, which takes some milliseconds, so that the first text doesn't have to wait for
/// it.
VELDAN_PLATFORM_API void PrepareText();

enum class Underline { No, Yes };

inline constexpr int kFontNormal = 400;
inline constexpr int kFontBold = 700;

/// All that describes a font. Of its fields, height, weight, underline and face name have an effect; the others are
/// kept for who asks for them.
struct LOGFONT {
    LONG lfHeight = 0;  ///< As the height of CFont::CreateFont.
    LONG lfWidth = 0;
    LONG lfEscapement = 0;
    LONG lfOrientation = 0;
    LONG lfWeight = 0;  ///< 0 means kFontNormal.
    BYTE lfItalic = 0;
    BYTE lfUnderline = 0;
    BYTE lfStrikeOut = 0;
    BYTE lfCharSet = 0;
    BYTE lfOutPrecision = 0;
    BYTE lfClipPrecision = 0;
    BYTE lfQuality = 0;
    BYTE lfPitchAndFamily = 0;
    char lfFaceName[32] = {};  ///< NUL-terminated UTF-8.
};

/// A font that can be selected into a device context. Cheap to make again and again: equal fonts share one face. A font
/// whose family isn't installed is drawn with one that is.
class VELDAN_PLATFORM_API CFont {
public:
    CFont() = default;
    CFont(int height, int weight, Underline underline = Underline::No, std::string_view face = {}) {
        CreateFont(height, weight, underline, face);
    }
    /// A positive height is that of a line in pixels, a negative one that of the letters without the space above them;
    /// 0 means a line of 16. An empty face name means the default sans-serif face.
    void CreateFont(int height, int weight, Underline underline = Underline::No, std::string_view face = {});
    /// A face name without its closing NUL is cut.
    void CreateFontIndirect(const LOGFONT& description);
    /// `tenths`: the size of the letters in tenths of a point, at 96 dots an inch. Normal weight.
    void CreatePointFont(int tenths, std::string_view face);
    void DeleteObject() { *this = {}; }

    /// What the font was made from; all zeros while none was created.
    [[nodiscard]] const LOGFONT& GetLogFont() const { return m_lf; }

    /// The height of a line in pixels.
    [[nodiscard]] int LineHeight() const;

    /// For the text code of this folder; null if no font was created.
    [[nodiscard]] const std::shared_ptr<FontFace>& Face() const { return m_face; }
    [[nodiscard]] bool IsUnderlined() const { return m_underline == Underline::Yes; }

private:
    LOGFONT m_lf;
    std::shared_ptr<FontFace> m_face;
    Underline m_underline = Underline::No;
};

}  // namespace veldan
