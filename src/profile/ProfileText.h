#pragma once

#include "platform/core/Text.h"

#include <cstdint>
#include <optional>

namespace veldan {

/// Names stand at the top of a profile. The menu reads no further than this, as what is larger is no profile.
inline constexpr std::int64_t kMostScannedBytes = 256LL * 1024;

/// A profile's caption and comment as the menu shows them; nothing where there is no line for one.
struct ProfileText {
    std::optional<CString> name;
    std::optional<CString> comment;
};

/// Finds the two by a scan of lines rather than with a parser: each stands on a line of its own that begins, behind
/// blanks, with `<ProfileName value="` or `<ProfileComment value="`. The rest of the line without its last three
/// characters, the `"/>`, is the text as it stands. The scan ends with the second hit, also where both are for the same
/// one.
[[nodiscard]] ProfileText ReadProfileText(std::string_view profile);

}  // namespace veldan
