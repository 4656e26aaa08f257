#include "e2e/loader/Host.h"
#include "x11/XHand.h"

#include <cstdlib>
#include <vector>

namespace veldan {

namespace {

/// A call that a host makes, and whether it has had its effect.
struct Call {
    std::string name;
    std::function<void()> act;
    std::function<bool()> isDone = [] { return true; };
};

/// Makes a call while a move of the pointer is on its way to the host, whose loop must notice both.
bool HasCome(HostWindow& host, XHand& hand, const Call& call, bool isInHandler) {
    CatchUp();
    const CPoint target{host.m_ptMouse.x == 10 ? 20 : 10, 20};
    host.m_run = [&] {
        hand.Move(target);
        call.act();
    };
    if (isInHandler) {
        host.PostMessage(HostWindow::kMsgRun);
    } else {
        host.m_run();
    }
    if (LoopUntil([&] { return host.m_ptMouse == target && call.isDone(); })) {
        return true;
    }
    PrintLine(call.name + (isInHandler ? " inside" : " outside") + " of a handler was without effect or lost the move");
    return false;
}

/// The functions of the library and the operations on its own windows that a host calls.
std::vector<Call> AllCalls(const Library& library, HostWindow& host, const std::string& base, XHand& hand) {
    static int turn = 0;
    static int before = 0;
    Desktop& desktop = Desktop::Get();
    return {
        {"Init", [&] { library.Init(&host, base.c_str()); }},
        {"Show", [&] { library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked); }},
        {"second Show", [&] { library.Show(&host, kMenuPlace.x + 9, kMenuPlace.y, HostWindow::kMsgPicked); }},
        {"Hide", [&] { library.Hide(); }},
        {"Release", [&] { library.Release(); }},
        {"CursorPos", [&] { (void)desktop.CursorPos(); }},
        {"Sync", [&] { desktop.GetDisplay().Sync(); }},
        {"SetTimer",
         [&] {
             before = host.m_nTimers;
             host.SetTimer(1, 1);
         },
         [&] { return host.m_nTimers > before && host.KillTimer(1); }},
        {"Invalidate",
         [&] {
             before = host.m_nPaints;
             host.Invalidate();
         },
         [&] { return host.m_nPaints > before; }},
        {"SetWindowPos", [&] { host.SetWindowPos(nullptr, 0, 0, 300, 200 + ++turn % 9, SWP_NOZORDER | SWP_NOMOVE); },
         [&] { return hand.RectOf(hand.FindWindow("loader")).Height() == 200 + turn % 9; }},
    };
}

}  // namespace

int PlayCalls(const std::string& path, const std::string& base) {
    constexpr int kRepeats = 10;
    const Library library(path);
    HostWindow host;
    if (!library.IsLoaded() || !host.Create()) {
        return 2;
    }
    XHand hand(std::getenv("DISPLAY"));
    const std::vector<Call> calls = AllCalls(library, host, base, hand);
    for (int i = 0; i < 2 * kRepeats; ++i) {
        for (const Call& call : calls) {
            if (!HasCome(host, hand, call, i % 2 == 1)) {
                return 1;
            }
        }
    }
    return 0;
}

}  // namespace veldan
