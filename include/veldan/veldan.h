#pragma once

/// The profile menu of a video conversion application.
///
/// All calls and all windows belong to one thread: the one that calls first and that runs the window system's loop. A
/// host calls Init once, Show and Hide as often as it likes, and Release before it unloads the library.
///
/// A click on a profile sends the host's window one message, with the number that the latest Show named, wParam 0, and
/// in lParam a `const char*`: the full path of the profile's file in UTF-8, spelled as on disk if the file exists, with
/// backslashes throughout (`veldan::ToSystemPath` turns it into the system's form). The text lives as long as the
/// message is handled; its result is of no importance. The menu is still shown then and hides afterwards. Every call
/// may be made from inside the handler.

#if defined(__GNUC__)
#define VELDAN_API __attribute__((visibility("default")))
#else
#define VELDAN_API
#endif

#ifdef __cplusplus
namespace veldan {
class CWnd;
}
typedef veldan::CWnd VELDAN_CWnd;
extern "C" {
#else
/** A window of the veldan-platform library, which C only passes on. */
typedef struct VELDAN_CWnd VELDAN_CWnd;
#endif

/// Reads all profiles and makes the menu, hidden. `pszPath` is the folder that holds `Profiles`; null or empty means
/// the folder of the running program. `pParentWnd` may be null. The menu belongs to the active window, else to the
/// host's topmost frame, so that is best made before. Does nothing while there is a menu.
///
/// Where the environment variable VELDAN_LOG_DIR names a folder, the menu's trace goes to `veldan.log` in it.
VELDAN_API void VELDAN_InitProfileMenus(VELDAN_CWnd* pParentWnd, const char* pszPath);

/// Shows the menu with its top left corner at a point of the screen, or moves it there. Coordinates beyond 16384 count
/// as 16384, and the place is taken as it is, on the screen or not. From now on a pick goes to `pHostWnd`, as the
/// message `uMsg`. The object need not outlive the call, only its window. Null does nothing.
VELDAN_API void VELDAN_ShowProfileMenus(VELDAN_CWnd* pHostWnd, int x, int y, unsigned uMsg);

/// Hides the menu. It stays as it is for the next Show.
VELDAN_API void VELDAN_HideProfileMenus(void);

/// Destroys the menu.
VELDAN_API void VELDAN_ReleaseProfileMenus(void);

#ifdef __cplusplus
}
#endif
