#include "platform/display/memory/MemoryDisplay.h"
#include "platform/draw/Region.h"

#include <gtest/gtest.h>

namespace veldan {

namespace {

constexpr TopLevelId kFrame = 3;
constexpr TopLevelId kMenu = 7;
constexpr TopLevelId kUpper = 8;

class MemoryDisplayTest : public testing::Test {
protected:
    void Show(TopLevelId id, const CRect& rect, std::uint32_t colour, const TopLevelTraits& traits = {}) {
        m_display.CreateTopLevel(id, traits, rect);
        Present(id, rect.Size(), colour);
        m_display.SetVisible(id, true);
    }

    void Present(TopLevelId id, CSize size, std::uint32_t colour) {
        Surface pixels(size.cx, size.cy);
        std::fill_n(pixels.Row(0), size.cx * size.cy, colour);
        m_display.Present(id, pixels, Region(pixels.Bounds()));
    }

    // The kinds of all events that wait.
    std::vector<DisplayEventKind> News() {
        std::vector<DisplayEventKind> kinds;
        DisplayEvent event;
        while (m_display.NextEvent(event)) {
            kinds.push_back(event.kind);
        }
        return kinds;
    }

    [[nodiscard]] std::uint32_t Seen(CPoint screen) const { return m_display.PixelAt(screen) & 0xffffff; }

    MemoryDisplay m_display{{400, 300}};
};

TEST_F(MemoryDisplayTest, PopupsGoWithTheirFrameAndComeBackAboveIt) {
    using enum DisplayEventKind;
    Show(kFrame, {0, 0, 200, 200}, 0xff336699, {.managed = true});
    Show(kMenu, {50, 50, 150, 150}, 0xff204060, {.owner = kFrame});
    Show(kUpper, {100, 100, 120, 120}, 0xff00ff00, {.owner = kMenu});
    m_display.TakeFocus(kMenu);
    m_display.MovePointer({110, 110});
    const TopLevelId other = m_display.AddForeignWindow({0, 0, 400, 300});
    News();
    m_display.KeepFrameOff(kFrame);
    EXPECT_EQ(News(), (std::vector{FocusOut}));
    m_display.FocusForeignWindow(other);
    EXPECT_EQ(News(), (std::vector{ForeignActive}));
    m_display.TakeFocus(kMenu);
    EXPECT_EQ(m_display.FocusWindow(), other);
    m_display.BringFrameBack(kFrame);
    EXPECT_EQ(News(), (std::vector{FocusIn, PointerMove}));
    EXPECT_EQ(Seen({10, 10}), 0x336699U);
    EXPECT_EQ(Seen({60, 60}), 0x204060U);
    EXPECT_EQ(Seen({110, 110}), 0x00ff00U);
    m_display.Restack(kMenu, StackPlace::Above, kUpper);
    EXPECT_EQ(Seen({110, 110}), 0x204060U);
    m_display.Restack(kMenu, StackPlace::Below, kFrame);
    EXPECT_EQ(Seen({60, 60}), 0x336699U);
    m_display.SetVisible(kFrame, false);
    EXPECT_EQ(Seen({60, 60}), 0x204060U) << "what the host hides itself takes nothing along";
}

}  // namespace

}  // namespace veldan
