#include "platform/draw/Font.h"

#include "platform/draw/FontFaceInternal.h"

namespace veldan {

void CFont::CreateFont(int height, int weight, Underline underline, std::string_view face) {
    m_face = FontFace::Get({height, weight, std::string(face)});
    m_underline = underline;
}

int CFont::LineHeight() const {
    return m_face ? m_face->LineHeight() : 0;
}

}  // namespace veldan
