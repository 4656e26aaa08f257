#include "Demo.h"
#include "HostWindow.h"
#include "Options.h"
#include "Samples.h"

#include "platform/debug/Debug.h"
#include "platform/window/Desktop.h"
#include "veldan/veldan.h"

#include <poll.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kFault = 2;
constexpr int kNoDisplay = 3;

/// Makes the window and the menu and calls `run` with the window. Returns the exit status, which `run` returns too.
template <class Run>
int RunHost(const Options& options, const std::string& base, Run run) {
    veldan::StartMessageSpy(veldan::Desktop::Get());
    HostWindow host;
    if (!host.Create(options.window)) {
        std::fputs("veldan-host: can't make its window\n", stderr);
        return kFault;
    }
    // The window is shown before, so that it becomes the menu's owner.
    VELDAN_InitProfileMenus(&host, base.c_str());
    std::puts("ready");
    std::fflush(stdout);
    const int result = run(host);
    VELDAN_ReleaseProfileMenus();
    return result;
}

/// The host's own loop. When the display dies, all windows count as hidden; the host then has to end by itself, because
/// the user can't close its window any more.
int RunLoop(const HostWindow& host) {
    veldan::Desktop& desktop = veldan::Desktop::Get();
    pollfd descriptor{desktop.Descriptor(), POLLIN, 0};
    while (!host.IsDone() && host.IsWindowVisible()) {
        poll(&descriptor, 1, -1);
        desktop.Dispatch();
    }
    if (!host.IsDone()) {
        std::fputs("veldan-host: the display is gone\n", stderr);
        return kFault;
    }
    return 0;
}

int ServePerson(const Options& options) {
    if (veldan::Desktop::Get().GetDisplay().Name() == "memory") {
        std::fputs("veldan-host: no display answers; set DISPLAY, or draw pictures with --demo DIR\n", stderr);
        return kNoDisplay;
    }
    const std::string base = options.base.empty() ? SampleBase() : options.base;
    if (base.empty()) {
        return kFault;
    }
    return RunHost(options, base, [&](HostWindow& host) {
        host.SetExitAfterPick(options.exitAfterPick);
        if (options.show) {
            host.ShowMenu(*options.show);
        }
        return RunLoop(host);
    });
}

int DrawDemo(const Options& options) {
    setenv("VELDAN_DISPLAY", "memory", 1);
    const TemporaryCatalogue catalogue(options.base);
    if (catalogue.Base().empty()) {
        return kFault;
    }
    return RunHost(options, catalogue.Base(),
                   [&](HostWindow& host) { return RunDemo(host, options.demo) ? 0 : kFault; });
}

}  // namespace

int main(int argc, char** argv) {
    const auto options = ReadOptions(argc, argv);
    if (!options) {
        return kFault;
    }
    if (options->help || options->version) {
        std::fputs(options->help ? kHelp : "veldan-host " VELDAN_VERSION "\n", stdout);
        return 0;
    }
    if (!options->log.empty()) {
        setenv("VELDAN_LOG_DIR", options->log.c_str(), 1);
    }
    return options->demo.empty() ? ServePerson(*options) : DrawDemo(*options);
}
