#pragma once

#include "platform/core/Types.h"

namespace veldan {

// Resources of the library, by type.

inline constexpr UINT kMenuDialogId = 129;  ///< "DIALOG"
inline constexpr UINT kAddIconId = 1057;    ///< "PNG", 35 by 35

}  // namespace veldan
