#pragma once

#include <cstdio>

#include <sys/resource.h>

/// Resident memory of this process in KiB, 0 if it is unknown.
[[nodiscard]] inline long ResidentKb() {
    long kilobytes = 0;
    if (std::FILE* file = std::fopen("/proc/self/smaps_rollup", "r")) {
        char line[256];
        while (kilobytes == 0 && std::fgets(line, sizeof line, file) != nullptr) {
            std::sscanf(line, "Rss: %ld", &kilobytes);
        }
        std::fclose(file);
    }
    return kilobytes;
}

/// The most that it ever was.
[[nodiscard]] inline long PeakKb() {
    rusage usage = {};
    return getrusage(RUSAGE_SELF, &usage) == 0 ? usage.ru_maxrss : 0;
}
