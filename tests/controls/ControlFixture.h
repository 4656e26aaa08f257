#pragma once

#include "platform/draw/Bitmap.h"
#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

#include "support/TempFolder.h"

namespace veldan {

constexpr COLORREF kParentColour = RGB(10, 20, 30);

/// A popup of one colour with room for controls, and pictures to give them.
class ControlTest : public DesktopTest {
protected:
    static constexpr CPoint kParentAt = {100, 100};

    ControlTest() {
        m_parent.colour = kParentColour;
        MakePopup(m_parent, CRect::FromSize(kParentAt, {500, 400}));
        Person().Settle();
    }

    /// A picture file of columns in these colours.
    CString Columns(const std::vector<COLORREF>& colours, int width, int height) const {
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(nullptr, width * static_cast<int>(colours.size()), height);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        dc.SelectObject(&bitmap);
        int left = 0;
        for (const COLORREF colour : colours) {
            dc.FillSolidRect({left, 0, left + width, height}, colour);
            left += width;
        }
        return m_folder.Write("columns.png", EncodePng(*bitmap.GetSurface(), PngAlpha::Keep));
    }
    CString Icon(COLORREF colour, int side = 35) const { return Columns({colour}, side, side); }

    /// The colour of a pixel of the popup, 0x00RRGGBB.
    [[nodiscard]] std::uint32_t At(CPoint client) const { return Seen(kParentAt + client); }

    testing::TempFolder m_folder;
    ProbeWnd m_parent;
};

}  // namespace veldan
