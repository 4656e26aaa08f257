#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/core/Types.h"
#include "platform/draw/Surface.h"

#include <memory>

namespace veldan {

class CDC;

/// A picture of 32-bit pixels that can be selected into a device context. The pixels are shared: a device context in
/// which the bitmap is selected keeps them alive after the bitmap object is destroyed.
class VELDAN_PLATFORM_API CBitmap {
public:
    CBitmap() = default;
    /// Makes a bitmap of black pixels, with an alpha of 0 as layers with alpha begin, whatever the device context.
    /// Replaces what the object held. Sides of 0 are legal; false for negative sides and for more pixels than memory is
    /// worth spending on.
    bool CreateCompatibleBitmap(const CDC* pDC, int width, int height);
    /// Makes a bitmap of black and white pixels, black to begin with, under the same conditions. CDC::BitBlt tells how
    /// such pixels and others are copied to one another.
    bool CreateMonochromeBitmap(int width, int height);
    /// Decodes a resource of type "BITMAP", the bytes of a BMP file. False if it is missing or can't be decoded; the
    /// object then holds nothing.
    bool LoadBitmap(UINT id);
    void DeleteObject() { *this = {}; }

    [[nodiscard]] CSize GetSize() const;
    [[nodiscard]] bool IsMonochrome() const { return m_bMonochrome; }
    /// The pixels, or null while there is no bitmap.
    [[nodiscard]] const std::shared_ptr<Surface>& GetSurface() const { return m_surface; }

private:
    std::shared_ptr<Surface> m_surface;
    bool m_bMonochrome = false;
};

}  // namespace veldan
