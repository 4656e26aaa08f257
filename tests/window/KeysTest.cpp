#include "platform/core/Keys.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

/// Swallows one key before it is dispatched, and writes down what its messages come with.
class Typist : public ProbeWnd {
public:
    UINT swallowed = 0;
    std::vector<UINT> characters;
    std::vector<short> shifts;
    std::vector<LPARAM> repeats;

protected:
    bool PreTranslateMessage(MSG& message) override {
        return message.message == WM_KEYDOWN && message.wParam == swallowed;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CHAR) {
            characters.push_back(static_cast<UINT>(wParam));
        } else if (message == WM_KEYDOWN || message == WM_USER) {
            shifts.push_back(Desktop::Get().GetKeyState(VK_SHIFT));
            repeats.push_back(lParam & kKeyRepeat);
        }
        return ProbeWnd::WindowProc(message, wParam, lParam);
    }
};

}  // namespace

class KeysTest : public DesktopTest {
protected:
    KeysTest() {
        MakePopup(m_window, {0, 0, 100, 100});
        m_window.SetFocus();
    }

    Typist m_window;
};

TEST_F(KeysTest, SwallowedKeyTypesNothing) {
    m_window.swallowed = 'A';
    Person().Type('A', "a");
    Person().Type('B', "b\xc3\xa9");
    Person().Type(VK_RETURN);
    EXPECT_EQ(m_window.characters, (std::vector<UINT>{'b', 0xe9, '\r'}));
}

TEST_F(KeysTest, StateAnswersForTheMessageThatIsHandled) {
    m_display->PressKey('A', "A", MK_SHIFT);
    m_display->PressKey('B', "b");
    m_window.actAt = WM_CHAR;
    m_window.action = [](ProbeWnd& window) { window.SendMessage(WM_USER); };
    Person().Settle();
    ASSERT_EQ(m_window.shifts.size(), 3U);
    EXPECT_LT(m_window.shifts[0], 0);
    EXPECT_LT(m_window.shifts[1], 0) << "in what its character led to";
    EXPECT_EQ(m_window.shifts[2], 0);
    EXPECT_EQ(TheDesktop().GetKeyState(VK_SHIFT), 0) << "outside of any message";
}

TEST_F(KeysTest, KeyThatWasDownRepeats) {
    m_display->PressKey('A', "a");
    m_display->PressKey('A', "a");
    m_display->ReleaseKey('A');
    m_display->PressKey('A', "a");
    Person().Settle();
    EXPECT_EQ(m_window.repeats, (std::vector<LPARAM>{0, kKeyRepeat, 0}));
}

TEST_F(KeysTest, ReleasingSpaceFreesNoCaptureButItsOwn) {
    ProbeButton button;
    button.Create("", WS_VISIBLE | BS_OWNERDRAW, {0, 0, 50, 50}, &m_window, 1);
    button.SetFocus();
    m_display->PressKey(VK_SPACE, " ");
    Person().Settle();
    m_window.SetCapture();
    m_display->ReleaseKey(VK_SPACE);
    Person().Settle();
    EXPECT_EQ(TheDesktop().Capture(), m_window.GetSafeHwnd());
}

}  // namespace veldan
