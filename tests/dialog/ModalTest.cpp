#include "platform/core/Keys.h"
#include "platform/dialog/Dialog.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

namespace veldan {

namespace {

constexpr UINT kStop = WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW;

constexpr DialogControl kControls[] = {
    ControlOf<ProbeButton>(10, "plain", {4, 4, 40, 14}, kStop),
    ControlOf<ProbeButton>(IDOK, "ok", {4, 24, 40, 14}, kStop),
    ControlOf<ProbeButton>(IDCANCEL, "cancel", {4, 44, 40, 14}, kStop),
};
constexpr DialogTemplate kForms[] = {{.id = 900, .size = {0, 0, 100, 80}, .controls = kControls}};

class ModalForm : public Probe<CDialog> {
public:
    ModalForm() : Probe<CDialog>(900) {}

    bool disablesAll = false;
    bool survivesCreation = true;
    std::function<void()> onInit;

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        if (onInit) {
            onInit();
        }
        return TRUE;
    }
    bool DisablesAllWindows() const override { return disablesAll; }
    void PreSubclassWindow() override {
        if (!survivesCreation) {
            DestroyWindow();
        }
    }
};

}  // namespace

/// Nothing moves time here but the waits, and those play the steps of a script, one at each wait.
class ModalTest : public DesktopTest {
protected:
    ModalTest() {
        m_frame.CreateEx(0, CWnd::kPlainClass, "host", WS_VISIBLE, {0, 0, 400, 400}, {}, 0);
        m_other.CreateEx(0, CWnd::kPlainClass, "other", WS_VISIBLE, {500, 0, 900, 400}, {}, 0);
        m_frame.SetFocus();
        Person().Settle();
        TheDesktop().SetWaitFunction([this] {
            EXPECT_LT(m_nStep, m_steps.size()) << "nobody ends the loop";
            if (m_nStep == m_steps.size()) {
                return false;
            }
            const std::function<void()> step = m_steps[m_nStep++];
            step();
            return !m_bQuits;
        });
    }
    ~ModalTest() override { TheDesktop().SetWaitFunction({}); }

    void Key(UINT key, UINT flags = 0) {
        m_display->PressKey(key, "", flags);
        m_display->ReleaseKey(key);
    }

    DialogTemplateTable m_forms{kForms};
    ProbeWnd m_frame;
    ProbeWnd m_other;
    std::vector<std::function<void()>> m_steps;
    std::size_t m_nStep = 0;
    bool m_bQuits = false;
};

TEST_F(ModalTest, DisablesItsOwnerAndGivesItTheFocusBack) {
    ModalForm form;
    m_steps = {[&] {
                   EXPECT_FALSE(m_frame.IsWindowEnabled());
                   EXPECT_TRUE(m_other.IsWindowEnabled());
                   EXPECT_EQ(CWnd::GetFocus(), form.GetDlgItem(10)) << "the first stop of the Tab key";
                   m_frame.log.clear();
               },
               [&] { form.EndDialog(42); }};
    EXPECT_EQ(form.DoModal(), 42);
    EXPECT_FALSE(form.GetSafeHwnd());
    EXPECT_TRUE(m_frame.IsWindowEnabled());
    EXPECT_EQ(CWnd::GetFocus(), &m_frame);
    EXPECT_EQ(m_frame.CountOf(WM_SHOWWINDOW), 0);
    form.survivesCreation = false;
    EXPECT_EQ(form.DoModal(), -1);
    EXPECT_TRUE(m_frame.IsWindowEnabled());
}

TEST_F(ModalTest, DisablesEveryOtherWindowOnItsWish) {
    ModalForm form;
    form.disablesAll = true;
    m_other.EnableWindow(false);
    ProbeWnd third;
    MakePopup(third, {0, 500, 50, 550});
    m_steps = {[&] { EXPECT_FALSE(m_frame.IsWindowEnabled() || third.IsWindowEnabled()); }, [&] { form.EndDialog(1); }};
    form.DoModal();
    EXPECT_TRUE(m_frame.IsWindowEnabled() && third.IsWindowEnabled());
    EXPECT_FALSE(m_other.IsWindowEnabled()) << "as it was before";
}

TEST_F(ModalTest, KeysMoveTheFocusAndClickTheTwoButtons) {
    ModalForm form;
    const auto focused = [&] { return CWnd::GetFocus()->GetDlgCtrlID(); };
    m_steps = {[&] { Key(VK_TAB); },
               [&] { EXPECT_EQ(focused(), UINT{IDOK}); },
               [&] { Key(VK_TAB, MK_SHIFT), Key(VK_TAB, MK_SHIFT); },
               [&] { EXPECT_EQ(focused(), UINT{IDCANCEL}) << "around the beginning"; },
               [&] { form.GetDlgItem(IDOK)->EnableWindow(false), Key(VK_RETURN); },
               [&] { form.GetDlgItem(IDOK)->EnableWindow(true), Key(VK_RETURN); }};
    EXPECT_EQ(form.DoModal(), IDOK) << "Enter is OK wherever the focus is, unless that can't be clicked";
    EXPECT_EQ(m_nStep, m_steps.size());
    m_nStep = 0;
    m_steps = {[&] { Key(VK_ESCAPE); }};
    EXPECT_EQ(form.DoModal(), IDCANCEL);
    form.Create(900);
    form.ShowWindow(SW_SHOW);
    Person().Type(VK_ESCAPE);
    EXPECT_TRUE(form.GetSafeHwnd()) << "keys mean nothing to a modeless dialog";
    EXPECT_EQ(form.CountOf(WM_COMMAND), 2);
}

TEST_F(ModalTest, EndsInItsOwnInitialisation) {
    ModalForm form;
    form.onInit = [&] { form.EndDialog(7); };
    EXPECT_EQ(form.DoModal(), 7);
    EXPECT_EQ(form.CountOf(WM_SHOWWINDOW), 0);
}

TEST_F(ModalTest, NestedDialogsEndInsideOut) {
    ModalForm outer;
    ModalForm inner;
    int innerResult = 0;
    m_steps = {[&] { innerResult = inner.DoModal(); },
               [&] {
                   EXPECT_FALSE(outer.IsWindowEnabled());
                   outer.EndDialog(5);
               },
               [&] { inner.EndDialog(6); }};
    EXPECT_EQ(outer.DoModal(), 5);
    EXPECT_EQ(innerResult, 6);
    EXPECT_TRUE(m_frame.IsWindowEnabled());
}

TEST_F(ModalTest, QuitEndsEveryLoopAndIsPassedOn) {
    ModalForm outer;
    ModalForm inner;
    int results[2] = {};
    m_frame.action = [&](ProbeWnd&) { results[0] = outer.DoModal(); };
    m_frame.actAt = WM_USER;
    m_frame.PostMessage(WM_USER);
    m_steps = {[&] { results[1] = inner.DoModal(); }, [&] { TheDesktop().PostQuitMessage(3); }};
    EXPECT_EQ(TheDesktop().Run(), 3);
    EXPECT_EQ(results[0], IDCANCEL);
    EXPECT_EQ(results[1], IDCANCEL);
    EXPECT_TRUE(m_frame.IsWindowEnabled());
}

TEST_F(ModalTest, HostThatQuitsInItsOwnLoopEndsEveryLoop) {
    ModalForm outer;
    ModalForm inner;
    int innerResult = 0;
    m_steps = {[&] { innerResult = inner.DoModal(); }, [&] { m_bQuits = true; }};
    EXPECT_EQ(outer.DoModal(), IDCANCEL);
    EXPECT_EQ(innerResult, IDCANCEL);
    m_bQuits = false;
    m_nStep = 0;
    m_steps = {[&] { outer.EndDialog(9); }};
    EXPECT_EQ(outer.DoModal(), 9) << "no quit is left over for a later dialog";
}

enum class Death { Window, Object, Owner, Display };

class ModalDeathTest : public ModalTest, public testing::WithParamInterface<std::tuple<Death, UINT>> {};

TEST_P(ModalDeathTest, EndsItWithCancel) {
    const auto [death, message] = GetParam();
    auto owner = std::make_unique<ProbeWnd>();
    MakePopup(*owner, {0, 500, 300, 800});
    owner->SetFocus();
    auto form = std::make_unique<ModalForm>();
    form->actAt = message;
    form->action = [&, what = death](auto&) {
        switch (what) {
            case Death::Window:
                form->DestroyWindow();
                break;
            case Death::Object:
                form.reset();
                break;
            case Death::Owner:
                owner.reset();
                break;
            case Death::Display:
                m_display->Lose();
                break;
        }
    };
    m_steps = {[&] { form->SetTimer(1, 1), form->PostMessage(WM_COMMAND, 99), m_clock->Advance(1); },
               [&] { ADD_FAILURE() << "still waiting"; }};
    EXPECT_EQ(form->DoModal(), IDCANCEL);
    if (owner) {
        EXPECT_TRUE(owner->IsWindowEnabled());
    }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, ModalDeathTest,
                         testing::Combine(testing::Values(Death::Window, Death::Object, Death::Owner, Death::Display),
                                          testing::Values(WM_INITDIALOG, WM_SHOWWINDOW, WM_TIMER, WM_PAINT,
                                                          WM_ERASEBKGND, WM_COMMAND)));

}  // namespace veldan
