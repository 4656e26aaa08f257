#include "X11DisplayTest.h"

#include "platform/display/x11/X11DisplayImpl.h"

#include <xkbcommon/xkbcommon-keysyms.h>

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

TEST_P(FocusTest, IsTakenAndGivenBack) {
    ShowFocusedMenu();
    EXPECT_EQ(m_hand.Focus(), WindowOf(kMenu));
    m_display->GiveBackFocus();
    m_display->Flush();
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == m_other->Id(); }));
}

TEST_P(FocusTest, IsGivenBackAlsoAfterItsWindowWasHidden) {
    ShowFocusedMenu();
    m_display->SetVisible(kMenu, false);
    m_display->GiveBackFocus();
    m_display->Flush();
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == m_other->Id(); }));
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
    m_display->GiveBackFocus();
    m_display->Sync();
    EXPECT_EQ(m_hand.Focus(), third.Id());
}

TEST_P(FocusTest, StrayLossRightAfterShowingIsUndoneOnce) {
    ShowFocusedMenu();
    m_clock->Advance(299);
    m_other->TakeFocus();
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusOut));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kMenu); }));
    m_other->TakeFocus();
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
    EXPECT_EQ(m_hand.Focus(), m_other->Id());
}

TEST_P(FocusTest, NewsFromBeforeItWasTakenIsOutOfDate) {
    Show(8, {300, 120, 500, 280});
    ShowMenu();
    m_display->TakeFocus(8);
    m_display->Sync();
    m_display->TakeFocus(kMenu);
    m_display->TakeFocus(kMenu);
    const auto focus = WaitFor(DisplayEventKind::FocusIn);
    ASSERT_TRUE(focus);
    EXPECT_EQ(focus->window, kMenu);
}

TEST_P(FocusTest, LaterLossIsTold) {
    ShowFocusedMenu();
    m_clock->Advance(300);
    m_other->TakeFocus();
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
}

TEST_P(FocusTest, MovesBetweenOwnWindowsAreNoLoss) {
    ShowFocusedMenu();
    Show(8, {300, 120, 500, 280});
    m_display->TakeFocus(8);
    m_display->Sync();
    DisplayEvent event;
    ASSERT_TRUE(m_display->NextEvent(event));
    EXPECT_EQ(event.kind, DisplayEventKind::FocusIn);
    EXPECT_EQ(event.window, 8U);
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusOut));
    m_display->GiveBackFocus();
    m_display->Flush();
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == m_other->Id(); })) << "not the first own window";
}

TEST_P(FocusTest, HandingItOnFromAHiddenWindowIsNoLoss) {
    Show(8, {300, 120, 500, 280});
    ShowFocusedMenu();
    m_display->SetVisible(kMenu, false);
    m_display->TakeFocus(8);
    DisplayEvent event;
    ASSERT_TRUE(m_display->NextEvent(event));
    EXPECT_EQ(event.kind, DisplayEventKind::FocusIn);
    EXPECT_EQ(event.window, 8U);
}

TEST_P(FocusTest, GrabOfTheKeyboardIsNoLoss) {
    ShowFocusedMenu();
    m_other->GrabKeyboard();
    m_other->UngrabKeyboard();
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusOut));
}

TEST_P(FocusTest, FrameTakesItAsSoonAsItMay) {
    m_display->CreateTopLevel(kFrame, {.kind = TopLevelKind::Frame, .title = "host"}, {300, 200, 500, 350});
    m_display->SetVisible(kFrame, true);
    m_display->TakeFocus(kFrame);
    m_display->Flush();
    const auto focus = WaitFor(DisplayEventKind::FocusIn);
    ASSERT_TRUE(focus);
    EXPECT_EQ(focus->window, kFrame);
}

class BareFocusTest : public FocusFixture {
protected:
    BareFocusTest() : FocusFixture(false) {}
};

TEST_F(BareFocusTest, StrayLossToAnOwnFrameIsUndoneOnceToo) {
    Show(kFrame, {300, 300, 500, 450}, 0xff336699, TopLevelKind::Frame);
    ASSERT_TRUE(m_hand.WaitForPixel({400, 400}, 0x336699));
    m_display->TakeFocus(kFrame);
    ASSERT_TRUE(WaitFor(DisplayEventKind::FocusIn));
    ShowFocusedMenu();
    m_hand.GiveFocus(WindowOf(kFrame));
    EXPECT_FALSE(HasCome(DisplayEventKind::FocusIn));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kMenu); }));
    m_hand.GiveFocus(WindowOf(kFrame));
    const auto focus = WaitFor(DisplayEventKind::FocusIn);
    ASSERT_TRUE(focus);
    EXPECT_EQ(focus->window, kFrame);
}

class ManagedFocusTest : public ManagedX11DisplayTest {};

TEST_F(ManagedFocusTest, ManagersKeyToSwitchWindowsTakesIt) {
    XForeignWindow first(m_server.Name(), {600, 400, 800, 600}, 0x808080, XForeignWindow::Kind::Managed);
    ASSERT_TRUE(m_hand.WaitForPixel({700, 500}, 0x808080));
    Show(kFrame, {300, 100, 500, 250}, 0xff336699, TopLevelKind::Frame);
    ASSERT_TRUE(m_hand.WaitForPixel({400, 200}, 0x336699));
    m_hand.ClickAt({400, 200});
    ASSERT_TRUE(WaitFor(DisplayEventKind::ButtonRelease));
    m_display->TakeFocus(kFrame);
    m_display->Sync();
    ASSERT_TRUE(WaitUntil([&] { return m_hand.Focus() == WindowOf(kFrame); }));
    ASSERT_TRUE(m_hand.SwitchWindow());
    EXPECT_TRUE(WaitFor(DisplayEventKind::FocusOut));
    EXPECT_TRUE(WaitUntil([&] { return m_hand.Focus() == first.Id(); }));
}

}  // namespace

}  // namespace veldan
