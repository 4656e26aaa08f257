// How long a pick takes until the list of recent profiles is on disk, with twelve profiles picked in turn: compares the
// last picks with the first ones, and both with bare synced writes on the same disk in the same run. Prints one line of
// JSON. The number of picks can be given as an argument.

#include "menu/DlgCustomMenu.h"
#include "platform/core/Clock.h"
#include "platform/display/memory/MemoryDisplay.h"
#include "platform/window/Desktop.h"
#include "resources/Dialogs.h"

#include "Measure.h"
#include "ProcessMemory.h"

#include <cstdio>
#include <cstdlib>

using namespace veldan;

namespace {

constexpr int kProfiles = 12;
constexpr std::size_t kSample = 500;

void MakeTree(const std::filesystem::path& base) {
    WriteFile(base / "Profiles/order.ini", "[Order]\r\nNum=2\r\n0=Movies\r\n1=Recent\r\n");
    std::string index = "[Order]\r\nNum=" + std::to_string(kProfiles) + "\r\n";
    for (int i = 0; i < kProfiles; ++i) {
        const std::string stem = veldan::Format("p%d", i);
        index.append(std::to_string(i)).append("=").append(stem).append(".xml\r\n");
        index.append(stem).append(".xml=").append(stem).append(".png\r\n");
        WriteFile(base / "Profiles/Movies" / (stem + ".xml"), "<ProfileName value=\"" + stem + "\"/>\r\n");
        WriteFile(base / "Profiles/Movies" / (stem + ".png"), std::string(2000, 'x'));
    }
    WriteFile(base / "Profiles/Movies/order.ini", index);
    WriteFile(base / "Profiles/Recent/order.ini", "[Order]\r\nNum=0\r\n");
}

void Measure(const std::filesystem::path& base, int picks) {
    Desktop::Install(std::make_unique<Desktop>(std::make_unique<MemoryDisplay>(), std::make_unique<ManualClock>()));
    CDlgCustomMenu menu;
    menu.SetBasePath(base.c_str());
    menu.Create(kMenuDialogId);
    std::vector<double> times(static_cast<std::size_t>(picks));
    std::vector<double> bare(times);
    times.clear();
    bare.clear();
    long memoryAtFirst = 0;
    for (int i = 0; i < picks; ++i) {
        const Watch::time_point begin = Watch::now();
        menu.AddRecent(kFirstItemID + i % kProfiles);
        times.push_back(MsSince(begin));
        Desktop::Get().Dispatch();
        bare.push_back(BareWriteMs(base / "bare", 1000));
        memoryAtFirst = times.size() == kSample ? ResidentKb() : memoryAtFirst;
    }
    const std::size_t sample = std::min(kSample, times.size());
    const double first = Median({times.begin(), times.begin() + static_cast<std::ptrdiff_t>(sample)});
    const double last = Median({times.end() - static_cast<std::ptrdiff_t>(sample), times.end()});
    const double write = Median(bare);
    std::printf(
        "{\"picks\": %d, \"entries\": %d, \"pick_ms\": %.3f, \"bare_write_ms\": %.3f, \"pick_by_3_writes\": %.2f, "
        "\"last_by_first\": %.2f, \"grown_kb\": %ld}\n",
        picks, menu.Recent().Size(), Median(times), write, Median(times) / (3 * write), last / first,
        ResidentKb() - memoryAtFirst);
}

}  // namespace

int main(int argc, char** argv) {
    std::string folder = (std::filesystem::temp_directory_path() / "veldan-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        return 1;
    }
    MakeTree(folder);
    Measure(folder, argc > 1 ? std::max(1, std::atoi(argv[1])) : 10'000);
    std::filesystem::remove_all(folder);
    return 0;
}
