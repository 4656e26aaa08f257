#include "e2e/loader/ProcessState.h"

#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <filesystem>

namespace veldan {

namespace {

std::string SignalHandlers() {
    std::string text;
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0) {
            text += std::to_string(reinterpret_cast<std::uintptr_t>(action.sa_handler)) + "," +
                    std::to_string(action.sa_flags) + ";";
        }
    }
    return text;
}

std::string SignalMask() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    std::string text;
    for (int signal = 1; signal < NSIG; ++signal) {
        text += sigismember(&mask, signal) == 1 ? '1' : '0';
    }
    sigpending(&mask);
    return text + (sigismember(&mask, SIGPIPE) == 1 ? " pending" : "");
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

}  // namespace

std::map<std::string, std::string> StateOfProcess() {
    return {
        {"locale", std::setlocale(LC_ALL, nullptr)}, {"handlers", SignalHandlers()}, {"mask", SignalMask()},
        {"folder", std::filesystem::current_path()}, {"environment", Variables()},   {"umask", CreationMask()},
    };
}

}  // namespace veldan
