#include "e2e/loader/Host.h"

namespace veldan {

namespace {

void MakeAllCalls(const Library& library, HostWindow& host, const std::string& base) {
    library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked);
    library.Hide();
    library.Release();
    library.Init(&host, base.c_str());
    library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked);
    library.Init(&host, base.c_str());
    library.Hide();
    library.Release();
}

}  // namespace

/// The server dies while the menu is shown. `noticed`: the host's loop runs once before the host makes another call.
int PlayLoss(const std::string& path, const std::string& base, bool noticed) {
    const Library library(path);
    HostWindow host;
    if (!library.IsLoaded() || !host.Create()) {
        return 2;
    }
    library.Init(&host, base.c_str());
    library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked);
    CatchUp();
    const HWND menu = FindMenu(host);
    PrintLine(Desktop::Get().IsVisible(menu) ? "shown" : "hidden");
    WaitForLine();
    if (noticed) {
        const bool isHidden = LoopUntil([&] { return !Desktop::Get().IsVisible(menu) && !host.IsWindowVisible(); });
        PrintLine(isHidden ? "hidden" : "still shown");
        PrintLine(IsAwake() ? "spins" : "quiet");
    }
    MakeAllCalls(library, host, base);
    Desktop::Get().Dispatch();
    PrintLine(IsAwake() ? "spins" : "quiet");
    return 0;
}

}  // namespace veldan
