#pragma once

#include "x11/Program.h"

#include <optional>
#include <string>
#include <vector>

namespace veldan {

struct XServerOptions {
    bool withManager = false;  ///< Runs a window manager too.
    bool overTcp = false;      ///< Also answers at TcpName().
    std::vector<std::string> arguments{};
};

/// An X server of a test's own, without a monitor, 1024 x 768 pixels. It and what was started on it end with the
/// object, or with the test's process.
class XServer {
public:
    explicit XServer(const XServerOptions& options = {});

    /// False where the server or its manager could not be started: a fault of the test.
    [[nodiscard]] bool IsRunning() const { return !m_name.empty(); }
    /// As in the variable DISPLAY, ":7" for instance.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] std::string TcpName() const { return "127.0.0.1" + m_name; }
    /// Ends it as a crash would.
    void Kill();
    /// Runs a program on the server to its end; whether it went well.
    [[nodiscard]] bool Run(const std::vector<std::string>& command) const;

private:
    [[nodiscard]] bool StartManager();

    std::string m_name;
    std::optional<Program> m_server;
    std::optional<Program> m_manager;
};

}  // namespace veldan
