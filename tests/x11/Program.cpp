#include "x11/Program.h"

#include "x11/Wait.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace veldan {

namespace {

[[noreturn]] void Become(const std::vector<std::string>& command, const Program::Environment& variables) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    unsetenv("DISPLAY");
    unsetenv("VELDAN_DISPLAY");
    for (const auto& [name, value] : variables) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> arguments;
    for (std::string argument : command) {
        arguments.push_back(strdup(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

Program::Program(const std::vector<std::string>& command, const Environment& variables, int linesDescriptor)
    : m_strayOutput(memfd_create("stray output", MFD_CLOEXEC)) {
    // Not inherited by other programs.
    int input[2] = {-1, -1};
    int lines[2] = {-1, -1};
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(lines, O_CLOEXEC) != 0) {
        return;
    }
    m_process = fork();
    if (m_process == 0) {
        // Duplicates that don't clash with the numbers used below.
        constexpr int kFree = 10;
        const int linesEnd = fcntl(lines[1], F_DUPFD_CLOEXEC, kFree);
        const int standardInput = fcntl(input[0], F_DUPFD_CLOEXEC, kFree);
        const int strayOutput = fcntl(m_strayOutput, F_DUPFD_CLOEXEC, kFree);
        dup2(standardInput, STDIN_FILENO);
        dup2(strayOutput, STDOUT_FILENO);
        dup2(strayOutput, STDERR_FILENO);
        dup2(linesEnd, linesDescriptor);
        Become(command, variables);
    }
    close(input[0]);
    close(lines[1]);
    m_input = input[1];
    m_lines = lines[0];
}

Program::~Program() {
    End(SIGTERM);
    for (const int descriptor : {m_input, m_lines, m_strayOutput}) {
        close(descriptor);
    }
}

void Program::End(int signal) {
    if (m_process > 0) {
        kill(m_process, signal);
        waitpid(m_process, nullptr, 0);
    }
    m_process = 0;
}

bool Program::ReadSome() {
    pollfd wanted{m_lines, POLLIN, 0};
    std::array<char, 4096> bytes{};
    const int patience = static_cast<int>(std::chrono::milliseconds(kPatience).count());
    if (poll(&wanted, 1, patience) != 1) {
        return false;
    }
    const ssize_t count = read(m_lines, bytes.data(), bytes.size());
    if (count <= 0) {
        return false;
    }
    m_strUnread.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

std::string Program::Line() {
    std::size_t end = 0;
    while ((end = m_strUnread.find('\n')) == std::string::npos) {
        if (!ReadSome()) {
            return {};
        }
    }
    const std::string line = m_strUnread.substr(0, end);
    m_strUnread.erase(0, end + 1);
    return line;
}

std::string Program::Rest() {
    while (ReadSome()) {
    }
    return std::exchange(m_strUnread, {});
}

void Program::SendLine(const std::string& line) const {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(m_input, text.data(), text.size());
}

int Program::Finish() {
    int status = 0;
    if (!WaitUntil([&] { return waitpid(m_process, &status, WNOHANG) != 0; })) {
        return -1;
    }
    m_process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string Program::StrayOutput() const {
    std::string text(static_cast<std::size_t>(lseek(m_strayOutput, 0, SEEK_END)), '\0');
    const ssize_t count = pread(m_strayOutput, text.data(), text.size(), 0);
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

}  // namespace veldan
