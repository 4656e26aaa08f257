#include "Samples.h"

#include "platform/core/File.h"
#include "platform/core/Path.h"
#include "platform/core/Utf8.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace fs = std::filesystem;

namespace {

/// No file of a catalogue is larger.
constexpr std::uintmax_t kLargestFile = 16 * 1024 * 1024;

fs::path UserDataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
        return data;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? fs::path(home) / ".local/share" : fs::path();
}

bool HasSamples(const fs::path& base) {
    return veldan::PathExists((base / "Profiles/order.ini").string(), false);
}

/// Where the samples are: beside an installed host, or in the sources that this one was built from.
fs::path ShippedSamples() {
    const fs::path program = veldan::ToSystemPath(veldan::ExecutablePath());
    const fs::path installed = program.parent_path() / VELDAN_SAMPLES_INSTALLED;
    return HasSamples(installed) ? installed : fs::path(VELDAN_SAMPLES_SOURCE);
}

/// The folder `Profiles` of a catalogue, in whatever case its name is spelled there.
fs::path ProfilesIn(const fs::path& base) {
    std::error_code error;
    for (auto entry = fs::directory_iterator(base, error); !error && entry != fs::end(entry); entry.increment(error)) {
        const fs::path name = entry->path().filename();
        if (name != "Profiles" && veldan::FoldCase(name.string()) == veldan::FoldCase("Profiles") &&
            !fs::exists(base / "Profiles", error)) {
            return entry->path();
        }
    }
    return base / "Profiles";
}

/// Copies regular files, and those in folders down to `depth`, and makes the copies writable. Links are followed, so
/// that the copy shares nothing with the original. Files that can't be read are left out, as the menu wouldn't show
/// them.
void CopyFolder(const fs::path& source, const fs::path& target, int depth, std::error_code& error) {
    fs::create_directory(target, error);
    std::error_code unreadable;
    for (auto entry = fs::directory_iterator(source, unreadable); !error && !unreadable && entry != fs::end(entry);
         entry.increment(unreadable)) {
        std::error_code unknown;
        const fs::path copy = target / entry->path().filename();
        if (entry->is_directory(unknown) && depth > 0) {
            CopyFolder(entry->path(), copy, depth - 1, error);
        } else if (entry->is_regular_file(unknown) && entry->file_size(unknown) <= kLargestFile &&
                   access(entry->path().c_str(), R_OK) == 0) {
            fs::copy_file(entry->path(), copy, error);
            fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add, unknown);
        }
    }
}

constexpr int kGroups = 1;  // depth of the folders below Profiles

void PrintCopyFault(const fs::path& target, const std::error_code& error) {
    std::fprintf(stderr, "veldan-host: can't copy the catalogue to %s: %s\n", target.c_str(), error.message().c_str());
}

}  // namespace

std::string SampleBase() {
    const fs::path data = UserDataFolder();
    if (data.empty()) {
        std::fputs("veldan-host: there is no folder for the sample catalogue; name one with --base\n", stderr);
        return {};
    }
    const fs::path base = data / "veldan";
    if (HasSamples(base)) {
        return base;
    }
    // The copy is renamed at the end, so that an unfinished one is never taken for a complete one.
    std::error_code error;
    const fs::path unfinished = base / "Profiles.new";
    fs::remove_all(unfinished, error);
    fs::create_directories(base, error);
    CopyFolder(ShippedSamples() / "Profiles", unfinished, kGroups, error);
    if (!error) {
        fs::rename(unfinished, base / "Profiles", error);
    }
    if (error) {
        PrintCopyFault(base, error);
        return {};
    }
    return base;
}

TemporaryCatalogue::TemporaryCatalogue(const std::string& base) {
    std::error_code error;
    std::string folder = fs::temp_directory_path(error) / "veldan-demo-XXXXXX";
    if (!error && mkdtemp(folder.data()) == nullptr) {
        error.assign(errno, std::generic_category());
    }
    if (!error) {
        m_folder = folder;
        const fs::path source = base.empty() ? ShippedSamples() : fs::path(base);
        CopyFolder(ProfilesIn(source), m_folder / "Profiles", kGroups, error);
    }
    if (error) {
        PrintCopyFault(folder, error);
        fs::remove_all(m_folder, error);
        m_folder.clear();
    }
}

TemporaryCatalogue::~TemporaryCatalogue() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}
