#pragma once

#include "platform/core/Clock.h"
#include "platform/display/memory/MemoryDisplay.h"
#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veldan {

/// The user's hand on the display in memory. Time passes only through Wait and Rest. When a gesture returns, the window
/// system has handled everything that it caused.
class Hand {
public:
    Hand(Desktop& desktop, MemoryDisplay& display, ManualClock& clock)
        : m_desktop(desktop), m_display(display), m_clock(clock) {}

    void Move(CPoint screen) { Do(&MemoryDisplay::MovePointer, screen); }
    /// Moves there and waits, a millisecond at a time.
    void Rest(CPoint screen, int milliseconds = 30) {
        Move(screen);
        Wait(milliseconds);
    }
    void Press(int button = 1) { Do(&MemoryDisplay::PressButton, button); }
    void Release(int button = 1) { Do(&MemoryDisplay::ReleaseButton, button); }
    void Click(CPoint screen, int button = 1) {
        Move(screen);
        Press(button);
        Release(button);
    }
    void DoubleClick(CPoint screen) {
        Click(screen);
        Wait(50);
        Click(screen);
    }
    void Wheel(CPoint screen, int delta) {
        Move(screen);
        Turn(delta);
    }
    void Turn(int delta) { Do(&MemoryDisplay::TurnWheel, delta); }
    void Type(UINT key, const std::string& text = {}) {
        m_display.PressKey(key, text);
        m_display.ReleaseKey(key);
        Settle();
    }
    void Wait(int milliseconds) {
        for (int i = 0; i < milliseconds; ++i) {
            m_clock.Advance(1);
            Settle();
        }
    }
    void Settle() { m_desktop.Dispatch(); }

private:
    template <class Argument>
    void Do(void (MemoryDisplay::*gesture)(Argument), Argument argument) {
        (m_display.*gesture)(argument);
        Settle();
    }

    Desktop& m_desktop;
    MemoryDisplay& m_display;
    ManualClock& m_clock;
};

/// A fresh desktop on the display in memory, with access to its parts.
struct MemoryDesk {
    explicit MemoryDesk(CSize screen = {1920, 1080}) {
        auto newDisplay = std::make_unique<MemoryDisplay>(screen);
        auto newClock = std::make_unique<ManualClock>();
        display = newDisplay.get();
        clock = newClock.get();
        Desktop::Install(std::make_unique<Desktop>(std::move(newDisplay), std::move(newClock)));
        hand = std::make_unique<Hand>(Desktop::Get(), *display, *clock);
    }

    MemoryDisplay* display;
    ManualClock* clock;
    std::unique_ptr<Hand> hand;
};

class DesktopTest : public testing::Test {
protected:
    [[nodiscard]] static Desktop& TheDesktop() { return Desktop::Get(); }
    [[nodiscard]] Hand& Person() { return *m_desk.hand; }
    /// The colour of a pixel on the screen, 0x00RRGGBB.
    [[nodiscard]] std::uint32_t Seen(CPoint screen) const { return m_display->PixelAt(screen) & 0xffffff; }

    MemoryDesk m_desk;
    MemoryDisplay* m_display = m_desk.display;
    ManualClock* m_clock = m_desk.clock;
};

}  // namespace veldan
