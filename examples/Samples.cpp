#include "Samples.h"

#include "platform/core/Path.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

fs::path UserDataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
        return data;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? fs::path(home) / ".local/share" : fs::path();
}

/// Where the catalogue lies: beside an installed host, or in the sources that this one was built from.
fs::path ShippedSamples() {
    const fs::path program = veldan::ToSystemPath(veldan::ExecutablePath());
    const fs::path installed = program.parent_path() / VELDAN_SAMPLES_INSTALLED;
    return fs::exists(installed / "Profiles/order.ini") ? installed : fs::path(VELDAN_SAMPLES_SOURCE);
}

}  // namespace

std::string SampleBase() {
    const fs::path data = UserDataFolder();
    if (data.empty()) {
        std::fputs("veldan-host: there is no folder for the sample catalogue; name one with --base\n", stderr);
        return {};
    }
    const fs::path base = data / "veldan";
    if (fs::exists(base / "Profiles/order.ini")) {
        return base;
    }
    // Copied aside and then renamed, so that a copy that was interrupted is never taken for a whole one.
    std::error_code error;
    const fs::path unfinished = base / "Profiles.new";
    fs::remove_all(unfinished, error);
    fs::create_directories(base, error);
    fs::copy(ShippedSamples() / "Profiles", unfinished, fs::copy_options::recursive, error);
    if (!error) {
        fs::rename(unfinished, base / "Profiles", error);
    }
    if (error) {
        std::fprintf(stderr, "veldan-host: can't copy the sample catalogue to %s: %s\n", base.c_str(),
                     error.message().c_str());
        return {};
    }
    return base;
}
