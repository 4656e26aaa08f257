#pragma once

#include <cstddef>

struct _PangoContext;

namespace veldan {

/// Whether the text library can carry out this number of searches for fonts. It searches on threads of its own when it
/// starts, for each new font and for each script that is new to a font; if it can't start a thread or lacks the memory
/// for one, it ends the process.
[[nodiscard]] bool CanSearchFonts(std::size_t searches);

/// The context in which all text is laid out. It is created at the first call and never destroyed, because the text
/// library can't be started twice. Null if the system has no fonts at all, and as long as it can't start threads.
///
/// The environment variable VELDAN_FONT_CONFIG names a font configuration file that is used instead of the user's.
[[nodiscard]] _PangoContext* GetTextContext();

}  // namespace veldan
