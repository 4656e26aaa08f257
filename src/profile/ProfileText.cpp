#include "profile/ProfileText.h"

#include <algorithm>

namespace veldan {

namespace {

bool TakeValue(std::string_view line, std::string_view start, std::optional<CString>& value) {
    constexpr std::size_t kEndLength = 3;  // of the closing "/>
    if (!line.starts_with(start)) {
        return false;
    }
    line.remove_prefix(start.size());
    value = line.substr(0, line.size() - std::min(line.size(), kEndLength));
    return true;
}

}  // namespace

ProfileText ReadProfileText(std::string_view profile) {
    ProfileText text;
    for (int hits = 0; hits < 2 && !profile.empty();) {
        const std::size_t end = std::min(profile.find('\n'), profile.size());
        const std::string_view line = Trim(profile.substr(0, end));
        if (TakeValue(line, "<ProfileName value=\"", text.name) ||
            TakeValue(line, "<ProfileComment value=\"", text.comment)) {
            ++hits;
        }
        profile.remove_prefix(std::min(end + 1, profile.size()));
    }
    return text;
}

}  // namespace veldan
