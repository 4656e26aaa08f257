#include "platform/draw/ColorMatrix.h"

#include "platform/draw/PixelsInternal.h"
#include "platform/draw/Surface.h"

namespace veldan {

void ApplyColorMatrix(Surface& surface, const ColorMatrix& matrix) {
    surface.BeginPixels();
    for (int y = 0; y < surface.Height(); ++y) {
        TransformPixels(surface.Row(y), static_cast<std::size_t>(surface.Width()), matrix);
    }
    surface.EndPixels();
}

}  // namespace veldan
