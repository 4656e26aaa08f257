#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"
#include "platform/draw/ColorMatrix.h"
#include "platform/draw/Image.h"

#include <optional>

namespace veldan {

class CDC;

/// A rectangle in fractions of pixels.
struct RectF {
    float x = 0;
    float y = 0;
    float width = 0;
    float height = 0;
};

/// How the colours of an image are changed while it is drawn.
class VELDAN_PLATFORM_API ImageAttributes {
public:
    void SetColorMatrix(const ColorMatrix& matrix) { m_matrix = matrix; }
    [[nodiscard]] const std::optional<ColorMatrix>& GetColorMatrix() const { return m_matrix; }

private:
    std::optional<ColorMatrix> m_matrix;
};

/// Draws images and gradients on a device context, which must outlive the object, with the context's logical
/// coordinates and clip. The status of the last operation can be queried; otherwise it is ignored.
class VELDAN_PLATFORM_API Graphics {
public:
    explicit Graphics(CDC& dc) : m_dc(dc) {}

    /// Stretches the source rectangle of the image to the destination and blends it over what is there. Where the
    /// source rectangle is outside the image, nothing is drawn. Without scaling, pixels are copied exactly.
    DrawStatus DrawImageRectRect(Image* pImage, const RectF& destination, const RectF& source,
                                 const ImageAttributes* pAttributes = nullptr);

    /// Fills a rectangle with a gradient from `top` at y = 0 to `bottom` at y = `height`, repeated.
    DrawStatus FillVerticalGradient(const RectF& rect, int height, COLORREF top, COLORREF bottom);

    /// The status of the last operation; reading it resets it to Ok.
    DrawStatus GetLastStatus();

private:
    CDC& m_dc;
    DrawStatus m_status = DrawStatus::Ok;
};

}  // namespace veldan
