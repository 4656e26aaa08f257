#include "platform/display/x11/X11Display.h"

#include "platform/display/x11/X11DisplayImpl.h"
#include "platform/display/x11/X11PipeGuard.h"
#include "platform/display/x11/X11Probe.h"

#include <utility>

namespace veldan {

std::unique_ptr<Display> CreateX11Display(const char* displayName) {
    const X11PipeGuard guard;
    const X11Probe probe(displayName);
    if (!probe.CanConnect()) {
        return nullptr;
    }
    auto connection = X11Connection::Open(displayName);
    if (!connection) {
        return nullptr;
    }
    const bool useRawPresses = connection->Features().rawPresses;
    return std::make_unique<X11Display>(std::move(connection), std::make_unique<SteadyClock>(), useRawPresses);
}

X11Display::X11Display(std::unique_ptr<X11Connection> connection, std::unique_ptr<Clock> clock, bool useRawPresses)
    : m_connection(std::move(connection)),
      m_clock(std::move(clock)),
      m_windows(*m_connection),
      m_marks(*m_connection),
      m_upload(*m_connection),
      m_keyboard(*m_connection),
      m_cursors(*m_connection),
      m_outside(*m_connection, m_windows, useRawPresses),
      m_focus(*m_connection, m_windows, *m_clock),
      m_activeWindow(*m_connection, m_windows),
      m_screen{m_connection->Screen()->width_in_pixels, m_connection->Screen()->height_in_pixels} {
    // Tell of a change of the screen's size, of the active window and of the current desktop.
    constexpr std::uint32_t kRootEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->Get(), m_connection->Root(), XCB_CW_EVENT_MASK, &kRootEvents);
    xcb_flush(m_connection->Get());
}

X11Display::~X11Display() {
    const X11PipeGuard guard;
    m_windows.Clear();
    xcb_flush(m_connection->Get());
    m_connection.reset();
}

X11TopLevel* X11Display::Living(TopLevelId id) const {
    return IsAlive() ? m_windows.Find(id) : nullptr;
}

void X11Display::CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) {
    if (!IsAlive() || m_windows.Find(id) != nullptr) {
        return;
    }
    const X11PipeGuard guard;
    m_windows.Add(std::make_unique<X11TopLevel>(*m_connection, id, traits, rect));
}

void X11Display::DestroyTopLevel(TopLevelId id) {
    const X11PipeGuard guard;
    const X11TopLevel* topLevel = m_windows.Find(id);
    if (topLevel == nullptr) {
        return;
    }
    OnHidden(*topLevel);
    m_windows.Remove(id);
    m_outside.SetActive(m_windows.IsAnyVisible());
}

void X11Display::SetTitle(TopLevelId id, const std::string& title) {
    const X11PipeGuard guard;
    if (X11TopLevel* topLevel = Living(id)) {
        topLevel->SetTitle(title);
    }
}

void X11Display::SetRect(TopLevelId id, const CRect& rect) {
    const X11PipeGuard guard;
    if (X11TopLevel* topLevel = Living(id)) {
        topLevel->SetRect(rect);
    }
}

void X11Display::SetVisible(TopLevelId id, bool visible) {
    const X11PipeGuard guard;
    X11TopLevel* topLevel = Living(id);
    if (topLevel == nullptr || topLevel->IsVisible() == visible) {
        return;
    }
    topLevel->SetVisible(visible);
    if (visible) {
        m_focus.OnShow(*topLevel);
    } else {
        OnHidden(*topLevel);
        // The server takes it off the screen while the caller sees to the rest.
        xcb_flush(m_connection->Get());
    }
    if (topLevel->Traits().managed) {
        UpdateKeptOff();
    }
    m_outside.SetActive(m_windows.IsAnyVisible());
}

void X11Display::UpdateKeptOff() {
    for (const X11TopLevel* topLevel : m_windows.UpdateKeptOff()) {
        OnOffScreen(*topLevel);
    }
}

void X11Display::OnHidden(const X11TopLevel& topLevel) {
    m_focus.OnHide(topLevel);
    OnOffScreen(topLevel);
}

void X11Display::OnOffScreen(const X11TopLevel& topLevel) {
    if (m_pointerIn != topLevel.Id()) {
        return;
    }
    m_pointerIn = 0;
    m_ptLeft = m_ptLast;
}

void X11Display::Restack(TopLevelId id, StackPlace place, TopLevelId sibling) {
    const X11PipeGuard guard;
    X11TopLevel* topLevel = Living(id);
    if (topLevel == nullptr) {
        return;
    }
    const bool isUp = place == StackPlace::Top || place == StackPlace::Above;
    const xcb_stack_mode_t mode = isUp ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW;
    if (place == StackPlace::Top || place == StackPlace::Bottom) {
        topLevel->Restack(mode, XCB_NONE);
    } else if (const X11TopLevel* other = m_windows.Find(sibling)) {
        // The latest news tell which frame the manager has put around it.
        ReadEvents();
        topLevel->Restack(mode, other->Outermost());
    }
}

void X11Display::TakeFocus(TopLevelId id) {
    const X11PipeGuard guard;
    X11TopLevel* topLevel = Living(id);
    if (topLevel != nullptr && topLevel->Traits().takesFocus) {
        m_focus.Take(*topLevel);
    }
}

void X11Display::GiveBackFocus() {
    const X11PipeGuard guard;
    if (!IsAlive()) {
        return;
    }
    m_focus.EndStrayLosses();
    // The latest news of the focus mostly answer the question who has it.
    ReadEvents();
    m_focus.GiveBack();
}

std::shared_ptr<Surface> X11Display::MakeSurface(TopLevelId id, CSize size) {
    const X11PipeGuard guard;
    X11TopLevel* topLevel = Living(id);
    std::shared_ptr<Surface> surface = topLevel != nullptr ? topLevel->MakeSurface(m_upload, size) : nullptr;
    return surface ? surface : Display::MakeSurface(id, size);
}

void X11Display::Present(TopLevelId id, const Surface& pixels, const Region& dirty) {
    const X11PipeGuard guard;
    if (X11TopLevel* topLevel = Living(id)) {
        topLevel->Present(m_upload, pixels, dirty);
    }
}

void X11Display::SetCursor(TopLevelId id, CursorShape shape) {
    const X11PipeGuard guard;
    if (X11TopLevel* topLevel = Living(id)) {
        topLevel->SetCursor(m_cursors.Get(shape));
    }
}

CPoint X11Display::QueryPointer() {
    const X11PipeGuard guard;
    if (!IsAlive()) {
        return m_ptLast;
    }
    const auto reply =
        m_connection->Ask<&xcb_query_pointer_reply>(xcb_query_pointer(m_connection->Get(), m_connection->Root()));
    return reply ? CPoint{reply->root_x, reply->root_y} : m_ptLast;
}

void X11Display::ReleaseGrab() {
    if (!std::exchange(m_bButtonHeld, false) || !IsAlive()) {
        return;
    }
    const X11PipeGuard guard;
    xcb_ungrab_pointer(m_connection->Get(), XCB_CURRENT_TIME);
    xcb_flush(m_connection->Get());
}

std::uint64_t X11Display::Mark() {
    const X11PipeGuard guard;
    return m_marks.Set();
}

int X11Display::Descriptor() const {
    return IsAlive() ? xcb_get_file_descriptor(m_connection->Get()) : -1;
}

void X11Display::Flush() {
    const X11PipeGuard guard;
    if (IsAlive()) {
        xcb_flush(m_connection->Get());
    }
}

void X11Display::Sync() {
    const X11PipeGuard guard;
    if (IsAlive()) {
        const auto reply = m_connection->Ask<&xcb_get_input_focus_reply>(xcb_get_input_focus(m_connection->Get()));
    }
}

}  // namespace veldan
