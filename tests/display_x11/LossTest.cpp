#include "X11DisplayTest.h"

#include "platform/display/x11/X11PipeGuard.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

namespace veldan {

namespace {

class LossTest : public X11DisplayTest {
protected:
    // Every call, on a display whose server is gone.
    void CallEverything() {
        Present(kMenu, {500, 500}, 0xff112233);
        m_display->CreateTopLevel(kFrame, {.kind = TopLevelKind::Frame}, kMenuRect);
        m_display->SetTitle(kMenu, "title");
        m_display->SetRect(kMenu, kMenuRect);
        m_display->SetVisible(kMenu, false);
        m_display->Restack(kMenu, StackPlace::Top, 0);
        m_display->TakeFocus(kMenu);
        m_display->GiveBackFocus();
        m_display->SetCursor(kMenu, CursorShape::Hand);
        m_display->ReleaseGrab();
        m_display->Flush();
        m_display->Sync();
        m_display->DestroyTopLevel(kMenu);
        static_cast<void>(m_display->QueryPointer());
    }
};

TEST_F(LossTest, IsToldOnceAndTheDescriptorGoes) {
    ShowFocusedMenu();
    EXPECT_NE(fcntl(m_display->Descriptor(), F_GETFD) & FD_CLOEXEC, 0) << "programs of the host's would keep it open";
    m_server.Kill();
    ASSERT_TRUE(WaitFor(DisplayEventKind::Lost));
    EXPECT_FALSE(m_display->IsAlive());
    EXPECT_EQ(m_display->Descriptor(), -1);
    DisplayEvent event;
    EXPECT_FALSE(m_display->NextEvent(event));
    CallEverything();
    EXPECT_FALSE(m_display->NextEvent(event));
    EXPECT_EQ(m_display->ScreenRect(), (CRect{0, 0, 1024, 768})) << "the last that was known";
}

TEST_F(LossTest, CallsAfterAnUnnoticedLossDoNoHarm) {
    ShowMenu();
    m_hand.Move(kInMenu);
    m_hand.Press();
    ASSERT_TRUE(WaitFor(DisplayEventKind::ButtonPress)) << "so that there is a grab to give back";
    m_server.Kill();
    CallEverything();
    EXPECT_FALSE(m_display->IsAlive());
    EXPECT_TRUE(WaitFor(DisplayEventKind::Lost));
}

class PipeGuardTest : public testing::Test {
protected:
    static void WriteToNobody() {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        close(ends[0]);
        EXPECT_EQ(write(ends[1], "", 1), -1);
        close(ends[1]);
    }

    static bool IsSignalPending() {
        sigset_t pending;
        sigpending(&pending);
        return sigismember(&pending, SIGPIPE) == 1;
    }
};

TEST_F(PipeGuardTest, WriteToNobodyDoesNotReachTheHost) {
    std::signal(SIGPIPE, SIG_DFL);
    {
        const X11PipeGuard guard;
        { const X11PipeGuard inner; }
        WriteToNobody();
        EXPECT_TRUE(IsSignalPending());
    }
    EXPECT_FALSE(IsSignalPending());
    EXPECT_EXIT(WriteToNobody(), testing::KilledBySignal(SIGPIPE), "") << "the host's own setting is back";
}

TEST_F(PipeGuardTest, SignalThatTheHostHoldsBackIsKept) {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    std::raise(SIGPIPE);
    {
        const X11PipeGuard guard;
        WriteToNobody();
    }
    EXPECT_TRUE(IsSignalPending());
    const timespec atOnce{};
    sigtimedwait(&pipe, nullptr, &atOnce);
}

}  // namespace

}  // namespace veldan
