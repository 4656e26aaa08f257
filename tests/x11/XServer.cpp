#include "x11/XServer.h"

#include "x11/Wait.h"
#include "x11/XHand.h"

#include <csignal>

namespace veldan {

namespace {

/// The user's settings must not change what the programs do.
Program::Environment On(const std::string& display) {
    return {{"DISPLAY", display}, {"XDG_CONFIG_HOME", "/nonexistent"}};
}

}  // namespace

XServer::XServer(const XServerOptions& options) {
    constexpr int kNumber = 3;
    std::vector<std::string> command = {"Xvfb", "-displayfd", std::to_string(kNumber), "-screen", "0", "1024x768x24"};
    command.insert(command.end(), {"-noreset", "-ac", options.overTcp ? "-listen" : "-nolisten", "tcp"});
    command.insert(command.end(), options.arguments.begin(), options.arguments.end());
    m_server.emplace(command, Program::Environment(), kNumber);
    const std::string number = m_server->Line();
    if (!number.empty()) {
        m_name = ":" + number;
    }
    if (IsRunning() && options.withManager && !StartManager()) {
        Kill();
    }
}

bool XServer::StartManager() {
    m_manager.emplace(std::vector<std::string>{"openbox", "--sm-disable"}, On(m_name));
    // It works once it manages a window. It announces itself earlier, and may leave an early request unhandled until
    // the next one comes.
    XForeignWindow probe(m_name, {0, 0, 1, 1}, 0, XForeignWindow::Kind::Managed);
    return WaitUntil([&] { return probe.Show(); });
}

void XServer::Kill() {
    m_server->End(SIGKILL);
    m_name.clear();
}

bool XServer::Run(const std::vector<std::string>& command) const {
    return Program(command, On(m_name)).Finish() == 0;
}

}  // namespace veldan
