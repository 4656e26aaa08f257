#include "platform/window/OutsidePresses.h"

#include <algorithm>
#include <iterator>

namespace veldan {

namespace {

/// A popup that a person can press in; a tooltip is none.
bool IsShownPopup(const WindowRecord& record) {
    return record.visible && (record.style & WS_POPUP) != 0 && (record.exStyle & WS_EX_TRANSPARENT) == 0;
}

bool Counts(const DisplayEvent& press, const WindowRecord& topLevel) {
    return press.mark >= topLevel.topLevel->shownAt;
}

}  // namespace

void OutsidePresses::TakeForeign(const DisplayEvent& press) {
    if (m_popups.EatsPress({})) {
        return;
    }
    const WindowRecord* active = m_tree.Find(m_activation.Active());
    if (active == nullptr || Counts(press, *active)) {
        m_activation.Deactivate();
    }
    Tell(press);
}

void OutsidePresses::Tell(const DisplayEvent& press) {
    // A press that a window was given because it holds the pointer may be outside of it.
    const HWND window = HWND::FromValue(press.window);
    const HWND hit = m_tree.WindowRect(window).Contains(press.screen) ? window : HWND();
    std::vector<HWND> told;
    std::ranges::copy_if(m_tree.TopLevels(), std::back_inserter(told), [&](HWND popup) {
        const WindowRecord& record = *m_tree.Find(popup);
        return popup != hit && IsShownPopup(record) && Counts(press, record) && !OwnsShownPopup(popup);
    });
    for (const HWND popup : told) {
        m_messenger.Send(popup, WM_OUTSIDEPRESS);
    }
}

bool OutsidePresses::OwnsShownPopup(HWND owner) const {
    return std::ranges::any_of(m_tree.TopLevels(), [&](HWND window) {
        if (!IsShownPopup(*m_tree.Find(window))) {
            return false;
        }
        do {
            window = m_tree.ParentOf(window);
        } while (window && window != owner);
        return static_cast<bool>(window);
    });
}

}  // namespace veldan
