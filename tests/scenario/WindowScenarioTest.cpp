#include "support/Probe.h"
#include "support/Stage.h"

#include "platform/window/Desktop.h"

#include <gtest/gtest.h>

namespace veldan {

/// What a person does with windows of the layer; on every display with the same outcome.
class WindowScenario : public testing::TestWithParam<StageKind> {
protected:
    void SetUp() override {
        m_stage = Stage::Make(GetParam());
        ASSERT_TRUE(m_stage);
        m_window = std::make_unique<ProbeWnd>();
        m_button = std::make_unique<ProbeButton>();
        MakePopup(*m_window, {100, 100, 400, 300});
        m_button->Create("", WS_VISIBLE | BS_OWNERDRAW, {10, 10, 110, 60}, m_window.get(), 7);
        m_button->colour = RGB(0, 200, 0);
        m_stage->Wait(20);
    }
    void TearDown() override {
        m_button.reset();
        m_window.reset();
        m_stage.reset();
    }

    std::unique_ptr<Stage> m_stage;
    std::unique_ptr<ProbeWnd> m_window;
    std::unique_ptr<ProbeButton> m_button;
};

INSTANTIATE_TEST_SUITE_P(Displays, WindowScenario,
                         testing::Values(StageKind::Memory, StageKind::X11, StageKind::X11WithManager),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(WindowScenario, AClickIsHeardAndAWheelBubbles) {
    m_stage->Click({150, 130});
    EXPECT_EQ(m_window->CountOf(WM_COMMAND), 1);
    m_stage->Wheel(-2);
    EXPECT_EQ(m_window->CountOf(WM_MOUSEWHEEL), 2);
    m_stage->Move({150, 130});
    m_stage->Press();
    m_stage->Wait(20);
    EXPECT_EQ(m_stage->Seen({150, 130}), 0x0000faU);
    m_stage->Move({500, 500});
    m_stage->Release();
    EXPECT_FALSE(Desktop::Get().Capture());
    EXPECT_EQ(m_window->CountOf(WM_COMMAND), 1) << "released outside";
}

TEST_P(WindowScenario, AWindowThatGoesFromUnderThePointerIsLeft) {
    m_stage->Move({150, 130});
    m_button->TrackMouseEvent(TME_LEAVE, 0);
    m_window->ShowWindow(SW_HIDE);
    m_stage->Wait(20);
    EXPECT_EQ(m_button->CountOf(WM_MOUSELEAVE), 1);
    m_button->log.clear();
    m_window->ShowWindow(SW_SHOW);
    EXPECT_TRUE(m_stage->Eventually([this] { return m_button->CountOf(WM_MOUSEMOVE) > 0; }));
}

TEST_P(WindowScenario, APressElsewhereTakesTheFocus) {
    m_button->SetFocus();
    m_stage->TypeSpace();
    EXPECT_TRUE(m_stage->Eventually([this] { return m_window->CountOf(WM_COMMAND) == 1; }));
    m_stage->Click({900, 700});
    EXPECT_EQ(m_button->CountOf(WM_KILLFOCUS), 1) << "on the bare screen";
    m_stage->Click({350, 250});
    EXPECT_EQ(Desktop::Get().Active(), m_window->GetSafeHwnd());
    m_button->SetFocus();
    m_stage->OpenForeignWindow({600, 400, 800, 600});
    m_stage->Click({700, 500});
    EXPECT_EQ(m_button->CountOf(WM_KILLFOCUS), 2) << "on another program's window";
}

TEST_P(WindowScenario, APaintWaitsForNoAnswer) {
    const auto before = Desktop::Get().GetDisplay().RoundTrips();
    m_window->Invalidate();
    Desktop::Get().Dispatch();
    EXPECT_EQ(Desktop::Get().GetDisplay().RoundTrips(), before);
}

}  // namespace veldan
