#pragma once

#include "x11/Program.h"

#include <optional>
#include <string>
#include <vector>

namespace veldan {

struct XServerOptions {
    bool withManager = false;  ///< Runs a window manager too.
    bool overTcp = false;      ///< Also listens at TcpName().
    std::vector<std::string> arguments{};
};

/// An X server for one test, without a monitor, 1024 x 768 pixels. It and the programs started on it end with the
/// object or with the test's process.
class XServer {
public:
    explicit XServer(const XServerOptions& options = {});

    /// False if the server or its window manager couldn't be started, which is an error of the test.
    [[nodiscard]] bool IsRunning() const { return !m_name.empty(); }
    /// As in the variable DISPLAY, for instance ":7".
    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] std::string TcpName() const { return "127.0.0.1" + m_name; }
    /// Ends it as a crash would.
    void Kill();
    /// Runs a program on the server until it ends; true if its exit status is 0.
    [[nodiscard]] bool Run(const std::vector<std::string>& command) const;

private:
    [[nodiscard]] bool StartManager();

    std::string m_name;
    std::optional<Program> m_server;
    std::optional<Program> m_manager;
};

}  // namespace veldan
