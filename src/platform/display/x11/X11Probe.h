#pragma once

#include <semaphore>
#include <thread>

namespace veldan {

/// An attempt to connect to a display, null for the one that DISPLAY names, which tells whether a server answers there
/// and lets this process in. A server that refuses says why, and the connection library writes that to the standard
/// error output, which is the host's; so the attempt is made on a thread of its own with descriptors of its own, from
/// where the words reach nobody. It keeps its connection until it ends: a server may start anew when the last one goes.
class X11Probe {
public:
    explicit X11Probe(const char* displayName);
    ~X11Probe();
    X11Probe(const X11Probe&) = delete;
    X11Probe& operator=(const X11Probe&) = delete;

    /// Also true where the attempt couldn't be made.
    [[nodiscard]] bool CanConnect() const { return m_bCanConnect; }

private:
    void Connect();

    const char* m_pszDisplay;
    bool m_bCanConnect = true;
    std::binary_semaphore m_answered{0};
    std::binary_semaphore m_finished{0};
    std::thread m_thread;
};

}  // namespace veldan
