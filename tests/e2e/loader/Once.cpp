#include "e2e/loader/Host.h"
#include "e2e/loader/ProcessState.h"
#include "platform/display/memory/MemoryDisplay.h"
#include "x11/XHand.h"

#include <cstdlib>
#include <memory>

namespace veldan {

namespace {

// Places in the menu, in its own pixels.
constexpr CPoint kSecondGroup{80, 47};
constexpr CPoint kFirstRow{400, 42};

/// A person's hand on the display that was chosen.
class Hand {
public:
    Hand() : m_memory(dynamic_cast<MemoryDisplay*>(&Desktop::Get().GetDisplay())) {
        if (m_memory == nullptr) {
            m_server = std::make_unique<XHand>(std::getenv("DISPLAY"));
        }
    }

    void Move(CPoint screen) { m_memory != nullptr ? m_memory->MovePointer(screen) : m_server->Move(screen); }
    void Click() {
        if (m_memory != nullptr) {
            m_memory->PressButton(1);
            m_memory->ReleaseButton(1);
        } else {
            m_server->Click();
        }
    }

private:
    MemoryDisplay* m_memory;
    std::unique_ptr<XHand> m_server;
};

bool IsRowShown(HWND menu) {
    const HWND row = Desktop::Get().WindowAt(menu, kMenuPlace + kFirstRow);
    return row && row != menu;
}

bool Pick(HostWindow& host, HWND menu) {
    Hand hand;
    hand.Move(kMenuPlace + kSecondGroup);
    Desktop::Get().Dispatch();
    if (!LoopUntil([&] { return IsRowShown(menu); })) {
        return false;
    }
    hand.Move(kMenuPlace + kFirstRow);
    hand.Click();
    Desktop::Get().Dispatch();
    return LoopUntil([&] { return !host.m_strPicked.empty(); });
}

}  // namespace

int PlayOnce(const std::string& path, const std::string& base) {
    const auto before = StateOfProcess();
    {
        const Library library(path);
        HostWindow host;
        if (!library.IsLoaded() || !host.Create()) {
            return 2;
        }
        library.Init(&host, base.c_str());
        library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked);
        Tell(std::string(Desktop::Get().GetDisplay().Name()));
        Tell(Pick(host, FindMenu(host)) ? host.m_strPicked : "nothing picked");
        library.Release();
    }
    std::string changed = "changed:";
    for (const auto& [name, value] : StateOfProcess()) {
        changed += value != before.at(name) ? " " + name : "";
    }
    Tell(changed);
    return 0;
}

}  // namespace veldan
