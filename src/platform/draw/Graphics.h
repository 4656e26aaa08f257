#pragma once

#include "platform/core/Export.h"
#include "platform/core/Types.h"
#include "platform/draw/ColorMatrix.h"
#include "platform/draw/Image.h"

#include <optional>

namespace veldan {

class CDC;

/// A rectangle with sides in fractions of pixels.
struct RectF {
    float x = 0;
    float y = 0;
    float width = 0;
    float height = 0;
};

/// What happens to the colours of an image while it is drawn.
class VELDAN_PLATFORM_API ImageAttributes {
public:
    void SetColorMatrix(const ColorMatrix& matrix) { m_matrix = matrix; }
    [[nodiscard]] const std::optional<ColorMatrix>& GetColorMatrix() const { return m_matrix; }

private:
    std::optional<ColorMatrix> m_matrix;
};

/// Draws images and gradients on a device context, which must live longer. Uses the context's logical coordinates and
/// clip. The last status is kept and nothing else is done about it.
class VELDAN_PLATFORM_API Graphics {
public:
    explicit Graphics(CDC& dc) : m_dc(dc) {}

    /// Stretches the source rectangle of the image into the destination, blended by its alpha over what is there. Parts
    /// of the source rectangle outside of the image draw nothing. Without scaling, pixels are drawn as they are.
    DrawStatus DrawImageRectRect(Image* pImage, const RectF& destination, const RectF& source,
                                 const ImageAttributes* pAttributes = nullptr);

    /// Fills a rectangle with colours that run down from `top` at y = 0 to `bottom` at y = `height`, over and over.
    DrawStatus FillVerticalGradient(const RectF& rect, int height, COLORREF top, COLORREF bottom);

    /// The status of the last operation; reading it sets it back to Ok.
    DrawStatus GetLastStatus();

private:
    CDC& m_dc;
    DrawStatus m_status = DrawStatus::Ok;
};

}  // namespace veldan
