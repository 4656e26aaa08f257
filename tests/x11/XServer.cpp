#include "x11/XServer.h"

#include "x11/Wait.h"
#include "x11/XHand.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace veldan {

namespace {

// Starts a program quietly on a display; `kept` stays open in it. It never outlives the test.
pid_t Spawn(const std::vector<std::string>& command, const std::string& display, int kept = -1) {
    const pid_t child = fork();
    if (child != 0) return child;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
    if (kept >= 0) fcntl(kept, F_SETFD, 0);
    setenv("DISPLAY", display.c_str(), 1);
    // A person's own settings must not change what the programs do.
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(strdup(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

void End(pid_t& process, int signal) {
    if (process <= 0) return;
    kill(process, signal);
    waitpid(process, nullptr, 0);
    process = 0;
}

// One line, however many pieces it comes in; empty where it never ends.
std::string ReadLine(int descriptor) {
    std::string line;
    char character = 0;
    pollfd wanted{descriptor, POLLIN, 0};
    const int patience = static_cast<int>(std::chrono::milliseconds(kPatience).count());
    while (poll(&wanted, 1, patience) == 1 && read(descriptor, &character, 1) == 1) {
        if (character == '\n') return line;
        line += character;
    }
    return {};
}

}  // namespace

XServer::XServer(const XServerOptions& options) {
    Start(options);
    if (IsRunning() && options.withManager && !StartManager()) Kill();
}

XServer::~XServer() {
    End(m_manager, SIGTERM);
    End(m_server, SIGTERM);
}

void XServer::Start(const XServerOptions& options) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    std::vector<std::string> command = {"Xvfb",     "-displayfd", std::to_string(ends[1]),
                                        "-screen",  "0",          "1024x768x24",
                                        "-noreset", "-ac",        options.overTcp ? "-listen" : "-nolisten",
                                        "tcp"};
    command.insert(command.end(), options.arguments.begin(), options.arguments.end());
    m_server = Spawn(command, "", ends[1]);
    close(ends[1]);
    const std::string number = ReadLine(ends[0]);
    close(ends[0]);
    if (!number.empty()) m_name = ":" + number;
}

bool XServer::StartManager() {
    m_manager = Spawn({"openbox", "--sm-disable"}, m_name);
    // It is at work when it has taken a window in hand: it announces itself before, and may let an early wish lie until
    // the next one comes.
    XForeignWindow probe(m_name, {0, 0, 1, 1}, 0, XForeignWindow::Kind::Managed);
    return WaitUntil([&] {
        probe.Show();
        return probe.IsDecorated();
    });
}

void XServer::Kill() {
    End(m_server, SIGKILL);
    m_name.clear();
}

bool XServer::Run(const std::vector<std::string>& command) const {
    int status = 0;
    return waitpid(Spawn(command, m_name), &status, 0) > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace veldan
