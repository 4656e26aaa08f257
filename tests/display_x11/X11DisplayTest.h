#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11Display.h"
#include "platform/draw/Region.h"
#include "platform/draw/Surface.h"
#include "x11/Wait.h"
#include "x11/XHand.h"
#include "x11/XServer.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace veldan {

inline const TopLevelTraits kFrameTraits{.type = TopLevelType::Normal, .managed = true};
inline constexpr TopLevelId kMenu = 7;
inline constexpr TopLevelId kFrame = 3;
inline constexpr CRect kMenuRect{100, 120, 300, 280};
inline constexpr CPoint kInMenu{150, 160};
inline constexpr CPoint kFarAway{900, 700};

/// A display on a server of its own, a hand on that server, and the events that came so far.
class X11DisplayTest : public testing::Test {
protected:
    explicit X11DisplayTest(const XServerOptions& options = {}) : m_server(options), m_hand(m_server.Name()) {}

    void SetUp() override {
        ASSERT_TRUE(m_server.IsRunning());
        m_display = MakeDisplay();
        ASSERT_NE(m_display, nullptr);
        m_hand.Move(kFarAway);
    }

    virtual std::unique_ptr<Display> MakeDisplay() { return CreateX11Display(m_server.Name().c_str()); }

    void Present(TopLevelId id, CSize size, std::uint32_t colour) {
        Surface pixels(size.cx, size.cy);
        for (int y = 0; y < size.cy; ++y) std::fill_n(pixels.Row(y), size.cx, colour);
        m_display->Present(id, pixels, Region(pixels.Bounds()));
    }

    /// A window of one colour, on the screen when the call returns.
    void Show(TopLevelId id, const CRect& rect, std::uint32_t colour = 0xff204060, TopLevelTraits traits = {}) {
        traits.title = TitleOf(id);
        m_display->CreateTopLevel(id, traits, rect);
        Present(id, rect.Size(), colour);
        m_display->SetVisible(id, true);
        m_display->Sync();
        ASSERT_TRUE(WaitUntil([&] { return m_hand.FindWindow(TitleOf(id)) != 0; }));
    }

    void ShowMenu() { Show(kMenu, kMenuRect); }

    /// The menu, with the keyboard focus told to be its own.
    void ShowFocusedMenu() {
        ShowMenu();
        m_display->TakeFocus(kMenu);
        ASSERT_TRUE(WaitFor(DisplayEventKind::FocusIn));
    }

    static std::string TitleOf(TopLevelId id) { return "window " + std::to_string(id); }
    [[nodiscard]] xcb_window_t WindowOf(TopLevelId id) const { return m_hand.FindWindow(TitleOf(id)); }

    /// Waits for an event of a kind, and drops what came before it; nothing where it never came.
    std::optional<DisplayEvent> WaitFor(DisplayEventKind kind) {
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (std::chrono::steady_clock::now() < end) {
            DisplayEvent event;
            m_display->Flush();
            while (m_display->NextEvent(event)) {
                if (event.kind == kind) return event;
            }
            pollfd news{m_display->Descriptor(), POLLIN, 0};
            if (poll(&news, 1, 1000) < 0) break;
        }
        return std::nullopt;
    }

    /// The same for an event that must come to this window.
    void ExpectOf(TopLevelId window, DisplayEventKind kind) {
        const auto event = WaitFor(kind);
        ASSERT_TRUE(event);
        EXPECT_EQ(event->window, window);
    }

    /// Whether an event of a kind is among those that the server has sent up to now.
    bool HasCome(DisplayEventKind kind) {
        m_hand.Sync();
        m_display->Sync();
        bool found = false;
        DisplayEvent event;
        while (m_display->NextEvent(event)) found = found || event.kind == kind;
        return found;
    }

    XServer m_server;
    XHand m_hand;
    std::unique_ptr<Display> m_display;
};

/// For tests that are run on a bare server and on a managed one.
inline std::string ManagedOrBare(const testing::TestParamInfo<bool>& isManaged) {
    return isManaged.param ? "Managed" : "Bare";
}

class ManagedX11DisplayTest : public X11DisplayTest {
protected:
    ManagedX11DisplayTest() : X11DisplayTest({.withManager = true}) {}
};

}  // namespace veldan
