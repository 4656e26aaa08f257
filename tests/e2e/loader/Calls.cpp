#include "e2e/loader/Host.h"
#include "x11/XHand.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace veldan {

namespace {

/// Something that a host calls, and whether what it set off has come about.
struct Call {
    std::string name;
    std::function<void()> act;
    std::function<bool()> isDone = [] { return true; };
};

/// Makes each call while an event is on its way to the host: its own loop must come to hear of both.
class CallPlayer {
public:
    explicit CallPlayer(HostWindow& host) : m_host(host), m_hand(std::getenv("DISPLAY")) {}

    [[nodiscard]] XHand& Hand() { return m_hand; }

    /// These give whether all came about, and tell what didn't.
    [[nodiscard]] bool Outside(const Call& call) {
        CatchUp();
        MoveHand();
        call.act();
        return HasCome(call, "outside of a handler");
    }
    [[nodiscard]] bool Inside(const Call& call) {
        CatchUp();
        m_host.m_run = [&] {
            MoveHand();
            call.act();
        };
        const int before = m_host.m_nRuns;
        m_host.PostMessage(HostWindow::kMsgRun);
        if (!LoopUntil([&] { return m_host.m_nRuns > before; })) {
            Tell("PostMessage was without effect");
            return false;
        }
        m_host.m_run = nullptr;
        return HasCome(call, "inside of a handler");
    }

private:
    void MoveHand() {
        m_target = {10 + ++m_nMoves % 280, 20};
        m_hand.Move(m_target);
    }
    [[nodiscard]] bool HasCome(const Call& call, const std::string& where) {
        if (!LoopUntil([&] { return m_host.m_ptMouse == m_target; })) {
            Tell(call.name + " " + where + " lost the pointer's move");
            return false;
        }
        if (!LoopUntil(call.isDone)) {
            Tell(call.name + " " + where + " was without effect");
            return false;
        }
        return true;
    }

    HostWindow& m_host;
    XHand m_hand;
    CPoint m_target;
    int m_nMoves = 0;
};

std::vector<Call> CallsOfTheLibrary(const Library& library, HostWindow& host, const std::string& base) {
    return {
        {"Init", [&] { library.Init(&host, base.c_str()); }},
        {"Show", [&] { library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked); }},
        {"second Show", [&] { library.Show(&host, kMenuPlace.x + 9, kMenuPlace.y, HostWindow::kMsgPicked); }},
        {"Hide", [&] { library.Hide(); }},
        {"Release", [&] { library.Release(); }},
    };
}

/// What a host calls on its own windows.
std::vector<Call> CallsOfTheLayer(HostWindow& host, CallPlayer& player, int& turn, int& before) {
    Desktop& desktop = Desktop::Get();
    XHand& hand = player.Hand();
    return {
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
    CallPlayer player(host);
    int turn = 0;
    int before = 0;
    std::vector<Call> calls = CallsOfTheLibrary(library, host, base);
    for (Call& call : CallsOfTheLayer(host, player, turn, before)) {
        calls.push_back(std::move(call));
    }
    const auto comeOutside = [&](const Call& call) { return player.Outside(call); };
    const auto comeInside = [&](const Call& call) { return player.Inside(call); };
    for (int i = 0; i < kRepeats; ++i) {
        if (!std::ranges::all_of(calls, comeOutside) || !std::ranges::all_of(calls, comeInside)) {
            return 1;
        }
    }
    return 0;
}

}  // namespace veldan
