#pragma once

#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

#include "support/TempFolder.h"

namespace veldan {

constexpr COLORREF kParentColour = RGB(10, 20, 30);

/// A popup of one colour with room for controls, and pictures for them.
class ControlTest : public DesktopTest {
protected:
    static constexpr CPoint kParentAt = {100, 100};

    ControlTest() {
        m_parent.colour = kParentColour;
        MakePopup(m_parent, CRect::FromSize(kParentAt, {500, 400}));
        Person().Settle();
    }

    /// Writes a picture file with columns in these colours.
    CString Columns(const std::vector<COLORREF>& colours, int width, int height) const {
        Surface picture(width * static_cast<int>(colours.size()), height);
        for (int i = 0; i < picture.Width() * height; ++i) {
            const COLORREF colour = colours[static_cast<std::size_t>(i % picture.Width() / width)];
            picture.Row(0)[i] = 0xff000000 | (colour & 0xff) << 16 | (colour & 0xff00) | colour >> 16;
        }
        return m_folder.Write("columns.png", EncodePng(picture, PngAlpha::Keep));
    }
    CString Icon(COLORREF colour, int side = 35) const { return Columns({colour}, side, side); }

    /// The colour of a pixel of the popup, 0x00RRGGBB.
    [[nodiscard]] std::uint32_t At(CPoint client) const { return Seen(kParentAt + client); }

    testing::TempFolder m_folder;
    ProbeWnd m_parent;
};

}  // namespace veldan
