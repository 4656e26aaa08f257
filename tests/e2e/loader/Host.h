#pragma once

#include "e2e/loader/Library.h"
#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <functional>
#include <string>

namespace veldan {

/// The host's window. It writes down what comes to it.
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

/// Where the menu is shown; its groups and rows are out of the host's way.
inline constexpr CPoint kMenuPlace{400, 50};

/// The menu's window, found as the highest that isn't the host's; null for none.
[[nodiscard]] HWND FindMenu(const HostWindow& host);

/// Makes the menu and picks a row of the second group; whether the host heard of it.
[[nodiscard]] bool Pick(const Library& library, HostWindow& host, const std::string& base, int row);

/// The host's loop, with nothing but `poll` and Dispatch: true once the condition holds, false where the descriptor
/// stays quiet before.
[[nodiscard]] bool LoopUntil(const std::function<bool()>& condition);

/// Goes round the loop until nothing is left to do and nothing is on its way.
void CatchUp();

/// Whether the descriptor is readable now.
[[nodiscard]] bool IsAwake();

/// Tells the test a line.
void Tell(const std::string& line);
/// Waits for the test's word.
void Listen();

// What the program can be asked for; each gives the exit status.

int PlayRounds(const std::string& library, const std::string& base, int rounds);
int PlayCalls(const std::string& library, const std::string& base);
int PlayLoss(const std::string& library, const std::string& base, bool noticed);
int PlayOnce(const std::string& library, const std::string& base);

}  // namespace veldan
