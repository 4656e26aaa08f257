#include "e2e/loader/Host.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace veldan {

namespace {

std::ptrdiff_t CountEntries(const char* folder) {
    using Iterator = std::filesystem::directory_iterator;
    return std::distance(Iterator(folder), Iterator());
}

std::string Maps() {
    std::ifstream maps("/proc/self/maps");
    return {std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
}

/// The process's own memory in KiB, without pages of files, which other processes may happen to map too.
long PrivateMemory() {
    std::ifstream rollup("/proc/self/smaps_rollup");
    long sum = 0;
    for (std::string line; std::getline(rollup, line);) {
        std::istringstream words(line);
        std::string name;
        long value = 0;
        if (words >> name >> value && (name == "Anonymous:" || name == "Swap:")) {
            sum += value;
        }
    }
    return sum;
}

std::string Measures() {
    return "threads=" + std::to_string(CountEntries("/proc/self/task")) +
           " descriptors=" + std::to_string(CountEntries("/proc/self/fd")) +
           " mapped=" + (Maps().find("/libveldan.so") != std::string::npos ? "yes" : "no") +
           " windows=" + std::to_string(Desktop::Get().WindowCount());
}

/// From loading the library to unloading it; returns whether the pick came.
bool PlayRound(HostWindow& host, const std::string& path, const std::string& base, int round) {
    const Library library(path);
    if (!library.IsLoaded()) {
        return false;
    }
    const bool isPicked = Pick(library, host, base, round % 5);
    library.Release();
    return isPicked;
}

}  // namespace

int PlayRounds(const std::string& library, const std::string& base, int rounds) {
    constexpr int kWarm = 10;
    HostWindow host;
    if (!host.Create()) {
        return 2;
    }
    for (int round = 1; round <= rounds; ++round) {
        if (!PlayRound(host, library, base, round)) {
            return 3;
        }
        if (round == kWarm || round == rounds) {
            CatchUp();
            PrintLine(Measures());
            const std::string maps = Maps();
            PrintLine(std::to_string(std::ranges::count(maps, '\n')) + " " + std::to_string(PrivateMemory()));
            WaitForLine();
        }
    }
    return 0;
}

}  // namespace veldan
