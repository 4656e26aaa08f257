// How long Init and a pick take where the list of recent profiles has an index that no one would write by hand, beside
// the bare synced writing of as many bytes as the index has after the pick. Prints one line of JSON for each index, or
// for the one that is named.

#include "menu/DlgCustomMenu.h"
#include "platform/core/Clock.h"
#include "platform/display/memory/MemoryDisplay.h"
#include "platform/window/Desktop.h"
#include "resources/Dialogs.h"

#include "Measure.h"
#include "ProcessMemory.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

#include <sys/wait.h>

using namespace veldan;

namespace {

constexpr std::size_t kLargest = std::size_t{4} * 1024 * 1024;

std::string Entries(int count, const std::function<std::string(int)>& lines) {
    std::string index = Format("[Order]\nNum=%d\n", count);
    for (int i = 0; i < count && index.size() + 100 < kLargest; ++i) {
        index += lines(i);
    }
    return index;
}

struct Index {
    std::string strName;
    std::string text;
    int groups = 1;  ///< How many groups have this index.
    std::string strGroup = "Recent";
};

std::vector<Index> Indexes() {
    const auto bracket = [](int i) { return Format("%d=[%d\n", i, i); };
    const auto ordinary = [](int i) { return Format("%d=p%d.xml\np%d.xml=p%d.png\n", i, i, i, i); };
    const auto shortest = [](int i) { return Format("%d=_%x\n_%x=\n", i, i, i); };
    const std::string blank(kLargest, '\n');
    const std::string keys = Entries(10'000'000, [](int i) { return Format("%x=\n", i); });
    return {{"10000_brackets", Entries(10'000, bracket)},
            {"30000_brackets", Entries(30'000, bracket)},
            {"largest_of_brackets", Entries(10'000'000, bracket)},
            {"empty_lines", blank},
            {"150000_keys", Entries(75'000, ordinary)},
            {"largest_of_short_entries", Entries(1'000'000, shortest)},
            {"keys_without_numbers", keys},
            {"one_name", Entries(1'000'000, [](int i) { return Format("%d=x\n", i); })},
            {"last_of_a_million", "[Order]\nNum=1000000\n999999=x\n"},
            {"keys_in_all_groups", keys, kMostGroups},
            {"user_define_in_all_groups", Entries(75'000, ordinary), kMostGroups, "UserDefine"},
            {"empty_lines_in_all_groups", blank, kMostGroups}};
}

void MakeTree(const std::filesystem::path& base, const Index& index) {
    std::string top = Format("[Order]\r\nNum=%d\r\n0=Movies\r\n", index.groups + 1);
    for (int i = 1; i <= index.groups; ++i) {
        top.append(std::to_string(i)).append("=").append(index.strGroup).append("\r\n");
    }
    WriteFile(base / "Profiles/order.ini", top);
    WriteFile(base / "Profiles/Movies/order.ini", "[Order]\r\nNum=1\r\n0=a.xml\r\na.xml=a.png\r\n");
    WriteFile(base / "Profiles/Movies/a.xml", "<ProfileName value=\"a\"/>\r\n");
    WriteFile(base / "Profiles/Movies/a.png", std::string(2000, 'x'));
    std::filesystem::create_directories(base / "Profiles/Recent");
    WriteFile(base / "Profiles" / index.strGroup / "order.ini", index.text);
}

struct Cost {
    double ms;
    double cpuMs;
};

Cost CostOf(const std::function<void()>& act) {
    const Watch::time_point begin = Watch::now();
    const double cpu = CpuMs();
    act();
    return {MsSince(begin), CpuMs() - cpu};
}

void Measure(const std::filesystem::path& base, const Index& index) {
    MakeTree(base, index);
    Desktop::Install(std::make_unique<Desktop>(std::make_unique<MemoryDisplay>(), std::make_unique<ManualClock>()));
    CDlgCustomMenu menu;
    menu.SetBasePath(base.c_str());
    const Cost init = CostOf([&] { menu.Create(kMenuDialogId); });
    const long peak = PeakKb();
    const Cost pick = CostOf([&] { menu.AddRecent(kFirstItemID); });
    const std::filesystem::path file = base / "Profiles/Recent/order.ini";
    const double bare = BareWriteMs(base / "bare", std::filesystem::file_size(file));
    std::printf(
        "{\"index\": \"%s\", \"bytes\": %zu, \"init_ms\": %.1f, \"init_cpu_ms\": %.1f, \"init_peak_kb\": %ld, "
        "\"pick_ms\": %.1f, \"pick_cpu_ms\": %.1f, \"bare_write_ms\": %.1f, \"entries\": %d}\n",
        index.strName.c_str(), index.text.size(), init.ms, init.cpuMs, peak, pick.ms, pick.cpuMs, bare,
        menu.Recent().Size());
}

}  // namespace

int main(int argc, char** argv) {
    for (const Index& index : Indexes()) {
        if (argc > 1 && index.strName != argv[1]) {
            continue;
        }
        std::string folder = (std::filesystem::temp_directory_path() / "veldan-bench-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) {
            return 1;
        }
        // Each in a process of its own, whose memory is as at the start.
        if (const pid_t child = fork(); child == 0) {
            Measure(folder, index);
            std::fflush(stdout);
            _exit(0);
        } else {
            waitpid(child, nullptr, 0);
        }
        std::filesystem::remove_all(folder);
    }
    return 0;
}
