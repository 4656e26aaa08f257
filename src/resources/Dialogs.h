#pragma once

#include "platform/core/Types.h"

namespace veldan {

// Dialog templates of the library.
inline constexpr UINT kMenuDialogId = 129;

// Resources of the library, by type.
inline constexpr UINT kAddIconId = 1057;           ///< "PNG", 35 by 35
inline constexpr UINT kNeutralRowIconId = 1058;    ///< "PNG", 35 by 35
inline constexpr UINT kNeutralGroupIconId = 1059;  ///< "PNG", 16 by 16

}  // namespace veldan
