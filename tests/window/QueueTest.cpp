#include "support/DesktopFixture.h"
#include "support/Probe.h"

#include <poll.h>

#include <optional>

namespace veldan {

class QueueTest : public DesktopTest {
protected:
    QueueTest() {
        MakePopup(m_window, {0, 0, 100, 100});
        Person().Move({50, 50});
        m_window.log.clear();
    }
    [[nodiscard]] bool IsReadable() const {
        pollfd descriptor{TheDesktop().Descriptor(), POLLIN, 0};
        return poll(&descriptor, 1, 0) == 1;
    }

    ProbeWnd m_window;
};

TEST_F(QueueTest, SentThenPostedThenInputThenPaintThenTimer) {
    m_window.SetTimer(1, 1);
    m_clock->Advance(5);
    m_window.Invalidate();
    m_display->TurnWheel(120);
    m_window.PostMessage(WM_USER + 1);
    m_window.SendMessage(WM_USER);
    TheDesktop().Dispatch();
    const std::vector<UINT> expected{WM_USER, WM_USER + 1, WM_MOUSEWHEEL, WM_PAINT, WM_ERASEBKGND, WM_TIMER};
    EXPECT_EQ(m_window.log, expected);
}

TEST_F(QueueTest, ATimerHasOneMessageWaitingHoweverLateAndEndsWhenItIsKilled) {
    static int calls = 0;
    m_window.SetTimer(1, 10);
    const TimerOwner owner;
    const UINT_PTR id = TheDesktop().SetTimer(owner, 10, [](UINT_PTR) { ++calls; });
    m_clock->Advance(1000);
    Person().Settle();
    EXPECT_EQ(m_window.CountOf(WM_TIMER), 1);
    Person().Wait(10);
    EXPECT_EQ(m_window.CountOf(WM_TIMER), 2);
    EXPECT_EQ(calls, 2) << "without a window it calls";
    m_window.SetTimer(1, 1000);
    EXPECT_TRUE(TheDesktop().KillTimer({}, id));
    Person().Wait(50);
    EXPECT_EQ(m_window.CountOf(WM_TIMER), 2) << "the same id replaces the timer";
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(TheDesktop().KillTimer({}, 0));
}

TEST_F(QueueTest, ATimerWithoutAWindowEndsWithItsOwner) {
    static int calls = 0;
    static std::optional<TimerOwner> owner;
    static std::optional<TimerOwner> other;
    owner.emplace();
    other.emplace();
    TheDesktop().SetTimer(*owner, 10, [](UINT_PTR) {
        ++calls;
        other.reset();
    });
    TheDesktop().SetTimer(*other, 10, [](UINT_PTR) { ADD_FAILURE() << "its owner has just gone"; });
    Person().Wait(25);
    EXPECT_EQ(calls, 2);
    m_clock->Advance(10);
    MSG message;
    EXPECT_TRUE(TheDesktop().PeekMessage(message));
    owner.reset();
    TheDesktop().TranslateAndDispatch(message);
    EXPECT_EQ(calls, 2) << "the message was on its way";
    m_clock->Advance(1000);
    EXPECT_FALSE(TheDesktop().PeekMessage(message));
}

TEST_F(QueueTest, DescriptorIsReadableWheneverSomethingWaitsAndQuittingEndsTheLoop) {
    const std::function<void()> causes[] = {
        [this] { m_window.PostMessage(WM_USER); },
        [this] { m_window.Invalidate(); },
        [this] {
            m_display->MovePointer({51, 51});
        },
    };
    for (const auto& cause : causes) {
        Person().Settle();
        EXPECT_FALSE(IsReadable());
        cause();
        TheDesktop().Settle();
        EXPECT_TRUE(IsReadable());
    }
    m_window.PostMessage(WM_USER);
    TheDesktop().PostQuitMessage(7);
    EXPECT_EQ(TheDesktop().Run(), 7);
    EXPECT_EQ(m_window.CountOf(WM_USER), 2) << "after what was posted";
}

/// Swallows or rewrites what goes to itself and its children.
class Gate : public ProbeWnd {
protected:
    bool PreTranslateMessage(MSG& message) override {
        if (message.message == WM_LBUTTONDOWN) {
            message.message = WM_RBUTTONDOWN;
        }
        return message.message == WM_LBUTTONUP;
    }
};

TEST_F(QueueTest, ParentsSeeRetrievedMessagesOfTheirChildrenFirst) {
    Gate gate;
    ProbeWnd child;
    MakePopup(gate, {200, 0, 300, 100});
    MakeChild(child, gate, {0, 0, 100, 100});
    Person().Click({250, 50});
    EXPECT_EQ(child.CountOf(WM_RBUTTONDOWN), 1);
    EXPECT_EQ(child.CountOf(WM_LBUTTONDOWN) + child.CountOf(WM_LBUTTONUP), 0);
}

TEST_F(QueueTest, AWindowThatPostsToItselfForEverLeavesTheLoopToTheHost) {
    class Endless : public ProbeWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_USER) {
                PostMessage(WM_USER);
            }
            return ProbeWnd::WindowProc(message, wParam, lParam);
        }
    };
    Endless endless;
    MakePopup(endless, {200, 0, 300, 100});
    endless.PostMessage(WM_USER);
    TheDesktop().Dispatch();
    EXPECT_GT(endless.CountOf(WM_USER), 1);
    EXPECT_TRUE(IsReadable());
}

}  // namespace veldan
