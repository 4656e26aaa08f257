#include "storage/XmlText.h"

#include "platform/core/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace veldan {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// What a name may begin with, in ascending order.
constexpr Range kNameStarts[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xc0, 0xd6},     {0xd8, 0xf6},
    {0xf8, 0x2ff},    {0x370, 0x37d},   {0x37f, 0x1fff},  {0x200c, 0x200d}, {0x2070, 0x218f},
    {0x2c00, 0x2fef}, {0x3001, 0xd7ff}, {0xf900, 0xfdcf}, {0xfdf0, 0xfffd}, {0x10000, 0xeffff},
};

/// What it may go on with, beside those.
constexpr Range kNameParts[] = {
    {'-', '.'}, {'0', '9'}, {0xb7, 0xb7}, {0x300, 0x36f}, {0x203f, 0x2040},
};

template <std::size_t kCount>
bool IsIn(const Range (&ranges)[kCount], char32_t character) {
    const auto* const pRange = std::ranges::lower_bound(ranges, character, {}, &Range::last);
    return pRange != std::end(ranges) && pRange->first <= character;
}

/// Whether eight characters at once are of those from the blank to the end of ASCII. Most of every text is.
bool AreAllPlain(const char* pText) {
    std::uint64_t word = 0;
    std::memcpy(&word, pText, sizeof word);
    return ((word | (word - 0x2020202020202020)) & 0x8080808080808080) == 0;
}

bool IsAllowed(const Utf8Character& character) {
    const char32_t value = character.value;
    return character.bValid &&
           (value >= ' ' ? value != 0xfffe && value != 0xffff : value == '\t' || value == '\n' || value == '\r');
}

}  // namespace

bool IsXmlText(std::string_view text) {
    while (!text.empty()) {
        std::size_t length = sizeof(std::uint64_t);
        if (text.size() < length || !AreAllPlain(text.data())) {
            const Utf8Character character = DecodeUtf8(text);
            if (!IsAllowed(character)) {
                return false;
            }
            length = character.nLength;
        }
        text.remove_prefix(length);
    }
    return true;
}

bool IsXmlName(std::string_view text) {
    bool bStarts = true;
    while (!text.empty()) {
        const Utf8Character character = DecodeUtf8(text);
        const bool bFits = IsIn(kNameStarts, character.value) || (!bStarts && IsIn(kNameParts, character.value));
        if (!character.bValid || !bFits) {
            return false;
        }
        bStarts = false;
        text.remove_prefix(character.nLength);
    }
    return !bStarts;
}

bool IsXmlSpace(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace veldan
