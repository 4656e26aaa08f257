#include "platform/draw/Font.h"

#include "platform/draw/FontFaceInternal.h"

#include <algorithm>
#include <cstring>

namespace veldan {
namespace {

/// How many bytes of a text, `most` at most, end with a whole character.
std::size_t WholeCharacters(std::string_view text, std::size_t most) {
    std::size_t count = std::min(text.size(), most);
    while (count < text.size() && count > 0 && (static_cast<unsigned char>(text[count]) & 0xc0U) == 0x80U) {
        --count;
    }
    return count;
}

}  // namespace

void CFont::CreateFont(int height, int weight, Underline underline, std::string_view face) {
    m_face = FontFace::Get({height, weight, std::string(face)});
    m_underline = underline;
    m_lf = {};
    m_lf.lfHeight = height;
    m_lf.lfWeight = weight;
    m_lf.lfUnderline = underline == Underline::Yes ? 1 : 0;
    face.copy(m_lf.lfFaceName, WholeCharacters(face, sizeof m_lf.lfFaceName - 1));
}

void CFont::CreateFontIndirect(const LOGFONT& description) {
    const std::string_view name(description.lfFaceName,
                                strnlen(description.lfFaceName, sizeof description.lfFaceName - 1));
    CreateFont(description.lfHeight, description.lfWeight != 0 ? description.lfWeight : kFontNormal,
               description.lfUnderline != 0 ? Underline::Yes : Underline::No, name);
    m_lf = description;
    m_lf.lfFaceName[sizeof m_lf.lfFaceName - 1] = '\0';
}

void CFont::CreatePointFont(int tenths, std::string_view face) {
    constexpr int kDotsPerInch = 96;
    constexpr int kTenthsPerInch = 720;
    CreateFont(-(tenths * kDotsPerInch + kTenthsPerInch / 2) / kTenthsPerInch, kFontNormal, Underline::No, face);
}

int CFont::LineHeight() const {
    return m_face ? m_face->LineHeight() : 0;
}

}  // namespace veldan
