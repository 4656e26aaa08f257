#include "X11DisplayTest.h"

#include "platform/display/x11/X11DisplayImpl.h"

namespace veldan {

namespace {

class FocusFixture : public X11DisplayTest {
protected:
    explicit FocusFixture(bool isManaged) : X11DisplayTest({.withManager = isManaged}), m_isManaged(isManaged) {}

    void SetUp() override {
        X11DisplayTest::SetUp();
        m_other.emplace(m_server.Name(), CRect{600, 400, 800, 600}, 0x808080, XForeignWindow::Kind::Managed);
        ASSERT_TRUE(m_hand.WaitForPixel({700, 500}, 0x808080));
        AwaitFocusOf(*m_other);
    }

    // A manager gives the focus to a new window by itself, in its own time.
    void AwaitFocusOf(XForeignWindow& window) {
        if (!m_isManaged) window.TakeFocus();
        ASSERT_TRUE(WaitUntil([&] { return m_hand.Focus() == window.Id(); }));
    }

    void ExpectOtherToHaveIt() {
        m_display->Flush();
        EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == m_other->Id(); }));
    }

    // The next news is that an own window has it.
    void ExpectNextToBeFocusOf(TopLevelId window) {
        DisplayEvent event;
        ASSERT_TRUE(m_display->NextEvent(event));
        EXPECT_EQ(event.kind, DisplayEventKind::FocusIn);
        EXPECT_EQ(event.window, window);
    }

    std::unique_ptr<Display> MakeDisplay() override {
        auto clock = std::make_unique<ManualClock>();
        m_clock = clock.get();
        return std::make_unique<X11Display>(X11Connection::Open(m_server.Name().c_str()), std::move(clock), true);
    }

    bool m_isManaged;
    ManualClock* m_clock = nullptr;
    std::optional<XForeignWindow> m_other;
};

class FocusTest : public FocusFixture, public testing::WithParamInterface<bool> {
protected:
    FocusTest() : FocusFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(OnServer, FocusTest, testing::Bool(), ManagedOrBare);

TEST_P(FocusTest, IsTakenAndGivenBackAlsoAfterItsWindowWasHidden) {
    ShowFocusedMenu();
    EXPECT_EQ(m_hand.Focus(), WindowOf(kMenu));
    m_display->SetVisible(kMenu, false);
    m_display->GiveBackFocus();
    ExpectOtherToHaveIt();
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
}

TEST_P(FocusTest, LossToAForeignWindowIsToldAndLeftAlone) {
    XForeignWindow third(m_server.Name(), {50, 500, 150, 600}, 0x101010, XForeignWindow::Kind::Managed);
    AwaitFocusOf(third);
    m_other->TakeFocus();
    ShowFocusedMenu();
    m_hand.ClickAt({100, 550});
    ASSERT_TRUE(WaitFor(DisplayEventKind::OutsidePress));
    third.TakeFocus();
    ASSERT_TRUE(WaitFor(DisplayEventKind::FocusOut));
    EXPECT_TRUE(WaitFor(DisplayEventKind::ForeignActive));
    m_display->GiveBackFocus();
    m_display->Sync();
    EXPECT_EQ(m_hand.Focus(), third.Id());
}

TEST_P(FocusTest, StrayLossRightAfterShowingIsUndoneOnceAndALaterOneIsTold) {
    ShowFocusedMenu();
    m_clock->Advance(299);
    m_other->TakeFocus();
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusOut));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kMenu); }));
    m_other->TakeFocus();
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
    EXPECT_EQ(m_hand.Focus(), m_other->Id());
    m_display->TakeFocus(kMenu);
    ASSERT_TRUE(WaitFor(DisplayEventKind::FocusIn));
    m_clock->Advance(300);
    m_other->TakeFocus();
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
}

TEST_P(FocusTest, NewsFromBeforeItWasTakenIsOutOfDate) {
    Show(8, {300, 120, 500, 280});
    ShowMenu();
    m_display->TakeFocus(8);
    m_display->Sync();
    m_display->TakeFocus(kMenu);
    m_display->TakeFocus(kMenu);
    ExpectOf(kMenu, DisplayEventKind::FocusIn);
}

TEST_P(FocusTest, MovesBetweenOwnWindowsAndAGrabOfTheKeyboardAreNoLoss) {
    ShowFocusedMenu();
    m_other->GrabKeyboard();
    EXPECT_FALSE(HasCome(DisplayEventKind::ForeignActive));
    Show(8, {300, 120, 500, 280});
    m_display->TakeFocus(8);
    m_display->Sync();
    ExpectNextToBeFocusOf(8);
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusOut));
    m_display->GiveBackFocus();
    ExpectOtherToHaveIt();
}

TEST_P(FocusTest, HandingItOnFromAHiddenWindowIsNoLoss) {
    Show(8, {300, 120, 500, 280});
    ShowFocusedMenu();
    m_display->SetVisible(kMenu, false);
    m_display->TakeFocus(8);
    ExpectNextToBeFocusOf(8);
}

TEST_P(FocusTest, FrameTakesItAsSoonAsItMay) {
    m_display->CreateTopLevel(kFrame, {.managed = true, .title = "host"}, {300, 200, 500, 350});
    m_display->SetVisible(kFrame, true);
    m_display->TakeFocus(kFrame);
    ExpectOf(kFrame, DisplayEventKind::FocusIn);
}

class BareFocusTest : public FocusFixture {
protected:
    BareFocusTest() : FocusFixture(false) {}
};

TEST_F(BareFocusTest, StrayLossToAnOwnFrameIsUndoneOnceToo) {
    Show(kFrame, {300, 300, 500, 450}, 0xff336699, kFrameTraits);
    ASSERT_TRUE(m_hand.WaitForPixel({400, 400}, 0x336699));
    m_display->TakeFocus(kFrame);
    ASSERT_TRUE(WaitFor(DisplayEventKind::FocusIn));
    ShowFocusedMenu();
    m_hand.GiveFocus(WindowOf(kFrame));
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusIn));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kMenu); }));
    m_hand.GiveFocus(WindowOf(kFrame));
    ExpectOf(kFrame, DisplayEventKind::FocusIn);
}

class ManagedFocusTest : public FocusFixture {
protected:
    ManagedFocusTest() : FocusFixture(true) {}
};

TEST_F(ManagedFocusTest, ManagersKeyToSwitchWindowsTakesIt) {
    Show(kFrame, {300, 100, 500, 250}, 0xff336699, kFrameTraits);
    ASSERT_TRUE(m_hand.WaitForPixel({400, 200}, 0x336699));
    m_hand.ClickAt({400, 200});
    ASSERT_TRUE(WaitFor(DisplayEventKind::ButtonRelease));
    m_display->TakeFocus(kFrame);
    m_display->Sync();
    ASSERT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kFrame); }));
    m_clock->Advance(300);
    ASSERT_TRUE(m_hand.SwitchWindow());
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
    EXPECT_TRUE(WaitFor(DisplayEventKind::ForeignActive));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == m_other->Id(); }));
    EXPECT_FALSE(HasCome(DisplayEventKind::ForeignActive)) << "once";
}

}  // namespace

}  // namespace veldan
