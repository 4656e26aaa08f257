#include "X11DisplayTest.h"

#include "platform/core/Keys.h"
#include "platform/display/x11/X11DisplayImpl.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <vector>

namespace veldan {

namespace {

class PointerTest : public X11DisplayTest {};

TEST_F(PointerTest, OnlyTheNewestOfSeveralMovesIsTold) {
    ShowMenu();
    ASSERT_FALSE(HasCome(DisplayEventKind::PointerMove));
    for (int x = 101; x < 200; ++x) m_hand.Move({x, 150});
    m_display->Sync();
    DisplayEvent event;
    ASSERT_TRUE(m_display->NextEvent(event));
    EXPECT_EQ(event.kind, DisplayEventKind::PointerMove);
    EXPECT_EQ(event.window, kMenu);
    EXPECT_EQ(event.screen, (CPoint{199, 150}));
    EXPECT_FALSE(m_display->NextEvent(event));
    m_hand.Move({321, 654});
    EXPECT_EQ(m_display->QueryPointer(), (CPoint{321, 654})) << "outside of own windows too";
}

TEST_F(PointerTest, LeavingIsToldOnceAndNotBetweenOwnWindows) {
    ShowMenu();
    Show(8, {300, 120, 500, 280});
    m_hand.Move(kInMenu);
    ASSERT_TRUE(WaitFor(DisplayEventKind::PointerMove));
    m_hand.Move({400, 200});
    ExpectOf(8, DisplayEventKind::PointerMove);
    m_hand.Move({700, 200});
    const auto leave = WaitFor(DisplayEventKind::PointerLeave);
    ASSERT_TRUE(leave);
    EXPECT_EQ(leave->screen, (CPoint{700, 200}));
    m_hand.Move({701, 200});
    EXPECT_FALSE(HasCome(DisplayEventKind::PointerLeave));
}

TEST_F(PointerTest, PressesAndReleasesBringButtonPlaceAndFlagsAlsoThroughAToolTip) {
    ShowMenu();
    Show(8, {140, 150, 200, 170}, 0xffffffe0, {.takesFocus = false, .letsInputThrough = true});
    m_hand.Move(kInMenu);
    m_hand.KeyDown(XKB_KEY_Control_L);
    m_hand.Press(1);
    m_hand.Press(3);
    m_hand.Release(1);
    const auto left = WaitFor(DisplayEventKind::ButtonPress);
    const auto right = WaitFor(DisplayEventKind::ButtonPress);
    const auto release = WaitFor(DisplayEventKind::ButtonRelease);
    ASSERT_TRUE(left && right && release);
    EXPECT_EQ(left->window, kMenu);
    EXPECT_EQ(left->screen, kInMenu);
    EXPECT_EQ(left->button, 1);
    EXPECT_EQ(left->flags, MK_LBUTTON | MK_CONTROL);
    EXPECT_EQ(right->button, 3);
    EXPECT_EQ(right->flags, MK_LBUTTON | MK_RBUTTON | MK_CONTROL);
    EXPECT_EQ(release->button, 1);
    EXPECT_EQ(release->flags, MK_RBUTTON | MK_CONTROL);
}

TEST_F(PointerTest, HeldButtonKeepsThePointerUntilTheGrabIsGivenUp) {
    ShowMenu();
    m_hand.Move(kInMenu);
    m_hand.Press();
    ASSERT_TRUE(WaitFor(DisplayEventKind::ButtonPress));
    m_hand.Move({600, 600});
    const auto dragged = WaitFor(DisplayEventKind::PointerMove);
    ASSERT_TRUE(dragged);
    EXPECT_EQ(dragged->window, kMenu);
    EXPECT_EQ(dragged->screen, (CPoint{600, 600}));
    m_display->ReleaseGrab();
    m_display->Sync();
    m_hand.Release();
    EXPECT_FALSE(HasCome(DisplayEventKind::ButtonRelease));
}

TEST_F(PointerTest, SideButtonHeldBeyondAClickIsAGrabToGiveUp) {
    ShowMenu();
    m_hand.Move(kInMenu);
    m_hand.Press(8);
    m_hand.Press();
    m_hand.Release();
    ASSERT_TRUE(WaitFor(DisplayEventKind::ButtonRelease));
    m_display->ReleaseGrab();
    m_display->Sync();
    m_hand.Move({600, 600});
    EXPECT_FALSE(HasCome(DisplayEventKind::PointerMove));
}

class KeysTest : public X11DisplayTest {
protected:
    // What one key gives while the menu has the focus.
    DisplayEvent Typed(std::uint32_t symbol) {
        m_hand.Key(symbol);
        while (const auto event = WaitFor(DisplayEventKind::KeyPress)) {
            if (event->key != VK_SHIFT) return *event;
        }
        ADD_FAILURE() << "no key came";
        return {};
    }
};

TEST_F(KeysTest, KeysBringTheirCodeAndTheirText) {
    ShowFocusedMenu();
    const std::tuple<std::uint32_t, UINT, const char*> cases[] = {{XKB_KEY_a, 'A', "a"},
                                                                  {XKB_KEY_A, 'A', "A"},
                                                                  {XKB_KEY_7, '7', "7"},
                                                                  {XKB_KEY_space, VK_SPACE, " "},
                                                                  {XKB_KEY_Tab, VK_TAB, "\t"},
                                                                  {XKB_KEY_Return, VK_RETURN, "\r"},
                                                                  {XKB_KEY_Escape, VK_ESCAPE, "\x1b"},
                                                                  {XKB_KEY_Up, VK_UP, ""},
                                                                  {XKB_KEY_Home, VK_HOME, ""},
                                                                  {XKB_KEY_Delete, VK_DELETE, ""},
                                                                  {XKB_KEY_BackSpace, VK_BACK, "\b"},
                                                                  {XKB_KEY_F1, VK_F1, ""}};
    for (const auto& [symbol, key, text] : cases) {
        const DisplayEvent event = Typed(symbol);
        EXPECT_EQ(event.window, kMenu);
        EXPECT_EQ(event.key, key) << symbol;
        EXPECT_EQ(event.text, text) << symbol;
    }
}

TEST_F(KeysTest, AnotherMapIsTakenOverAndDeadKeysCompose) {
    setenv("LC_ALL", "en_US.UTF-8", 1);
    ShowFocusedMenu();
    EXPECT_EQ(Typed(XKB_KEY_a).text, "a");
    ASSERT_TRUE(m_server.Run({"setxkbmap", "de"}));
    EXPECT_EQ(Typed(XKB_KEY_odiaeresis).text, "ö");
    EXPECT_EQ(Typed(XKB_KEY_dead_acute).text, "");
    EXPECT_EQ(Typed(XKB_KEY_e).text, "é");
    EXPECT_EQ(Typed(XKB_KEY_e).text, "e");
    m_hand.KeyDown(XKB_KEY_Control_L);
    ASSERT_TRUE(WaitFor(DisplayEventKind::KeyPress));
    const DisplayEvent event = Typed(XKB_KEY_c);
    EXPECT_EQ(event.key, UINT{'C'});
    EXPECT_EQ(event.text, "\x3") << "Control makes a control character of a letter";
    EXPECT_EQ(event.flags, UINT{MK_CONTROL});
    EXPECT_EQ(Typed(XKB_KEY_period).text, "") << "and nothing of what it can't change";
}

TEST_F(KeysTest, HeldKeyRepeatsUntilItsReleaseAndModifiersCountFromTheirPressOn) {
    ShowFocusedMenu();
    m_hand.KeyDown(XKB_KEY_Alt_L);
    EXPECT_EQ(WaitFor(DisplayEventKind::KeyPress)->flags, UINT{MK_ALT});
    const DisplayEvent command = Typed(XKB_KEY_a);
    EXPECT_EQ(command.text, "") << "with Alt a key is a command";
    EXPECT_FALSE(command.repeat);
    m_hand.KeyUp(XKB_KEY_Alt_L);
    EXPECT_EQ(WaitFor(DisplayEventKind::KeyRelease)->key, UINT{'A'});
    EXPECT_EQ(WaitFor(DisplayEventKind::KeyRelease)->flags, 0U);
    m_hand.KeyDown(XKB_KEY_a);
    EXPECT_FALSE(WaitFor(DisplayEventKind::KeyPress)->repeat);
    EXPECT_TRUE(WaitFor(DisplayEventKind::KeyPress)->repeat) << "the server repeats it";
    m_hand.KeyUp(XKB_KEY_a);
}

struct Watch {
    const char* name;
    bool isManaged;
    bool useRawPresses;
};

void PrintTo(const Watch& watch, std::ostream* out) {
    *out << watch.name;
}

class OutsidePressTest : public X11DisplayTest, public testing::WithParamInterface<Watch> {
protected:
    OutsidePressTest() : X11DisplayTest({.withManager = GetParam().isManaged}) {}

    std::unique_ptr<Display> MakeDisplay() override {
        return std::make_unique<X11Display>(X11Connection::Open(m_server.Name().c_str()),
                                            std::make_unique<SteadyClock>(), GetParam().useRawPresses);
    }
};

INSTANTIATE_TEST_SUITE_P(Watched, OutsidePressTest,
                         testing::Values(Watch{"ByRawPresses", false, true}, Watch{"ByRawPressesManaged", true, true},
                                         Watch{"ByGrab", false, false}, Watch{"ByGrabManaged", true, false}),
                         [](const auto& watch) { return watch.param.name; });

TEST_P(OutsidePressTest, IsToldWhileAWindowIsShownAndReachesItsTarget) {
    XForeignWindow other(m_server.Name(), {600, 400, 800, 600}, 0x808080);
    ShowMenu();
    m_hand.ClickAt({700, 500});
    const auto press = WaitFor(DisplayEventKind::OutsidePress);
    ASSERT_TRUE(press);
    EXPECT_EQ(press->screen, (CPoint{700, 500}));
    EXPECT_TRUE(WaitUntil([&] { return other.Presses() == 1; }));
    m_hand.ClickAt(kFarAway, 3);
    EXPECT_TRUE(WaitFor(DisplayEventKind::OutsidePress)) << "the root counts, and so does every button";
    m_display->SetVisible(kMenu, false);
    m_display->Sync();
    m_hand.ClickAt(kFarAway);
    EXPECT_FALSE(HasCome(DisplayEventKind::OutsidePress));
}

TEST_P(OutsidePressTest, PressesInOwnWindowsAndWheelStepsAreNone) {
    ShowMenu();
    Show(kFrame, {400, 300, 600, 400}, 0xff336699, kFrameTraits);
    ASSERT_TRUE(m_hand.WaitForPixel({500, 350}, 0x336699));
    m_hand.ClickAt(kInMenu);
    m_hand.ClickAt({500, 350});
    m_hand.Move(kFarAway);
    m_hand.Wheel(3);
    m_hand.ClickAt(kInMenu, 2);
    DisplayEvent event;
    bool hasEnded = false;
    while (!hasEnded && WaitUntil([&] { return m_display->NextEvent(event); })) {
        EXPECT_NE(event.kind, DisplayEventKind::OutsidePress);
        hasEnded = event.kind == DisplayEventKind::ButtonRelease && event.button == 2;
    }
    EXPECT_TRUE(hasEnded);
}

TEST_P(OutsidePressTest, PressesTellWhichMarksTheyCameAfter) {
    ShowMenu();
    const std::pair<CPoint, DisplayEventKind> presses[] = {{kFarAway, DisplayEventKind::OutsidePress},
                                                           {kInMenu, DisplayEventKind::ButtonPress}};
    for (const auto& [place, kind] : presses) {
        m_hand.ClickAt(place);
        m_hand.Sync();
        const std::uint64_t mark = m_display->Mark();
        const auto early = WaitFor(kind);
        ASSERT_TRUE(early);
        // A press that a grab held back from an own window is made anew when it is let through.
        EXPECT_TRUE(early->mark < mark || (!GetParam().useRawPresses && kind == DisplayEventKind::ButtonPress));
        m_display->Sync();
        m_hand.ClickAt(place);
        const auto late = WaitFor(kind);
        ASSERT_TRUE(late);
        EXPECT_EQ(late->mark, mark);
    }
}

TEST_P(OutsidePressTest, IsToldAlsoWhenThePointerHasComeInMeanwhile) {
    ShowMenu();
    m_hand.ClickAt(kFarAway);
    m_hand.ClickAt(kInMenu);
    DisplayEvent event;
    std::vector<DisplayEventKind> presses;
    while (presses.size() < 2 && WaitUntil([&] { return m_display->NextEvent(event); })) {
        const bool isPress =
            event.kind == DisplayEventKind::OutsidePress || event.kind == DisplayEventKind::ButtonPress;
        if (isPress) presses.push_back(event.kind);
    }
    EXPECT_EQ(presses, (std::vector{DisplayEventKind::OutsidePress, DisplayEventKind::ButtonPress}));
}

}  // namespace

}  // namespace veldan
