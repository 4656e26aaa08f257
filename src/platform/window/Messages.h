#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/core/Types.h"
#include "platform/window/Handle.h"
#include "platform/window/MessageList.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace veldan {

#define VELDAN_MESSAGE_CONSTANT(name, number, signature) inline constexpr UINT name = number;
VELDAN_MESSAGES(VELDAN_MESSAGE_CONSTANT)
#undef VELDAN_MESSAGE_CONSTANT

/// The first number that a program may use for messages of its own between its windows.
inline constexpr UINT WM_USER = 0x0400;

/// In lParam of WM_KEYDOWN: the key was down already.
inline constexpr LPARAM kKeyRepeat = LPARAM{1} << 30;

/// A message as the queue hands it out.
struct MSG {
    HWND hwnd;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    std::int64_t time = 0;  ///< Milliseconds of the desktop's clock.
    CPoint pt;              ///< The pointer on the screen.
    UINT flags = 0;         ///< MK_... of the buttons and modifiers that were held.
};

struct MessageName {
    UINT number;
    std::string_view name;
};

/// The whole list, in the order of the numbers.
[[nodiscard]] VELDAN_PLATFORM_API std::span<const MessageName> AllMessages();
/// The message's name, or an empty text for a number that is not the layer's.
[[nodiscard]] VELDAN_PLATFORM_API std::string_view NameOfMessage(UINT message);

}  // namespace veldan
