#include "platform/core/File.h"
#include "platform/debug/Debug.h"
#include "platform/draw/Png.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace veldan {

using DebugTest = DesktopTest;

TEST_F(DebugTest, SavedPictureShowsTheWindow) {
    ProbeWnd window;
    const CString path = testing::TempDir() + "window.png";
    EXPECT_FALSE(SaveWindowPicture(TheDesktop(), window.GetSafeHwnd(), path));
    MakePopup(window, {0, 0, 30, 20});
    ASSERT_TRUE(SaveWindowPicture(TheDesktop(), window.GetSafeHwnd(), path));
    CString bytes;
    ASSERT_TRUE(ReadWholeFile(path, bytes, 100'000));
    const auto picture = DecodePng(bytes);
    ASSERT_TRUE(picture && picture->Width() == 30 && picture->Height() == 20);
    EXPECT_EQ(picture->At(29, 19), 0xffc80000U);
    DeleteFile(path);
}

TEST_F(DebugTest, SpyAndDumpTellOfEveryMessageAndWindow) {
    const CString path = testing::TempDir() + "spy.txt";
    DeleteFile(path);
    setenv("VELDAN_SPY", path.c_str(), 1);
    StartMessageSpy(TheDesktop());
    ProbeWnd window;
    ProbeWnd child;
    MakePopup(window, {10, 20, 110, 220});
    MakeChild(child, window, {1, 2, 3, 4}, 42);
    child.EnableWindow(false);
    window.PostMessage(WM_USER + 5, 1, 2);
    Person().Settle();
    TheDesktop().SetObserver({});
    CString bytes;
    ASSERT_TRUE(ReadWholeFile(path, bytes, 100'000));
    EXPECT_THAT(bytes, testing::HasSubstr("1000 sent WM_CREATE 0.1 "));
    EXPECT_THAT(bytes, testing::HasSubstr("1000 queued 0x0405 0.1 0x1 0x2\r\n"));
    EXPECT_EQ(DumpWindowTree(TheDesktop()),
              "0.1 Window id=0 (10,20)-(110,220) shown active focus \"popup\"\n"
              "  1.1 Window id=42 (1,2)-(3,4) shown disabled\n");
    DeleteFile(path);
}

}  // namespace veldan
