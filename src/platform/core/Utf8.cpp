#include "platform/core/Utf8.h"

#include <clocale>
#include <cwctype>

namespace veldan {

namespace {

constexpr unsigned ByteOf(char c) {
    return static_cast<unsigned char>(c);
}
constexpr bool IsContinuation(char c) {
    return (ByteOf(c) & 0xc0U) == 0x80;
}

/// The number of bytes of a character, by its first byte; 0 for a byte that can't be the first.
constexpr std::size_t LengthByLead(unsigned lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xc2) {
        return 0;
    }
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : lead < 0xf5 ? 4 : 0;
}

constexpr bool IsScalar(char32_t value, std::size_t length) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return value >= kSmallest[length] && value <= 0x10ffff && (value < 0xd800 || value > 0xdfff);
}

char32_t ToUpper(char32_t character) {
    // A locale object of our own doesn't affect the host's locale. Without it only the letters A to Z have two cases.
    static const locale_t kLocale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return kLocale ? static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), kLocale)) : character;
}

}  // namespace

Utf8Character DecodeUtf8(std::string_view text) {
    const unsigned lead = ByteOf(text.front());
    const std::size_t length = LengthByLead(lead);
    if (length == 0 || length > text.size()) {
        return {lead, 1, false};
    }
    char32_t value = length == 1 ? lead : lead & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) {
            return {lead, 1, false};
        }
        value = value << 6 | (ByteOf(text[i]) & 0x3fU);
    }
    return IsScalar(value, length) ? Utf8Character{value, length, true} : Utf8Character{lead, 1, false};
}

void AppendUtf8(CString& text, char32_t character) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80U | (character >> shift & 0x3fU)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xc0U | character >> 6);
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xe0U | character >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xf0U | character >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

CString FoldCase(std::string_view text) {
    CString folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const char first = text.front();
        if (ByteOf(first) < 0x80) {
            folded += first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
            text.remove_prefix(1);
            continue;
        }
        const Utf8Character character = DecodeUtf8(text);
        if (character.bValid) {
            AppendUtf8(folded, ToUpper(character.value));
        } else {
            folded += first;
        }
        text.remove_prefix(character.nLength);
    }
    return folded;
}

}  // namespace veldan
