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

/// The server dies under the shown menu. `noticed`: the host's loop comes round before the host calls again.
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
    Tell(Desktop::Get().IsVisible(menu) ? "shown" : "hidden");
    Listen();
    if (noticed) {
        const bool isHidden = LoopUntil([&] { return !Desktop::Get().IsVisible(menu) && !host.IsWindowVisible(); });
        Tell(isHidden ? "hidden" : "still shown");
        Tell(IsAwake() ? "spins" : "quiet");
    }
    MakeAllCalls(library, host, base);
    Desktop::Get().Dispatch();
    Tell(IsAwake() ? "spins" : "quiet");
    return 0;
}

}  // namespace veldan
