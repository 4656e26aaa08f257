#include "e2e/loader/Host.h"

#include "x11/Wait.h"

#include <poll.h>
#include <unistd.h>

namespace veldan {

namespace {

/// Not one of the standard streams, on which nothing must be written.
constexpr int kLinesDescriptor = 3;

}  // namespace

bool HostWindow::Create() {
    return CreateEx(0, kPlainClass, "loader", WS_OVERLAPPED, kPlace, {}, 0) && (ShowWindow(SW_SHOW), true);
}

LRESULT HostWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kMsgPicked:
            m_strPicked = reinterpret_cast<const char*>(lParam);
            return 0;
        case kMsgRun:
            m_run();
            return 0;
        case WM_MOUSEMOVE:
            m_ptMouse = {SignedLoWord(lParam), SignedHiWord(lParam)};
            break;
        case WM_TIMER:
            ++m_nTimers;
            break;
        case WM_PAINT:
            ++m_nPaints;
            break;
        default:
            break;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

HWND FindMenu(const HostWindow& host) {
    for (const HWND window : Desktop::Get().TopLevels()) {
        if (window != host.GetSafeHwnd() && Desktop::Get().IsVisible(window)) {
            return window;
        }
    }
    return {};
}

bool Pick(const Library& library, HostWindow& host, const std::string& base, int row) {
    constexpr UINT kMsgGroupHover = 0x6bd;
    constexpr UINT kMsgItemClick = 0x6c7;
    constexpr WPARAM kSecondGroup = 4001;
    constexpr WPARAM kFirstRow = 1000;
    host.m_strPicked.clear();
    library.Init(&host, base.c_str());
    library.Show(&host, kMenuPlace.x, kMenuPlace.y, HostWindow::kMsgPicked);
    CatchUp();
    const HWND menu = FindMenu(host);
    Desktop::Get().PostMessage(menu, kMsgGroupHover, kSecondGroup);
    CatchUp();
    Desktop::Get().SendMessage(menu, kMsgItemClick, kFirstRow + static_cast<WPARAM>(row));
    CatchUp();
    return !host.m_strPicked.empty();
}

bool LoopUntil(const std::function<bool()>& condition) {
    // Shorter than the test's own, so that the test is told of the fault.
    constexpr std::chrono::milliseconds kLoopPatience = kPatience / 2;
    const auto end = std::chrono::steady_clock::now() + kLoopPatience;
    while (!condition()) {
        pollfd descriptor{Desktop::Get().Descriptor(), POLLIN, 0};
        if (poll(&descriptor, 1, static_cast<int>(kLoopPatience.count())) != 1 ||
            std::chrono::steady_clock::now() > end) {
            return false;
        }
        Desktop::Get().Dispatch();
    }
    return true;
}

void CatchUp() {
    for (int i = 0; i < 3; ++i) {
        Desktop::Get().GetDisplay().Sync();
        Desktop::Get().Dispatch();
    }
}

bool IsAwake() {
    pollfd descriptor{Desktop::Get().Descriptor(), POLLIN, 0};
    return poll(&descriptor, 1, 0) != 0;
}

void PrintLine(const std::string& line) {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(kLinesDescriptor, text.data(), text.size());
}

void WaitForLine() {
    char character = 0;
    while (read(STDIN_FILENO, &character, 1) == 1 && character != '\n') {
    }
}

}  // namespace veldan
