#include "Demo.h"
#include "HostWindow.h"
#include "Options.h"
#include "Samples.h"

#include "platform/debug/Debug.h"
#include "platform/window/Desktop.h"
#include "veldan/veldan.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kFault = 2;

int RunHost(const Options& options, const std::string& base) {
    veldan::StartMessageSpy(veldan::Desktop::Get());
    HostWindow host;
    if (!host.Create(options.window)) {
        std::fputs("veldan-host: can't make its window\n", stderr);
        return kFault;
    }
    // The window is up, so it becomes the menu's owner.
    VELDAN_InitProfileMenus(&host, base.c_str());
    std::puts("ready");
    std::fflush(stdout);
    host.SetExitAfterPick(options.exitAfterPick);
    if (options.show) {
        host.ShowMenu(*options.show);
    }
    int result = 0;
    if (options.demo.empty()) {
        veldan::Desktop::Get().Run();
    } else {
        result = RunDemo(host, options.demo) ? 0 : kFault;
    }
    VELDAN_ReleaseProfileMenus();
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    const auto options = ReadOptions(argc, argv);
    if (!options) {
        return kFault;
    }
    if (!options->log.empty()) {
        setenv("VELDAN_LOG_DIR", options->log.c_str(), 1);
    }
    if (!options->demo.empty()) {
        setenv("VELDAN_DISPLAY", "memory", 1);
    } else if (veldan::Desktop::Get().GetDisplay().Name() == "memory") {
        std::fputs("veldan-host: no display answers; set DISPLAY, or draw pictures with --demo DIR\n", stderr);
        return kFault;
    }
    const std::string base = options->base.empty() ? SampleBase() : options->base;
    return base.empty() ? kFault : RunHost(*options, base);
}
