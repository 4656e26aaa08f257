#pragma once

#include "platform/window/Wnd.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace veldan {

constexpr UINT kPickMessage = 7000;

/// A host's window, which records what was picked by kPickMessage or one of the nine messages after it.
class HostWnd : public CWnd {
public:
    std::vector<CString> picks;
    UINT lastMessage = 0;
    std::function<void()> onPick;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message < kPickMessage || message >= kPickMessage + 10) {
            return CWnd::WindowProc(message, wParam, lParam);
        }
        EXPECT_EQ(wParam, 0U);
        lastMessage = message;
        picks.emplace_back(reinterpret_cast<const char*>(lParam));
        if (onPick) {
            onPick();
        }
        return 0;
    }
};

}  // namespace veldan
