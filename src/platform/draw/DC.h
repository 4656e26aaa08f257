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

/// What a device context handle stands for; known to this folder only.
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

/// Formats of DrawText. Vertical centring counts for a single line only.
enum : UINT {
    DT_LEFT = 0x00,
    DT_CENTER = 0x01,
    DT_VCENTER = 0x04,
    DT_WORDBREAK = 0x10,
    DT_SINGLELINE = 0x20,
    DT_EXPANDTABS = 0x40,
    DT_CALCRECT = 0x400,
};

/// Whether text is drawn over what is there, or over a rectangle of the background colour.
inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

/// Makes a device context that draws on a surface: its point (0, 0) is `origin` on the surface, and it changes no pixel
/// outside of `clip`, which is given in surface coordinates. The caller deletes it, mostly through the CDC that it is
/// attached to. Without a surface the context draws nothing.
[[nodiscard]] VELDAN_PLATFORM_API HDC CreateSurfaceDC(std::shared_ptr<Surface> surface, CPoint origin,
                                                      const Region& clip);
/// Null is allowed.
VELDAN_PLATFORM_API void DeleteDC(HDC hDC);

/// Of a line in the system font, in pixels: its height is that of the line. Known without making the font.
inline constexpr int kSystemFontHeight = 16;

/// The font of a fresh device context: bold sans-serif, lines of 16 pixels.
[[nodiscard]] VELDAN_PLATFORM_API CFont* GetSystemFont();

/// A device context: where drawing goes, and with which objects. The object owns the handle that is attached to it and
/// deletes it at its end. Without a handle, or with a memory context that has no bitmap selected yet, every call is
/// quiet: nothing is drawn and results are false, zero or empty. Coordinates are logical ones: pixels relative to the
/// window's client area or to the bitmap, shifted by SetWindowOrg. Right and bottom of rectangles lie outside of them.
class VELDAN_PLATFORM_API CDC {
public:
    CDC() = default;
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    /// Takes over a handle; what was attached before is deleted.
    bool Attach(HDC hDC);
    /// Gives the handle away. The caller deletes it.
    HDC Detach();
    bool DeleteDC();
    [[nodiscard]] HDC GetSafeHdc() const { return m_hDC; }
    /// Attaches a memory context without a bitmap. The model may be null or without a handle.
    bool CreateCompatibleDC(const CDC* pDC);
    [[nodiscard]] bool IsPrinting() const { return m_bPrinting; }

    /// Selects an object and returns the one that was selected before, for selecting it again later. The context goes
    /// on drawing with what it was given even when the object is gone by then; the returned pointer is only as good as
    /// the object that it points to. Null without a handle, and for a bitmap where none was selected; null selects the
    /// context's own default again.
    CBitmap* SelectObject(CBitmap* pBitmap);
    CFont* SelectObject(CFont* pFont);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);

    /// These give the value that held before.
    COLORREF SetTextColor(COLORREF colour);
    COLORREF SetBkColor(COLORREF colour);
    int SetBkMode(int mode);
    /// The logical point that lies at the window's or bitmap's corner from now on.
    CPoint SetWindowOrg(CPoint point);
    CPoint SetWindowOrg(int x, int y) { return SetWindowOrg({x, y}); }

    /// The rectangle around all that drawing can reach, in logical coordinates; empty where nothing can be reached.
    [[nodiscard]] CRect GetClipBox() const;
    /// A rectangle around all that was drawn on since the last call, in logical coordinates; the next one starts anew.
    /// Nothing outside of it has changed, unless somebody touched the surface's pixels himself.
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
    /// Gives the point that was current before.
    CPoint MoveTo(CPoint point);
    CPoint MoveTo(int x, int y) { return MoveTo({x, y}); }
    /// Draws with the pen from the current point; the last pixel stays as it is.
    bool LineTo(CPoint point);
    bool LineTo(int x, int y) { return LineTo({x, y}); }
    /// Outline by the pen, inside of the rectangle, and inside by the brush. `corner` is the size of the ellipse that
    /// rounds the corners.
    bool RoundRect(const CRect& rect, CSize corner);
    /// Inverts every second pixel of a frame one pixel wide inside of the rectangle; done twice it leaves no trace.
    void DrawFocusRect(const CRect& rect);

    /// Draws text with the selected font, clipped to the rectangle, and returns its height. Letters that are taller
    /// than a line may stand out above and below, where their line stands inside. "&" is an ordinary character. Lines
    /// end at a line feed unless DT_SINGLELINE, and at the rectangle's right side with DT_WORDBREAK. A tab is a blank,
    /// or with DT_EXPANDTABS goes on to the next multiple of eight average letters. DT_CALCRECT draws nothing and sets
    /// right and bottom to what the text needs.
    int DrawText(std::string_view text, CRect& rect, UINT format);
    /// Size of the text on one line in the selected font; the height is that of a line, also for no text.
    [[nodiscard]] CSize GetTextExtent(std::string_view text) const;

    /// For the drawing code of this folder and for code that touches pixels itself: the surface drawn on, or null.
    [[nodiscard]] std::shared_ptr<Surface> GetSurface() const;

    /// Where drawing goes, and where questions go; the same one here. Written directly by contexts that share a handle.
    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;
    bool m_bPrinting = false;
};

}  // namespace veldan
