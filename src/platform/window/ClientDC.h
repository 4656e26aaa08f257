#pragma once

#include "platform/draw/DC.h"
#include "platform/draw/Region.h"
#include "platform/window/Handle.h"

namespace veldan {

class CWnd;

/// A device context on a window's client area, outside of painting. Reading it shows what the window has drawn, or its
/// erased background; drawing stays until the area is erased again. Limited to what siblings and ancestors leave of the
/// window, so drawing on a hidden child changes nothing. A window that is null or gone gives a context without a
/// surface.
class VELDAN_PLATFORM_API CClientDC : public CDC {
public:
    explicit CClientDC(const CWnd* window);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

/// The device context of a paint message: limited to what is left to paint, which then counts as painted. Runs the
/// window's erase first.
class VELDAN_PLATFORM_API CPaintDC : public CDC {
public:
    explicit CPaintDC(const CWnd* window);
    ~CPaintDC() override;

    /// What is painted, in client pixels.
    [[nodiscard]] const Region& Area() const { return m_area; }

private:
    Region m_area;
};

}  // namespace veldan
