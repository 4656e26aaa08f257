#pragma once

#include <cstddef>

struct _PangoContext;

namespace veldan {

/// Whether the text library may look for so many fonts. It does so on threads of its own, at its start, for each new
/// font and for each script that a font meets; without room for a thread or for its memory, the process would end.
[[nodiscard]] bool CanSearchFonts(std::size_t searches);

/// What all text is laid out with; started at the first call and never ended, since the text library can't be started
/// twice. Null where the system has no font at all, and for as long as it has no threads to spare.
///
/// The environment variable VELDAN_FONT_CONFIG names a font configuration file to use in place of the person's own.
[[nodiscard]] _PangoContext* GetTextContext();

}  // namespace veldan
