#include "PickedProfile.h"

#include "platform/core/File.h"
#include "platform/core/Utf8.h"

#include <cstdint>

using namespace veldan;

namespace {

constexpr std::int64_t kLargestProfile = 16 * 1024 * 1024;
constexpr std::int64_t kLargestIndex = 4 * 1024 * 1024;

/// Calls `take` for each line of a file, without white space at its ends.
template <class Take>
void ReadLines(const CString& path, std::int64_t limit, Take take) {
    CString text;
    if (!ReadWholeFile(path, text, limit)) {
        return;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        take(Trim(std::string_view(text).substr(at, end - at)));
        at = end + 1;
    }
}

/// The value of an element that fills a line, as in `<ProfileName value="..."/>`.
void TakeValue(std::string_view line, std::string_view start, CString& value) {
    constexpr std::size_t kEnd = std::string_view("\"/>").size();
    if (value.empty() && line.starts_with(start) && line.size() >= start.size() + kEnd) {
        value = line.substr(start.size(), line.size() - start.size() - kEnd);
    }
}

/// The index has a line "profile=icon" for each profile, perhaps spelled in another case than the path.
CString FindIconName(const CString& index, std::string_view profile) {
    CString icon;
    const CString wanted = FoldCase(profile);
    ReadLines(index, kLargestIndex, [&](std::string_view line) {
        const std::size_t sign = line.find('=');
        if (icon.empty() && sign != std::string_view::npos && FoldCase(Trim(line.substr(0, sign))) == wanted) {
            icon = Trim(line.substr(sign + 1));
        }
    });
    return icon;
}

}  // namespace

PickedProfile ReadPickedProfile(const CString& path) {
    const std::size_t slash = path.rfind('/') + 1;
    const CString folder = path.substr(0, slash);
    const CString name = path.substr(slash);
    PickedProfile profile;
    ReadLines(path, kLargestProfile, [&](std::string_view line) {
        TakeValue(line, "<ProfileName value=\"", profile.caption);
        TakeValue(line, "<ProfileComment value=\"", profile.comment);
    });
    if (profile.caption.empty()) {
        profile.caption = name;
    }
    if (const CString icon = FindIconName(folder + "order.ini", name); !icon.empty()) {
        profile.icon = Image::FromFile(folder + icon);
    }
    return profile;
}
