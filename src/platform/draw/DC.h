#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/core/Types.h"
#include "platform/draw/Bitmap.h"
#include "platform/draw/Brush.h"
#include "platform/draw/Font.h"
#include "platform/draw/Pen.h"

#include <memory>
#include <string_view>

namespace veldan {

class Region;
class Surface;

/// What a device context handle refers to; known in this folder only.
struct DeviceContext;
using HDC = DeviceContext*;

/// Raster operations: a plain copy, and source and target combined by "exclusive or" and by "and". The latter two make
/// opaque pixels.
inline constexpr UINT SRCCOPY = 0xcc0020;
inline constexpr UINT SRCINVERT = 0x660046;
inline constexpr UINT SRCAND = 0x8800c6;

/// How StretchBlt makes pixels: each of the nearest one of the source, or of the average of all that it covers.
inline constexpr int COLORONCOLOR = 3;
inline constexpr int HALFTONE = 4;

/// Formats of DrawText. Vertical centring applies to a single line only.
enum : UINT {
    DT_LEFT = 0x00,
    DT_CENTER = 0x01,
    DT_VCENTER = 0x04,
    DT_WORDBREAK = 0x10,
    DT_SINGLELINE = 0x20,
    DT_EXPANDTABS = 0x40,
    DT_CALCRECT = 0x400,
};

/// Whether text is drawn on the existing background or on a rectangle of the background colour.
inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

/// Makes a device context that draws on a surface. Its point (0, 0) is `origin` on the surface, and it changes only
/// pixels in `clip`, which is in surface coordinates. The caller deletes it, usually through the CDC that it is
/// attached to. Without a surface the context draws nothing.
[[nodiscard]] VELDAN_PLATFORM_API HDC CreateSurfaceDC(std::shared_ptr<Surface> surface, CPoint origin,
                                                      const Region& clip);
/// Null is allowed.
VELDAN_PLATFORM_API void DeleteDC(HDC hDC);

/// The height of a line in the system font, in pixels. Known without creating the font.
inline constexpr int kSystemFontHeight = 16;

/// The font of a new device context: bold sans-serif, with lines of 16 pixels.
[[nodiscard]] VELDAN_PLATFORM_API CFont* GetSystemFont();

/// A device context: where drawing goes, and with which objects. The object owns the attached handle and deletes it in
/// its destructor. Without a handle, or with a memory context in which no bitmap is selected yet, no call does
/// anything: nothing is drawn and results are false, zero or empty. Coordinates are logical: pixels relative to the
/// window's client area or to the bitmap, shifted by SetWindowOrg. The right and bottom sides of rectangles are
/// exclusive.
class VELDAN_PLATFORM_API CDC {
public:
    CDC() = default;
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    /// Takes ownership of a handle and deletes the one that was attached before.
    bool Attach(HDC hDC);
    /// Gives up the handle, which the caller then deletes.
    HDC Detach();
    bool DeleteDC();
    [[nodiscard]] HDC GetSafeHdc() const { return m_hDC; }
    /// Attaches a new memory context without a bitmap. `pDC` may be null or without a handle.
    bool CreateCompatibleDC(const CDC* pDC);
    [[nodiscard]] bool IsPrinting() const { return m_bPrinting; }

    /// Selects an object and returns the one that was selected before, so that it can be selected again later. The
    /// context keeps what it needs of the object, which may be destroyed while it is selected; the returned pointer is
    /// valid as long as the object that it points to. Returns null without a handle, and for a bitmap if none was
    /// selected. Null selects the context's default object.
    CBitmap* SelectObject(CBitmap* pBitmap);
    CFont* SelectObject(CFont* pFont);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);

    /// These return the previous value.
    COLORREF SetTextColor(COLORREF colour);
    COLORREF SetBkColor(COLORREF colour);
    int SetBkMode(int mode);
    /// Sets the logical point of the window's or bitmap's top left corner.
    CPoint SetWindowOrg(CPoint point);
    CPoint SetWindowOrg(int x, int y) { return SetWindowOrg({x, y}); }

    /// The rectangle around everything that can be drawn on, in logical coordinates; empty if nothing can.
    [[nodiscard]] CRect GetClipBox() const;
    /// A rectangle around everything that was drawn on since the last call, in logical coordinates. Nothing outside it
    /// has changed, unless somebody changed the surface's pixels directly.
    CRect TakeBoundsRect();

    /// Copies pixels, alpha included, from another context, or from another place of the same one. Parts for which the
    /// source has no pixels stay as they are. False when one of the contexts can't take part, and for an operation that
    /// isn't known. From a monochrome bitmap, black becomes the target's text colour and white its background colour;
    /// in one, pixels of the source's background colour become white and all others black.
    bool BitBlt(int x, int y, int width, int height, const CDC* pSource, int xSource, int ySource, UINT operation);
    /// The same from a rectangle of any size, stretched or shrunk as SetStretchBltMode tells. False if one is empty.
    bool StretchBlt(const CRect& rect, const CDC* pSource, const CRect& source, UINT operation);
    /// COLORONCOLOR to begin with. Gives the mode that held before.
    int SetStretchBltMode(int mode);

    void FillRect(const CRect& rect, const CBrush& brush);
    /// A frame one pixel wide inside of the rectangle.
    void FrameRect(const CRect& rect, const CBrush& brush);
    void FillSolidRect(const CRect& rect, COLORREF colour);
    /// Returns the previous current point.
    CPoint MoveTo(CPoint point);
    CPoint MoveTo(int x, int y) { return MoveTo({x, y}); }
    /// Draws with the pen from the current point; the last pixel isn't drawn.
    bool LineTo(CPoint point);
    bool LineTo(int x, int y) { return LineTo({x, y}); }
    /// Draws an outline with the pen, inside the rectangle, and fills it with the brush. `corner` is the size of the
    /// ellipse that rounds the corners.
    bool RoundRect(const CRect& rect, CSize corner);
    /// Inverts every second pixel of a frame one pixel wide inside of the rectangle; done twice it leaves no trace.
    void DrawFocusRect(const CRect& rect);

    /// Draws text with the selected font, clipped to the rectangle, and returns its height. Letters that are taller
    /// than a line may stand out above and below, where their line stands inside. "&" is an ordinary character. Lines
    /// end at a line feed unless DT_SINGLELINE, and at the rectangle's right side with DT_WORDBREAK. A tab is a blank,
    /// or with DT_EXPANDTABS goes on to the next multiple of eight average letters. DT_CALCRECT draws nothing and sets
    /// right and bottom to what the text needs.
    int DrawText(std::string_view text, CRect& rect, UINT format);
    /// The size of the text on one line in the selected font; the height is that of a line, also for an empty text.
    [[nodiscard]] CSize GetTextExtent(std::string_view text) const;

    /// For the drawing code of this folder and for code that accesses pixels directly: the surface drawn on, or null.
    [[nodiscard]] std::shared_ptr<Surface> GetSurface() const;

    /// The handle for drawing and the handle for queries, which are the same here. Contexts that share a handle set
    /// them directly.
    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;
    bool m_bPrinting = false;
};

}  // namespace veldan
