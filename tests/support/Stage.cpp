#include "support/Stage.h"

#include "platform/display/x11/X11Display.h"
#include "support/DesktopFixture.h"
#include "x11/Wait.h"
#include "x11/XHand.h"
#include "x11/XServer.h"

#include <poll.h>

#include <chrono>

namespace veldan {

namespace {

class MemoryStage final : public Stage {
public:
    void Move(CPoint screen) override { m_desk.hand->Move(screen); }
    void Press(int button) override { m_desk.hand->Press(button); }
    void Release(int button) override { m_desk.hand->Release(button); }
    void Turn(int direction) override { m_desk.hand->Turn(120 * direction); }
    void Wait(int milliseconds) override { m_desk.hand->Wait(milliseconds); }
    std::uint32_t Seen(CPoint screen) override { return m_desk.display->PixelAt(screen) & 0xffffff; }
    void OpenForeignWindow(const CRect& rect) override {
        m_foreign = m_desk.display->AddForeignWindow(rect);
        m_desk.hand->Settle();
    }
    void SwitchToForeignWindow() override {
        m_desk.display->FocusForeignWindow(m_foreign);
        m_desk.hand->Settle();
    }
    void Unmap(HWND window) override {
        m_desk.display->UnmapByForce(window.Value());
        m_desk.hand->Settle();
    }

private:
    MemoryDesk m_desk{kScreen};
    TopLevelId m_foreign = 0;
};

class X11Stage final : public Stage {
public:
    explicit X11Stage(bool withManager) : m_server(XServerOptions{withManager, false, {}}) {
        if (!m_server.IsRunning()) {
            return;
        }
        m_hand = std::make_unique<XHand>(m_server.Name());
        if (auto display = CreateX11Display(m_server.Name().c_str())) {
            Desktop::Install(std::make_unique<Desktop>(std::move(display), std::make_unique<SteadyClock>()));
            m_bReady = true;
        }
    }
    /// The desktop's connection ends before its server does.
    ~X11Stage() override { Desktop::Install(nullptr); }

    [[nodiscard]] bool IsReady() const { return m_bReady; }

    void Move(CPoint screen) override { Do(&XHand::Move, screen); }
    void Press(int button) override { Do(&XHand::Press, button); }
    void Release(int button) override { Do(&XHand::Release, button); }
    void Turn(int direction) override { Do(&XHand::Wheel, direction); }
    void Wait(int milliseconds) override {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        for (auto now = std::chrono::steady_clock::now(); now < end; now = std::chrono::steady_clock::now()) {
            pollfd descriptor{Desktop::Get().Descriptor(), POLLIN, 0};
            poll(&descriptor, 1, 1);
            Desktop::Get().Dispatch();
        }
    }
    std::uint32_t Seen(CPoint screen) override {
        CatchUp();
        return m_hand->PixelAt(screen);
    }
    void OpenForeignWindow(const CRect& rect) override {
        m_foreign = std::make_unique<XForeignWindow>(m_server.Name(), rect, 0x204060);
        CatchUp();
    }
    void LetFramesSettle() override {
        const auto hasFocus = [this] {
            return m_hand->Focus() > XCB_INPUT_FOCUS_POINTER_ROOT && m_hand->Focus() != m_hand->Root();
        };
        static_cast<void>(Eventually(hasFocus));
        Wait(100);
    }
    void SwitchToForeignWindow() override {
        m_foreign->Raise();
        m_foreign->TakeFocus();
        CatchUp();
    }
    void Unmap(HWND window) override {
        xcb_unmap_window(m_hand->Connection(), m_hand->FindWindow(Desktop::Get().Find(window)->text));
        m_hand->Sync();
        CatchUp();
    }

private:
    template <class Argument>
    void Do(void (XHand::*gesture)(Argument), Argument argument) {
        (m_hand.get()->*gesture)(argument);
        CatchUp();
    }
    /// After one answer of the server all events that came before it have been read; handling them may ask for more.
    static void CatchUp() {
        for (int i = 0; i < 3; ++i) {
            Desktop::Get().GetDisplay().Sync();
            Desktop::Get().Dispatch();
        }
    }

    XServer m_server;
    std::unique_ptr<XHand> m_hand;
    std::unique_ptr<XForeignWindow> m_foreign;
    bool m_bReady = false;
};

}  // namespace

std::string NameOf(StageKind kind) {
    return kind == StageKind::Memory ? "Memory" : kind == StageKind::X11 ? "X11" : "X11WithManager";
}

std::unique_ptr<Stage> Stage::Make(StageKind kind) {
    if (kind == StageKind::Memory) {
        return std::make_unique<MemoryStage>();
    }
    auto stage = std::make_unique<X11Stage>(kind == StageKind::X11WithManager);
    return stage->IsReady() ? std::unique_ptr<Stage>(std::move(stage)) : nullptr;
}

bool Stage::Eventually(const std::function<bool()>& condition) {
    constexpr int kStep = 2;
    for (std::chrono::milliseconds left = kPatience; left.count() > 0 && !condition();
         left -= std::chrono::milliseconds(kStep)) {
        Wait(kStep);
    }
    return condition();
}

void Stage::Wheel(int steps) {
    for (; steps != 0; steps += steps > 0 ? -1 : 1) {
        Turn(steps > 0 ? 1 : -1);
    }
}

void Stage::Click(CPoint screen, int button) {
    Move(screen);
    Press(button);
    Release(button);
}

}  // namespace veldan
