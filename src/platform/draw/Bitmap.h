#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/draw/Surface.h"

#include <memory>

namespace veldan {

class CDC;

/// A picture of 32-bit pixels that can be selected into a device context. The pixels are shared: a device context that
/// has the bitmap selected keeps them alive after the bitmap object is gone.
class VELDAN_PLATFORM_API CBitmap {
public:
    CBitmap() = default;
    /// Makes a bitmap of black pixels, whatever the device context. Replaces what the object held. Sides of 0 are
    /// legal; false for negative sides and for more pixels than memory is worth spending on.
    bool CreateCompatibleBitmap(const CDC* pDC, int width, int height);
    void DeleteObject() { m_surface.reset(); }

    [[nodiscard]] CSize GetSize() const;
    /// The pixels, or null while there is no bitmap.
    [[nodiscard]] const std::shared_ptr<Surface>& GetSurface() const { return m_surface; }

private:
    std::shared_ptr<Surface> m_surface;
};

}  // namespace veldan
