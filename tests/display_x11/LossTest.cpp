#include "X11DisplayTest.h"

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
        m_display->CreateTopLevel(kFrame, kFrameTraits, kMenuRect);
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

}  // namespace

}  // namespace veldan
