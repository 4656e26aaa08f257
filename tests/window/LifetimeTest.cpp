#include "platform/core/Keys.h"
#include "platform/dialog/Dialog.h"
#include "support/DesktopFixture.h"
#include "support/Probe.h"

#include <map>
#include <set>

namespace veldan {

namespace {

/// Objects that are not deleted yet; whatever a case leaves behind goes at its end.
std::set<CWnd*> g_alive;

template <class Base>
class Mortal : public Base {
public:
    Mortal() { g_alive.insert(this); }
    ~Mortal() override { g_alive.erase(this); }
};

using MortalWnd = Mortal<ProbeWnd>;

/// A button that also acts at what its parent hands back to it.
class MortalButton : public Mortal<ProbeButton> {
protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            On<OCM_CTLCOLOR, &MortalButton::CtlColor>(),
            On<OCM_DRAWITEM, &MortalButton::OnDrawItem>(),
            On<OCM_MEASUREITEM, &MortalButton::OnMeasureItem>(),
            OnReflected<BN_CLICKED, &MortalButton::OnClicked>(),
        };
        static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
        return kMap;
    }

private:
    HBRUSH CtlColor(CDC*, UINT) {
        Act(OCM_CTLCOLOR);
        return nullptr;
    }
    void OnDrawItem(int, DRAWITEMSTRUCT*) { Act(OCM_DRAWITEM); }
    void OnMeasureItem(int, MEASUREITEMSTRUCT*) { Act(OCM_MEASUREITEM); }
    void OnClicked() { Act(OCM_COMMAND); }
    void Act(UINT message) {
        if (message == actAt && action) {
            std::exchange(action, nullptr)(*this);
        }
    }
};

constexpr DialogTemplate kForms[] = {{.id = 900, .size = {0, 0, 100, 100}}};

enum class Victim { Window, Parent };

/// Inside of what the message comes.
enum class Setting { Plain, ModalLoop, PopupChain, ReflectedNotification };

constexpr const char* kSettings[] = {"", "_InModalLoop", "_InPopupChain", "_InReflection"};

}  // namespace

class LifetimeTest : public DesktopTest, public testing::WithParamInterface<std::tuple<UINT, Victim, Setting>> {
protected:
    LifetimeTest() {
        MakePopup(*m_far, {0, 500, 400, 900});
        m_outer->Create("", WS_VISIBLE | BS_OWNERDRAW, {0, 0, 50, 50}, m_far, 8);
        MakePopup(*m_owner, {0, 0, 400, 400});
        // The parent of a top-level window is its owner.
        MakePopup(*m_top, {500, 0, 900, 400}, m_owner);
        MakeChild(*m_plain, *m_top, {10, 10, 110, 60});
        m_button->Create("", WS_VISIBLE | BS_OWNERDRAW, {10, 100, 110, 150}, m_top, 7);
        Person().Settle();
    }
    ~LifetimeTest() override {
        while (!g_alive.empty()) {
            delete *g_alive.begin();
        }
        EXPECT_EQ(TheDesktop().WindowCount(), 0U);
        Person().Settle();
    }

    template <class Target>
    void Arm(Target& target) {
        target.actAt = std::get<0>(GetParam());
        target.action = [this](auto& window) {
            m_bActed = true;
            CWnd* victim = std::get<1>(GetParam()) == Victim::Window ? &window : window.GetParent();
            delete victim;
        };
    }
    void Provoke(UINT message);
    void ProvokeInSetting(UINT message);

    static constexpr CPoint kOver{550, 30};
    DialogTemplateTable m_forms{kForms};
    MortalWnd* m_far = new MortalWnd;
    MortalButton* m_outer = new MortalButton;
    MortalWnd* m_owner = new MortalWnd;
    MortalWnd* m_top = new MortalWnd;
    MortalWnd* m_plain = new MortalWnd;
    MortalButton* m_button = new MortalButton;
    bool m_bActed = false;
};

void LifetimeTest::Provoke(UINT message) {
    const auto destroy = [this] { m_plain->DestroyWindow(); };
    const auto repaint = [this] { m_plain->Invalidate(), m_button->Invalidate(); };
    const auto click = [this] { Person().Click({550, 120}); };
    const auto type = [this] { m_plain->SetFocus(), Person().Type(VK_SPACE, " "); };
    const auto move = [this] { m_plain->MoveWindow({0, 0, 10, 20}); };
    const auto doubleClick = [this](int button) {
        // A button's class knows double clicks.
        Person().Click({550, 120}, button);
        Person().Click({550, 120}, button);
    };
    const auto clickAll = [this] {
        for (int button = 1; button <= 3; ++button) {
            Person().Click(kOver, button);
        }
    };
    const auto track = [this](UINT what, CPoint next) {
        Person().Move(kOver);
        m_plain->TrackMouseEvent(what, 5);
        Person().Rest(next, 10);
    };
    const auto measure = [this] {
        MEASUREITEMSTRUCT item;
        m_top->SendMessage(WM_MEASUREITEM, 7, reinterpret_cast<LPARAM>(&item));
    };
    const auto createAnother = [this] {
        auto* another = new MortalWnd;
        Arm(*another);
        MakeChild(*another, *m_top, {200, 200, 250, 250});
    };
    const auto createDialog = [this] {
        auto* dialog = new Mortal<Probe<CDialog>>;
        Arm(*dialog);
        dialog->Create(900, m_owner);
    };
    const std::map<UINT, std::function<void()>> roads{
        {WM_CREATE, createAnother},
        {WM_INITDIALOG, createDialog},
        {WM_DESTROY, destroy},
        {WM_NCDESTROY, destroy},
        {WM_MOVE, move},
        {WM_SIZE, move},
        {WM_SETFOCUS, [this] { m_plain->SetFocus(); }},
        {WM_KILLFOCUS, [this] { m_plain->SetFocus(), m_button->SetFocus(); }},
        {WM_ENABLE, [this] { m_plain->EnableWindow(false); }},
        {WM_SHOWWINDOW, [this] { m_plain->ShowWindow(SW_HIDE); }},
        {WM_PAINT, repaint},
        {WM_ERASEBKGND, repaint},
        {WM_CANCELMODE,
         [this] {
             TheDesktop().OpenPopup(m_plain->GetSafeHwnd(), m_top->GetSafeHwnd());
             TheDesktop().CancelPopups();
         }},
        {WM_CLOSE, [this] { m_display->RequestClose(m_top->GetSafeHwnd().Value()); }},
        {WM_TIMER, [this] { m_plain->SetTimer(1, 5), Person().Wait(10); }},
        {WM_SETFONT, [this] { m_plain->SetFont(nullptr); }},
        {WM_GETFONT, [this] { EXPECT_EQ(m_plain->GetFont(), nullptr); }},
        {WM_KEYDOWN, type},
        {WM_KEYUP, type},
        {WM_CHAR, type},
        {WM_DRAWITEM, repaint},
        {OCM_DRAWITEM, repaint},
        {WM_MEASUREITEM, measure},
        {OCM_MEASUREITEM, measure},
        {WM_CTLCOLORBTN, repaint},
        {OCM_CTLCOLOR, repaint},
        {WM_COMMAND, click},
        {OCM_COMMAND, click},
        {WM_MOUSEWHEEL, [this] { Person().Wheel(kOver, 120); }},
        {WM_MOUSEHOVER, [&] { track(TME_HOVER, kOver); }},
        {WM_MOUSELEAVE,
         [&] {
             track(TME_LEAVE, {950, 900});
         }},
        {WM_CAPTURECHANGED, [this] { m_plain->SetCapture(), CWnd::ReleaseCapture(); }},
        {WM_OUTSIDEPRESS,
         [this] {
             // The first press is for a popup chain, if there is one.
             Person().Click({950, 900});
             Person().Click({950, 900});
         }},
        {WM_LBUTTONDBLCLK, [&] { doubleClick(1); }},
        {WM_MBUTTONDBLCLK, [&] { doubleClick(2); }},
        {WM_RBUTTONDBLCLK, [&] { doubleClick(3); }},
    };
    const auto road = roads.find(message);
    if (IsCtlColor(message) && message != WM_CTLCOLORBTN) {
        m_top->SendMessage(message);
    } else {
        road != roads.end() ? road->second() : clickAll();
    }
    Person().Settle();
}

void LifetimeTest::ProvokeInSetting(UINT message) {
    switch (std::get<2>(GetParam())) {
        case Setting::Plain:
            Provoke(message);
            break;
        case Setting::ModalLoop: {
            CDialog dialog(900, m_far);
            TheDesktop().SetWaitFunction([&] {
                TheDesktop().SetWaitFunction({});
                Provoke(message);
                dialog.EndDialog(5);
                return true;
            });
            EXPECT_EQ(dialog.DoModal(), 5);
            EXPECT_TRUE(m_far->IsWindowEnabled());
            break;
        }
        case Setting::PopupChain:
            TheDesktop().OpenPopup(m_top->GetSafeHwnd(), m_owner->GetSafeHwnd());
            Provoke(message);
            break;
        case Setting::ReflectedNotification:
            m_outer->actAt = OCM_COMMAND;
            m_outer->action = [&](auto&) { Provoke(message); };
            m_far->SendMessage(WM_COMMAND, 8, static_cast<LPARAM>(m_outer->GetSafeHwnd().Value()));
            break;
    }
}

TEST_P(LifetimeTest, WindowMayDieInItsOwnMessage) {
    const UINT message = std::get<0>(GetParam());
    std::set<UINT> atTop{WM_CLOSE, WM_DRAWITEM, WM_MEASUREITEM, WM_COMMAND, WM_OUTSIDEPRESS};
    if (std::get<2>(GetParam()) == Setting::PopupChain) {
        atTop.insert({WM_KEYDOWN, WM_KEYUP, WM_CHAR});  // they go to the popup
    }
    const std::set<UINT> atButton{OCM_CTLCOLOR,     OCM_DRAWITEM,     OCM_MEASUREITEM, OCM_COMMAND,
                                  WM_LBUTTONDBLCLK, WM_RBUTTONDBLCLK, WM_MBUTTONDBLCLK};
    if (atTop.contains(message) || IsCtlColor(message)) {
        Arm(*m_top);
    } else if (atButton.contains(message)) {
        Arm(*m_button);
    } else {
        Arm(*m_plain);
    }
    ProvokeInSetting(message);
    EXPECT_TRUE(m_bActed) << NameOfMessage(message) << " was not provoked";
}

std::vector<UINT> AllMessageNumbers() {
    std::vector<UINT> numbers;
    for (const MessageName& message : AllMessages()) {
        numbers.push_back(message.number);
    }
    return numbers;
}

std::string NameOf(const testing::TestParamInfo<LifetimeTest::ParamType>& each) {
    const auto [message, victim, setting] = each.param;
    return std::string(NameOfMessage(message)) + (victim == Victim::Window ? "_Window" : "_Parent") +
           kSettings[static_cast<std::size_t>(setting)];
}

INSTANTIATE_TEST_SUITE_P(EveryMessage, LifetimeTest,
                         testing::Combine(testing::ValuesIn(AllMessageNumbers()),
                                          testing::Values(Victim::Window, Victim::Parent),
                                          testing::Values(Setting::Plain, Setting::ModalLoop, Setting::PopupChain,
                                                          Setting::ReflectedNotification)),
                         NameOf);

using DestructionTest = DesktopTest;

TEST_F(DestructionTest, ParentsHearFirstAndChildrenGoFirst) {
    ProbeWnd window;
    ProbeWnd child;
    ProbeWnd owned;
    MakePopup(window, {0, 0, 100, 100});
    MakeChild(child, window, {0, 0, 50, 50});
    MakePopup(owned, {200, 0, 300, 100}, &window);
    window.ShowWindow(SW_HIDE);
    EXPECT_TRUE(owned.IsWindowVisible());
    std::vector<std::pair<CWnd*, UINT>> order;
    TheDesktop().SetObserver([&](const MSG& message, bool) {
        CWnd* target = CWnd::FromHandle(message.hwnd);
        if (target != &owned && (message.message == WM_DESTROY || message.message == WM_NCDESTROY)) {
            order.emplace_back(target, message.message);
        }
    });
    window.DestroyWindow();
    const std::vector<std::pair<CWnd*, UINT>> expected{
        {&window, WM_DESTROY}, {&child, WM_DESTROY}, {&child, WM_NCDESTROY}, {&window, WM_NCDESTROY}};
    EXPECT_EQ(order, expected);
    EXPECT_FALSE(child.GetSafeHwnd());
    EXPECT_FALSE(owned.GetSafeHwnd());
    EXPECT_FALSE(child.ShowWindow(SW_SHOW) || child.PostMessage(WM_USER) || child.DestroyWindow());
    EXPECT_FALSE(MakeChild(child, window, {0, 0, 1, 1})) << "nothing can be done with a window that is gone";
    TheDesktop().SetObserver({});
}

TEST_F(DestructionTest, NothingOfADeadWindowReachesItsSuccessor) {
    auto first = std::make_unique<ProbeWnd>();
    MakePopup(*first, {0, 0, 100, 100});
    Person().Move({50, 50});
    first->SetTimer(1, 5);
    first->TrackMouseEvent(TME_HOVER | TME_LEAVE, 5);
    first->PostMessage(WM_USER);
    first->SetCapture();
    first->SetFocus();
    const HWND old = first->GetSafeHwnd();
    first.reset();
    ProbeWnd second;
    second.CreateEx(0, CWnd::kPlainClass, "", WS_POPUP, {500, 500, 600, 600}, {}, 0);
    EXPECT_NE(second.GetSafeHwnd(), old);
    EXPECT_EQ(second.GetSafeHwnd().slot, old.slot) << "the case is about a slot used again";
    second.log.clear();
    Person().Wait(20);
    Person().Type(VK_SPACE, " ");
    EXPECT_TRUE(second.log.empty());
    EXPECT_EQ(TheDesktop().Find(old), nullptr);
    EXPECT_FALSE(TheDesktop().Focus() || TheDesktop().Capture() || TheDesktop().Active());
}

}  // namespace veldan
