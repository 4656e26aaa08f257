#pragma once

#include "e2e/loader/Library.h"
#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <functional>
#include <string>

namespace veldan {

/// The host's window, which records what it receives.
class HostWindow : public CWnd {
public:
    static constexpr UINT kMsgPicked = WM_USER + 100;
    static constexpr UINT kMsgRun = WM_USER + 101;
    static constexpr CRect kPlace{0, 0, 300, 200};

    bool Create();

    std::string m_strPicked;
    std::function<void()> m_run;  ///< Called by kMsgRun.
    CPoint m_ptMouse{-1, -1};
    int m_nTimers = 0;
    int m_nPaints = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/// Where the menu is shown, beside the host's window.
inline constexpr CPoint kMenuPlace{400, 50};

/// The menu's window: the topmost one that isn't the host's. Null if there is none.
[[nodiscard]] HWND FindMenu(const HostWindow& host);

/// Makes the menu and picks a row of the second group; returns whether the host was notified.
[[nodiscard]] bool Pick(const Library& library, HostWindow& host, const std::string& base, int row);

/// The host's loop, which uses nothing but `poll` and Dispatch: true once the condition holds, false if the descriptor
/// isn't readable before that.
[[nodiscard]] bool LoopUntil(const std::function<bool()>& condition);

/// Runs the loop until there is nothing left to do and no event on its way.
void CatchUp();

/// Whether the descriptor is readable now.
[[nodiscard]] bool IsAwake();

/// Sends the test a line.
void PrintLine(const std::string& line);
/// Waits for a line from the test.
void WaitForLine();

// What the program can be asked to do; each function returns the exit status.

int PlayRounds(const std::string& library, const std::string& base, int rounds);
int PlayCalls(const std::string& library, const std::string& base);
int PlayLoss(const std::string& library, const std::string& base, bool noticed);
int PlayOnce(const std::string& library, const std::string& base);

}  // namespace veldan
