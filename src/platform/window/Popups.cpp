#include "platform/window/Popups.h"

#include <algorithm>

namespace veldan {

bool Popups::Open(HWND popup, HWND owner) {
    const std::size_t place = PlaceOf(owner);
    CancelFrom(place < m_chain.size() ? place + 1 : 0);
    if (m_tree.Find(popup) == nullptr || m_tree.Find(owner) == nullptr) {
        return false;
    }
    m_chain.push_back({popup, owner});
    m_context.GetDisplay().ReleaseGrab();
    return true;
}

void Popups::Close(HWND popup) {
    const auto found = std::ranges::find(m_chain, popup, &Link::popup);
    if (found != m_chain.end()) {
        const auto place = static_cast<std::size_t>(found - m_chain.begin());
        CancelFrom(place + 1);
        if (place < m_chain.size() && m_chain[place].popup == popup) {
            m_chain.resize(place);
        }
    }
}

bool Popups::LetsThrough(HWND window) const {
    return m_chain.empty() || PlaceOf(window) < m_chain.size();
}

bool Popups::EatsPress(HWND window) {
    if (m_chain.empty()) {
        return false;
    }
    const std::size_t place = PlaceOf(window);
    const bool isOutside = place == m_chain.size();
    CancelFrom(isOutside ? 0 : place + 1);
    return isOutside;
}

/// The popup of the chain that a window lies in, or the length of the chain.
std::size_t Popups::PlaceOf(HWND window) const {
    const auto found =
        std::ranges::find_if(m_chain, [&](const Link& link) { return m_tree.IsWithin(window, link.popup); });
    return static_cast<std::size_t>(found - m_chain.begin());
}

/// From the last one on: each is out of the chain before it hears of its end.
void Popups::CancelFrom(std::size_t place) {
    while (m_chain.size() > place) {
        const HWND popup = m_chain.back().popup;
        m_chain.pop_back();
        m_messenger.Send(popup, WM_CANCELMODE);
    }
}

void Popups::CancelOwnedBy(HWND window) {
    const auto found =
        std::ranges::find_if(m_chain, [&](const Link& link) { return m_tree.IsWithin(link.owner, window); });
    CancelFrom(static_cast<std::size_t>(found - m_chain.begin()));
}

void Popups::OnHidden(HWND window) {
    Close(window);
    CancelOwnedBy(window);
}

void Popups::OnEnabledChanged(HWND window, bool enabled) {
    if (!enabled) {
        CancelOwnedBy(window);
    }
}

void Popups::OnDestroyed(HWND window) {
    Close(window);
    CancelOwnedBy(window);
}

}  // namespace veldan
