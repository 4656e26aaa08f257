#include "e2e/loader/Host.h"

#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <filesystem>
#include <map>

namespace veldan {

namespace {

std::string Signals() {
    sigset_t mask;
    sigset_t pending;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    sigpending(&pending);
    std::string text;
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        text += std::to_string(reinterpret_cast<std::uintptr_t>(action.sa_handler)) + "," +
                std::to_string(action.sa_flags) + (sigismember(&mask, signal) == 1 ? " held" : "") +
                (sigismember(&pending, signal) == 1 ? " pending;" : ";");
    }
    return text;
}

std::string Variables() {
    std::string text;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        text += *variable + std::string("\n");
    }
    return text;
}

std::string CreationMask() {
    const mode_t mask = umask(0);
    umask(mask);
    return std::to_string(mask);
}

/// What a library must not change about its host, by name.
std::map<std::string, std::string> StateOfProcess() {
    return {{"locale", std::setlocale(LC_ALL, nullptr)},
            {"signals", Signals()},
            {"folder", std::filesystem::current_path()},
            {"environment", Variables()},
            {"umask", CreationMask()}};
}

}  // namespace

int PlayOnce(const std::string& path, const std::string& base) {
    const auto before = StateOfProcess();
    {
        const Library library(path);
        HostWindow host;
        if (!library.IsLoaded() || !host.Create()) {
            return 2;
        }
        PrintLine(std::string(Desktop::Get().GetDisplay().Name()));
        PrintLine(Pick(library, host, base, 0) ? host.m_strPicked : "nothing picked");
        library.Release();
    }
    std::string changed = "changed:";
    for (const auto& [name, value] : StateOfProcess()) {
        changed += value != before.at(name) ? " " + name : "";
    }
    PrintLine(changed);
    return 0;
}

}  // namespace veldan
