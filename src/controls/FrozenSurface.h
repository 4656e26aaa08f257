#pragma once

#include "platform/draw/DC.h"
#include "platform/window/Wnd.h"

namespace veldan {

class CGPFrozenState;

// A frozen surface is a device context with a bitmap of its own: the finished look of one state of a control, ready to
// be copied to the screen. It exists exactly while the context has a handle.

/// Makes the surface, black, for drawing on it.
void MakeSurface(CDC& surface, const CDC& reference, CSize size);

/// Makes the surface and copies what was drawn, from (0, 0).
void FreezeSurface(CDC& surface, const CDC& reference, const CDC& drawing, CSize size);

/// Makes a surface with what the parent shows under the control at this moment. Does nothing where it exists.
void SnapshotParent(CDC& surface, const CWnd& control);

/// Paints a control by a block copy. Where the surface has no pixels, or does not exist, the control is painted black.
void PaintSurface(const DRAWITEMSTRUCT& item, const CDC& surface);
void PaintState(const DRAWITEMSTRUCT& item, const CGPFrozenState& state);

}  // namespace veldan
