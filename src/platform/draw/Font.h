#pragma once

#include "platform/core/Export.h"

#include <memory>
#include <string_view>

namespace veldan {

class FontFace;

/// Reads the list of the system's fonts, which takes some milliseconds, so that the first text needn't wait for it.
VELDAN_PLATFORM_API void PrepareText();

enum class Underline { No, Yes };

inline constexpr int kFontNormal = 400;
inline constexpr int kFontBold = 700;

/// A font that can be selected into a device context. Cheap to make again and again: equal fonts share one face. A font
/// whose family isn't installed is drawn with one that is.
class VELDAN_PLATFORM_API CFont {
public:
    CFont() = default;
    CFont(int height, int weight, Underline underline = Underline::No, std::string_view face = {}) {
        CreateFont(height, weight, underline, face);
    }
    /// A positive height is that of a line in pixels, a negative one that of the letters without the room above them; 0
    /// chooses a line of 16. An empty face name means the default sans-serif face.
    void CreateFont(int height, int weight, Underline underline = Underline::No, std::string_view face = {});
    void DeleteObject() { m_face.reset(); }

    /// Height of a line in pixels.
    [[nodiscard]] int LineHeight() const;

    /// For the text code of this folder; null while no font was created.
    [[nodiscard]] const std::shared_ptr<FontFace>& Face() const { return m_face; }
    [[nodiscard]] bool IsUnderlined() const { return m_underline == Underline::Yes; }

private:
    std::shared_ptr<FontFace> m_face;
    Underline m_underline = Underline::No;
};

}  // namespace veldan
