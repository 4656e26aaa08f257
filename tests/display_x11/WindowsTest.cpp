#include "X11DisplayTest.h"

#include "platform/display/x11/X11Upload.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace veldan {

namespace {

struct ServerKind {
    const char* name;
    XServerOptions options;
    bool overTcp = false;
    bool isComposited = false;
};

void PrintTo(const ServerKind& kind, std::ostream* out) {
    *out << kind.name;
}

constexpr TopLevelId kOther = 10;

// What windows and pixels do must not depend on what else the server can do.
class WindowsTest : public X11DisplayTest, public testing::WithParamInterface<ServerKind> {
protected:
    WindowsTest() : X11DisplayTest(GetParam().options) {}

    std::unique_ptr<Display> MakeDisplay() override {
        if (GetParam().isComposited) m_hand.PoseAsCompositor();
        return CreateX11Display((GetParam().overTcp ? m_server.TcpName() : m_server.Name()).c_str());
    }
};

INSTANTIATE_TEST_SUITE_P(OnServer, WindowsTest,
                         testing::Values(ServerKind{"Bare", {}}, ServerKind{"Managed", {.withManager = true}},
                                         ServerKind{"WithoutSharedMemory", {.arguments = {"-extension", "MIT-SHM"}}},
                                         ServerKind{"WithoutAlpha", {.arguments = {"-extension", "COMPOSITE"}}},
                                         ServerKind{"WithoutRender", {.arguments = {"-extension", "RENDER"}}},
                                         ServerKind{"Composited", {}, false, true},
                                         ServerKind{"OverTcp", {.overTcp = true}, true}),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(WindowsTest, PopupStandsExactlyWhereItIsToldWithItsPixels) {
    m_display->CreateTopLevel(kMenu, {.title = "veldan menu"}, kMenuRect);
    Surface pixels(kMenuRect.Width(), kMenuRect.Height());
    for (int y = 0; y < pixels.Height(); ++y) {
        for (int x = 0; x < pixels.Width(); ++x) pixels.Row(y)[x] = 0xff000000U | static_cast<unsigned>(x << 8 | y);
    }
    m_display->Present(kMenu, pixels, Region(pixels.Bounds()));
    m_display->SetVisible(kMenu, true);
    m_display->Flush();
    ASSERT_TRUE(m_hand.WaitForPixel({299, 279}, 199 << 8 | 159));
    for (const CPoint point : {CPoint{0, 0}, CPoint{199, 0}, CPoint{0, 159}, CPoint{77, 88}}) {
        EXPECT_EQ(m_hand.PixelAt(kMenuRect.TopLeft() + point), static_cast<unsigned>(point.x << 8 | point.y));
    }
    EXPECT_EQ(m_hand.PixelAt({99, 120}), m_hand.PixelAt({99, 400})) << "nothing stands beside the window";
    EXPECT_EQ(m_hand.RectOf(m_hand.FindWindow("veldan menu")), kMenuRect);
    {
        const XForeignWindow cover(m_server.Name(), kMenuRect, 0xff00ff);
        ASSERT_TRUE(m_hand.WaitForPixel({299, 279}, 0xff00ff));
    }
    EXPECT_TRUE(m_hand.WaitForPixel({299, 279}, 199 << 8 | 159)) << "uncovered it isn't presented anew";
}

TEST_P(WindowsTest, WhatIsDrawnOnASurfaceOfTheDisplaysIsSeenWhenPresented) {
    m_display->CreateTopLevel(kMenu, {}, kMenuRect);
    const std::shared_ptr<Surface> surface = m_display->MakeSurface(kMenu, kMenuRect.Size());
    ASSERT_EQ(surface->Bounds().Size(), kMenuRect.Size());
    EXPECT_EQ(surface->At(199, 159), 0U);
    std::fill_n(surface->Row(0), 200 * 160, 0xff204060);
    m_display->Present(kMenu, *surface, Region(CRect{0, 0, 1, 1}));
    m_display->SetVisible(kMenu, true);
    m_display->Flush();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x204060)) << "the first time all of it is taken over";
    std::fill_n(surface->Row(20), 200 * 40, 0xff00ff00);
    m_display->Present(kMenu, *surface, Region(CRect{0, 20, 200, 60}));
    m_display->Flush();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x00ff00));
    m_display.reset();
    surface->Row(0)[0] = 1;
    EXPECT_EQ(surface->At(0, 0), 1U) << "its pixels outlive the display";
}

TEST_P(WindowsTest, MoreIsPresentedInARowThanSharedMemoryHolds) {
    const CRect wide{0, 0, 1000, 700};
    Show(kMenu, wide);
    for (unsigned step = 1; step <= 20; ++step) Present(kMenu, wide.Size(), 0xff000000U | step);
    m_display->Flush();
    for (const CPoint corner : {CPoint{0, 0}, CPoint{999, 0}, CPoint{500, 350}, CPoint{999, 699}}) {
        EXPECT_TRUE(m_hand.WaitForPixel(corner, 20)) << corner.x << ", " << corner.y;
    }
}

TEST(UploadTest, GoesThroughSharedMemoryWhereTheServerSharesIt) {
    const XServer server({.overTcp = true});
    const XServer withoutMemory({.arguments = {"-extension", "MIT-SHM"}});
    ASSERT_TRUE(server.IsRunning() && withoutMemory.IsRunning());
    const auto isShared = [](const std::string& name) {
        const auto connection = X11Connection::Open(name.c_str());
        return connection && X11Upload(*connection).IsShared();
    };
    EXPECT_TRUE(isShared(server.Name()));
    EXPECT_FALSE(isShared(server.TcpName()));
    EXPECT_FALSE(isShared(withoutMemory.Name()));
}

class PixelsTest : public X11DisplayTest {};

TEST_F(PixelsTest, OnlyTheDirtyPartIsTakenOver) {
    ShowMenu();
    Surface pixels(kMenuRect.Width(), kMenuRect.Height());
    std::fill_n(pixels.Row(0), 200 * 160, 0xff00ff00);
    Region dirty(CRect{10, 10, 20, 20});
    dirty.Add(CRect{190, 150, 400, 400});
    m_display->Present(kMenu, pixels, dirty);
    m_display->Flush();
    ASSERT_TRUE(m_hand.WaitForPixel({299, 279}, 0x00ff00));
    EXPECT_EQ(m_hand.PixelAt({110, 130}), 0x00ff00U);
    EXPECT_EQ(m_hand.PixelAt({120, 130}), 0x204060U);
    EXPECT_EQ(m_hand.PixelAt({289, 279}), 0x204060U);
}

TEST_F(PixelsTest, ResizedWindowShowsTheNewPixelsAndNoneOfTheirTransparency) {
    Show(kMenu, kMenuRect, 0x00123456);
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x123456));
    m_display->SetRect(kMenu, {50, 60, 550, 660});
    Present(kMenu, {500, 600}, 0xffabcdef);
    m_display->Flush();
    EXPECT_TRUE(m_hand.WaitForPixel({549, 659}, 0xabcdef));
    EXPECT_EQ(m_hand.PixelAt({50, 60}), 0xabcdefU);
}

TEST_F(PixelsTest, WindowNeverPresentedAndEmptyOnesDoNoHarm) {
    m_display->CreateTopLevel(kMenu, {}, {10, 10, 10, 10});
    m_display->Present(kMenu, Surface(0, 0), Region(CRect{0, 0, 5, 5}));
    m_display->SetVisible(kMenu, true);
    m_display->SetRect(kMenu, {10, 10, 5, 5});
    m_display->Present(99, Surface(5, 5), Region(CRect{0, 0, 5, 5}));
    m_display->Sync();
    EXPECT_TRUE(m_display->IsAlive());
}

class StackingTest : public X11DisplayTest {};
class ManagedStackingTest : public ManagedX11DisplayTest {};

TEST_F(StackingTest, WindowsAreStackedAsToldAndGoneWhenHiddenOrDestroyed) {
    const std::uint32_t empty = m_hand.PixelAt(kInMenu);
    ShowMenu();
    Show(kOther, kMenuRect, 0xff00ff00);
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x00ff00)) << "the newer one is above";
    m_display->Restack(kMenu, StackPlace::Top, 0);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x204060));
    m_display->Restack(kMenu, StackPlace::Below, kOther);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x00ff00));
    m_display->Restack(kOther, StackPlace::Bottom, 0);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x204060));
    m_display->SetVisible(kMenu, false);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x00ff00));
    m_display->SetVisible(kMenu, true);
    m_display->DestroyTopLevel(kOther);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, 0x204060)) << "shown again with the pixels that it had";
    m_display->DestroyTopLevel(kMenu);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kInMenu, empty));
}

class InterferenceTest : public X11DisplayTest, public testing::WithParamInterface<bool> {
protected:
    // Another program unmaps or destroys a window of ours.
    void TakeAway(TopLevelId id) {
        (GetParam() ? xcb_destroy_window : xcb_unmap_window)(m_hand.Connection(), WindowOf(id));
        m_hand.Sync();
    }
};

INSTANTIATE_TEST_SUITE_P(OtherProgram, InterferenceTest, testing::Bool(),
                         [](const auto& destroys) { return destroys.param ? "Destroys" : "Unmaps"; });

TEST_P(InterferenceTest, WindowTakenAwayByAnotherProgramIsToldHiddenAndComesBackGood) {
    Show(kFrame, {500, 500, 700, 600}, 0xff336699, kFrameTraits);
    m_display->CreateTopLevel(kMenu, {.title = TitleOf(kMenu), .owner = kFrame}, kMenuRect);
    Present(kMenu, kMenuRect.Size(), 0xff204060);
    m_display->SetVisible(kMenu, true);
    m_display->TakeFocus(kMenu);
    ASSERT_TRUE(WaitFor(DisplayEventKind::FocusIn));
    m_hand.Move(kInMenu);
    ASSERT_TRUE(WaitFor(DisplayEventKind::PointerMove));
    for (const TopLevelId id : {kFrame, kMenu}) {
        TakeAway(id);
        ExpectOf(id, DisplayEventKind::Hidden);
        EXPECT_FALSE(HasCome(DisplayEventKind::Hidden));
        m_display->SetVisible(id, true);
        m_display->Sync();
    }
    ASSERT_TRUE(m_hand.WaitForPixel(kInMenu, 0x204060));
    ASSERT_TRUE(m_hand.WaitForPixel({600, 550}, 0x336699));
    EXPECT_EQ(m_hand.RectOf(WindowOf(kMenu)), kMenuRect);
    const xcb_window_t frame = WindowOf(kFrame);
    EXPECT_EQ(m_hand.PropertyOf(WindowOf(kMenu), "WM_TRANSIENT_FOR"),
              std::string(reinterpret_cast<const char*>(&frame), sizeof frame));
    m_hand.Click();
    ExpectOf(kMenu, DisplayEventKind::ButtonPress);
    m_display->SetVisible(kMenu, false);
    m_display->SetVisible(kMenu, true);
    EXPECT_FALSE(HasCome(DisplayEventKind::Hidden)) << "what the owner of a window does is no news";
}

TEST_F(ManagedStackingTest, PopupGoesBesideADecoratedFrameAndUnderWhatIsAboveIt) {
    constexpr CPoint kAll{500, 350};
    Show(kFrame, {400, 300, 600, 400}, 0xff336699, kFrameTraits);
    XForeignWindow other(m_server.Name(), {450, 320, 700, 500}, 0x808080);
    ASSERT_TRUE(m_hand.WaitForPixel(kAll, 0x808080));
    Show(kMenu, {420, 280, 620, 480});
    ASSERT_TRUE(m_hand.WaitForPixel(kAll, 0x204060));
    m_display->Restack(kMenu, StackPlace::Above, kFrame);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel(kAll, 0x808080));
    EXPECT_EQ(m_hand.PixelAt({430, 350}), 0x204060U) << "above the frame";
    EXPECT_EQ(m_hand.PixelAt({430, 285}), 0x204060U) << "and above its decoration";
    m_display->Restack(kMenu, StackPlace::Below, kFrame);
    m_display->Sync();
    EXPECT_TRUE(m_hand.WaitForPixel({430, 350}, 0x336699));
    EXPECT_NE(m_hand.PixelAt({430, 290}), 0x204060U) << "under the decoration too";
}

TEST_F(StackingTest, ManagersAndToolsFindWhatTheyLookFor) {
    Show(kFrame, {400, 300, 600, 400}, 0xff000000, kFrameTraits);
    m_display->CreateTopLevel(kMenu, {.title = "veldan menu", .owner = kFrame}, kMenuRect);
    m_display->SetVisible(kMenu, true);
    m_display->Sync();
    const xcb_window_t menu = m_hand.FindWindow("veldan menu");
    EXPECT_EQ(m_hand.PropertyOf(menu, "WM_CLASS"), std::string("veldan\0veldan\0", 14));
    EXPECT_EQ(m_hand.PropertyOf(menu, "_NET_WM_NAME"), "veldan menu");
    const xcb_window_t frame = WindowOf(kFrame);
    EXPECT_EQ(m_hand.PropertyOf(menu, "WM_TRANSIENT_FOR"),
              std::string(reinterpret_cast<const char*>(&frame), sizeof frame));
    m_display->SetTitle(kMenu, "größer");
    m_display->Sync();
    EXPECT_EQ(m_hand.PropertyOf(menu, "_NET_WM_NAME"), "größer");
    const std::string program(program_invocation_short_name);
    EXPECT_EQ(m_hand.PropertyOf(frame, "WM_CLASS"), program + '\0' + program + '\0') << "it stands for the host";
    const pid_t process = getpid();
    std::array<char, 256> machine{};
    gethostname(machine.data(), machine.size());
    for (const xcb_window_t window : {menu, frame}) {
        EXPECT_EQ(m_hand.PropertyOf(window, "_NET_WM_PID"),
                  std::string(reinterpret_cast<const char*>(&process), sizeof process));
        EXPECT_EQ(m_hand.PropertyOf(window, "WM_CLIENT_MACHINE"), machine.data());
    }
    std::uint32_t side = 0;
    const std::string icon = m_hand.PropertyOf(frame, "_NET_WM_ICON");
    ASSERT_GE(icon.size(), sizeof side);
    std::memcpy(&side, icon.data(), sizeof side);
    EXPECT_EQ(side, 16U);
    EXPECT_TRUE(m_hand.IsAnswered(frame, [this] { EXPECT_FALSE(HasCome(DisplayEventKind::CloseRequest)); }));
}

using FrameTest = ManagedX11DisplayTest;

TEST_F(FrameTest, HearsOfMovesAndOfTheWishToCloseItAndComesBackWhenHidden) {
    Show(kFrame, {400, 300, 600, 400}, 0xff336699, kFrameTraits);
    ASSERT_TRUE(m_hand.WaitForPixel({500, 350}, 0x336699));
    EXPECT_EQ(m_hand.RectOf(WindowOf(kFrame)), (CRect{400, 300, 600, 400}));
    m_hand.AskToMove(WindowOf(kFrame), {120, 90});
    const auto moved = WaitFor(DisplayEventKind::Moved);
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->window, kFrame);
    EXPECT_EQ(moved->rect, m_hand.RectOf(WindowOf(kFrame)));
    m_display->SetRect(kFrame, {200, 200, 500, 450});
    m_display->Flush();
    ASSERT_TRUE(WaitUntil([&] { return m_hand.RectOf(WindowOf(kFrame)) == CRect{200, 200, 500, 450}; }));
    EXPECT_FALSE(HasCome(DisplayEventKind::Moved)) << "a place that it was told to take is no news";
    m_hand.AskToClose(WindowOf(kFrame));
    ExpectOf(kFrame, DisplayEventKind::CloseRequest);
    EXPECT_NE(WindowOf(kFrame), 0U) << "whether it closes is decided elsewhere";
    m_display->SetVisible(kFrame, false);
    m_display->Sync();
    ASSERT_TRUE(WaitUntil([&] { return WindowOf(kFrame) == 0; }));
    m_display->SetVisible(kFrame, true);
    m_display->Sync();
    EXPECT_TRUE(WaitUntil([&] { return WindowOf(kFrame) != 0; }));
}

TEST_F(FrameTest, IsMadeNoSmallerThanItsHostWants) {
    constexpr CSize kSmallest{260, 200};
    const TopLevelTraits traits{.managed = true, .title = TitleOf(kFrame), .smallest = kSmallest};
    m_display->CreateTopLevel(kFrame, traits, {400, 300, 800, 600});
    m_display->SetVisible(kFrame, true);
    m_display->SetRect(kFrame, {300, 200, 700, 500});
    m_display->Sync();
    ASSERT_TRUE(WaitUntil([&] { return WindowOf(kFrame) != 0; }));
    m_hand.AskToResize(WindowOf(kFrame), {50, 50});
    EXPECT_TRUE(WaitUntil([&] { return m_hand.RectOf(WindowOf(kFrame)).Size() == kSmallest; }));
}

struct Absence {
    const char* name;
    void (*begin)(XHand&, xcb_window_t);
    void (*end)(XHand&, xcb_window_t);
};

class AbsenceTest : public ManagedX11DisplayTest, public testing::WithParamInterface<Absence> {};

INSTANTIATE_TEST_SUITE_P(
    OfFrame, AbsenceTest,
    testing::Values(Absence{"AsIcon", [](XHand& hand, xcb_window_t frame) { hand.AskToIconify(frame); },
                            [](XHand& hand, xcb_window_t frame) { hand.AskToActivate(frame); }},
                    Absence{"OnAnotherDesktop", [](XHand& hand, xcb_window_t) { hand.AskForDesktop(1); },
                            [](XHand& hand, xcb_window_t) { hand.AskForDesktop(0); }}),
    [](const auto& absence) { return absence.param.name; });

TEST_P(AbsenceTest, PopupsGoWithTheirFrameAndComeBackInTheirOrder) {
    constexpr TopLevelId kUpper = 8;
    constexpr TopLevelId kLate = 9;
    Show(kFrame, {400, 300, 600, 400}, 0xff336699, kFrameTraits);
    ASSERT_TRUE(m_hand.WaitForPixel({500, 350}, 0x336699));
    const xcb_window_t frame = WindowOf(kFrame);
    Show(kMenu, {420, 310, 520, 390}, 0xff204060, {.owner = kFrame});
    Show(kUpper, {500, 310, 580, 390}, 0xff00ff00, {.owner = kMenu});
    Show(kOther, {100, 100, 200, 200}, 0xffff0000);
    m_hand.Move({510, 320});
    ASSERT_TRUE(WaitFor(DisplayEventKind::PointerMove));
    GetParam().begin(m_hand, frame);
    EXPECT_TRUE(WaitFor(DisplayEventKind::PointerLeave));
    m_display->CreateTopLevel(kLate, {.title = TitleOf(kLate), .owner = kFrame}, {420, 310, 430, 320});
    m_display->SetVisible(kLate, true);
    EXPECT_FALSE(HasCome(DisplayEventKind::Hidden));
    ASSERT_TRUE(WaitUntil([&] { return WindowOf(kMenu) == 0 && WindowOf(kUpper) == 0; }));
    EXPECT_EQ(WindowOf(kLate), 0U);
    EXPECT_NE(WindowOf(kOther), 0U) << "nobody's window stays";
    GetParam().end(m_hand, frame);
    ASSERT_TRUE(WaitFor(DisplayEventKind::PointerMove)) << "under the resting pointer again";
    ASSERT_TRUE(m_hand.WaitForPixel({510, 350}, 0x00ff00));
    EXPECT_EQ(m_hand.PixelAt({440, 350}), 0x204060U);
    EXPECT_NE(WindowOf(kLate), 0U);
    m_display->SetVisible(kFrame, false);
    EXPECT_FALSE(HasCome(DisplayEventKind::PointerLeave));
    EXPECT_EQ(m_hand.PixelAt({440, 350}), 0x204060U) << "what the host hides itself takes nothing along";
}

class ScreenTest : public X11DisplayTest {};

TEST_F(ScreenTest, SizeOfTheScreenFollowsTheServer) {
    EXPECT_EQ(m_display->ScreenRect(), (CRect{0, 0, 1024, 768}));
    ASSERT_TRUE(m_server.Run({"xrandr", "--output", "screen", "--off", "--fb", "800x600"}));
    DisplayEvent event;
    EXPECT_TRUE(WaitUntil([&] {
        while (m_display->NextEvent(event)) {
        }
        return m_display->ScreenRect() == CRect{0, 0, 800, 600};
    }));
}

}  // namespace

}  // namespace veldan
