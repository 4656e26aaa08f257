#pragma once

struct _PangoContext;

namespace veldan {

/// What all text is laid out with; started at the first call and never ended, since the text library can't be started
/// twice. Null where the system has no font at all.
///
/// The environment variable VELDAN_FONT_CONFIG names a font configuration file to use in place of the person's own.
[[nodiscard]] _PangoContext* GetTextContext();

}  // namespace veldan
