#pragma once

#include "platform/core/Text.h"
#include "platform/draw/Image.h"

#include <memory>

/// What the menu showed of a profile, read from the files that belong to it.
struct PickedProfile {
    veldan::CString caption;  ///< The file's name if it says none.
    veldan::CString comment;
    std::unique_ptr<veldan::Image> icon;  ///< Null if there is none.
};

/// Reads the profile at a path and the icon that the index of its folder gives it.
[[nodiscard]] PickedProfile ReadPickedProfile(const veldan::CString& path);
