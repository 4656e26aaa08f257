#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using Watch = std::chrono::steady_clock;

inline double MsSince(Watch::time_point begin) {
    return std::chrono::duration<double, std::milli>(Watch::now() - begin).count();
}

/// Processor time of this process, which other programs on the machine hardly change.
inline double CpuMs() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

inline double Median(std::vector<double> values) {
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

inline void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

/// How long it takes to write a file of that many bytes anew and sync it, and no more; 0 if that fails.
inline double BareWriteMs(const std::filesystem::path& path, std::size_t size) {
    const std::string bytes(size, 'x');
    const Watch::time_point begin = Watch::now();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const bool isGood = write(file, bytes.data(), bytes.size()) == std::ssize(bytes) && fsync(file) == 0;
    close(file);
    return isGood ? MsSince(begin) : 0;
}
