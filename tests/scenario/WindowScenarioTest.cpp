#include "support/Probe.h"
#include "support/Stage.h"

#include "platform/window/Desktop.h"

#include <gtest/gtest.h>

namespace veldan {

namespace {

constexpr COLORREF kGreen = RGB(0, 200, 0);
constexpr std::uint32_t kRedSeen = 0xc80000;
constexpr std::uint32_t kGreenSeen = 0x00c800;

}  // namespace

/// How the layer's own top-level windows get along; on every display with the same outcome.
class WindowScenario : public ::testing::TestWithParam<StageKind> {
protected:
    void SetUp() override {
        m_stage = Stage::Make(GetParam());
        ASSERT_TRUE(m_stage);
        m_frame.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {600, 60, 900, 360}, {}, 0);
        m_stage->LetFramesSettle();
        MakePopup(m_popup, {100, 100, 300, 300}, &m_frame);
        m_stage->Wait(50);
    }
    [[nodiscard]] bool BecomesActive(const CWnd& window) {
        return m_stage->Eventually([&] { return Desktop::Get().Active() == window.GetSafeHwnd(); });
    }
    [[nodiscard]] bool IsSeen(CPoint screen, std::uint32_t colour) {
        return m_stage->Eventually([=, this] { return m_stage->Seen(screen) == colour; });
    }

    std::unique_ptr<Stage> m_stage;
    ProbeWnd m_frame;
    ProbeWnd m_popup;
};

INSTANTIATE_TEST_SUITE_P(Displays, WindowScenario,
                         ::testing::Values(StageKind::Memory, StageKind::X11, StageKind::X11WithManager),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(WindowScenario, APressRaisesAWindowWithWhatItOwns) {
    ProbeWnd owned;
    ProbeWnd other;
    MakePopup(owned, {250, 250, 400, 400}, &m_popup);
    other.colour = kGreen;
    MakePopup(other, {200, 200, 350, 350});
    EXPECT_TRUE(IsSeen({220, 220}, kGreenSeen));
    m_stage->Click({150, 150});
    EXPECT_TRUE(BecomesActive(m_popup));
    EXPECT_TRUE(IsSeen({220, 220}, kRedSeen));
    EXPECT_TRUE(IsSeen({340, 340}, kRedSeen)) << "what it owns";
    EXPECT_TRUE(IsSeen({340, 220}, kGreenSeen));
    m_stage->Click({340, 220});
    EXPECT_TRUE(BecomesActive(other));
    EXPECT_TRUE(IsSeen({340, 340}, kGreenSeen));
}

TEST_P(WindowScenario, APressOnADisabledWindowIsForItsModalAndTheKeyboardComesBackFromIt) {
    ProbeWnd modal;
    Desktop& desktop = Desktop::Get();
    desktop.EnableWindow(m_popup.GetSafeHwnd(), false);
    desktop.EnableWindow(m_frame.GetSafeHwnd(), false);
    modal.colour = kGreen;
    MakePopup(modal, {250, 250, 400, 400}, &m_popup);
    EXPECT_TRUE(BecomesActive(modal));
    m_popup.log.clear();
    m_frame.log.clear();
    m_stage->Click({150, 150});
    m_stage->Click({750, 200});
    m_stage->Wait(50);
    EXPECT_TRUE(BecomesActive(modal));
    EXPECT_EQ(m_popup.CountOf(WM_LBUTTONDOWN) + m_frame.CountOf(WM_LBUTTONDOWN), 0);
    EXPECT_TRUE(IsSeen({290, 290}, kGreenSeen));
    desktop.EnableWindow(m_popup.GetSafeHwnd(), true);
    desktop.EnableWindow(m_frame.GetSafeHwnd(), true);
    modal.DestroyWindow();
    m_stage->Wait(50);
    EXPECT_TRUE(BecomesActive(m_popup));
    EXPECT_EQ(CWnd::GetFocus(), &m_popup);
}

}  // namespace veldan
