#pragma once

#include "platform/core/Text.h"
#include "platform/draw/Image.h"

#include <memory>

/// What the menu shows of a profile, read from its files.
struct PickedProfile {
    veldan::CString caption;  ///< The name of the file if it has no caption.
    veldan::CString comment;
    std::unique_ptr<veldan::Image> icon;  ///< Null if there is none.
};

/// Reads the profile at a path, and the icon that the index in its folder names.
[[nodiscard]] PickedProfile ReadPickedProfile(const veldan::CString& path);
