#include "MenuWindow.h"

#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <algorithm>

using namespace veldan;

namespace {

constexpr int kGap = 2;

/// Null before Init and after Release.
const CWnd* FindMenu() {
    for (const HWND window : Desktop::Get().TopLevels()) {
        const CWnd* object = CWnd::FromHandle(window);
        if (object != nullptr && object->GetWindowText() == "veldan menu") {
            return object;
        }
    }
    return nullptr;
}

/// The start of an interval of this length, as near to `wish` as possible and between `from` and `to`. If it is too
/// long for that, it starts at `from`.
int ShiftInto(int from, int to, int wish, int length) {
    return std::max(from, std::min(wish, to - length));
}

}  // namespace

bool IsMenuVisible() {
    const CWnd* menu = FindMenu();
    return menu != nullptr && menu->IsWindowVisible();
}

CSize MenuSize() {
    const CWnd* menu = FindMenu();
    return menu != nullptr ? menu->GetWindowRect().Size() : CSize();
}

CPoint MenuPlaceBeside(const CRect& button) {
    const CSize size = MenuSize();
    const CRect screen = Desktop::Get().GetDisplay().ScreenRect();
    const int below = button.bottom + kGap;
    const int above = button.top - kGap - size.cy;
    const bool isAbove = below + size.cy > screen.bottom && above >= screen.top;
    return {ShiftInto(screen.left, screen.right, button.left, size.cx),
            ShiftInto(screen.top, screen.bottom, isAbove ? above : below, size.cy)};
}
