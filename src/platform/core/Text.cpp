#include "platform/core/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace veldan {

CString Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    CString text = FormatV(format, arguments);
    va_end(arguments);
    return text;
}

CString FormatV(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    std::array<char, 256> shortText;
    const int length = std::vsnprintf(shortText.data(), shortText.size(), format, arguments);
    CString text;
    if (length > 0 && static_cast<std::size_t>(length) < shortText.size()) {
        text.assign(shortText.data(), static_cast<std::size_t>(length));
    } else if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

std::string_view TrimLeft(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view TrimRight(std::string_view text) {
    while (!text.empty() && IsSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view Trim(std::string_view text) {
    return TrimLeft(TrimRight(text));
}

CString ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    CString result;
    std::size_t next = 0;
    while (!from.empty()) {
        const std::size_t hit = text.find(from, next);
        if (hit == std::string_view::npos) {
            break;
        }
        result.append(text, next, hit - next).append(to);
        next = hit + from.size();
    }
    return result.append(text.substr(next));
}

int Atoi(std::string_view text) {
    text = TrimLeft(text);
    const bool bNegative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    // One past the largest number, so that the smallest one fits as well.
    constexpr std::int64_t kLimit = std::int64_t{std::numeric_limits<int>::max()} + 1;
    std::int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            break;
        }
        value = std::min(value * 10 + (c - '0'), kLimit);
    }
    return static_cast<int>(bNegative ? -value : std::min(value, kLimit - 1));
}

}  // namespace veldan
