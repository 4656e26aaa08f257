#include "platform/window/Desktop.h"

#include "platform/display/DisplayFactory.h"
#include "platform/draw/Font.h"
#include "platform/window/Wnd.h"

#include <algorithm>
#include <utility>

namespace veldan {

namespace {

/// Left alone at the end of the process: windows of the host may still be there, and nobody waits for them.
Desktop*& TheDesktop() {
    static Desktop* desktop = nullptr;
    return desktop;
}

}  // namespace

Desktop::Desktop(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock)
    : m_clock(std::move(clock)), m_display(std::move(display)) {
    m_waitSet.Watch(m_display->Descriptor());
}

Desktop::~Desktop() = default;

Desktop& Desktop::Get() {
    Desktop*& desktop = TheDesktop();
    if (desktop == nullptr) {
        auto clock = std::make_unique<SteadyClock>();
        PrepareText();
        auto display = CreateDisplay(*clock);
        desktop = new Desktop(std::move(display), std::move(clock));
    }
    return *desktop;
}

std::unique_ptr<Desktop> Desktop::Install(std::unique_ptr<Desktop> desktop) {
    return std::unique_ptr<Desktop>(std::exchange(TheDesktop(), desktop.release()));
}

Display& Desktop::GetDisplay() {
    Wake();
    return *m_display;
}

const WindowRecord* Desktop::Find(HWND window) const {
    return m_table.Find(window);
}

std::size_t Desktop::WindowCount() const {
    return m_table.Count();
}

CWnd* Desktop::ObjectOf(HWND window) const {
    const WindowRecord* record = m_table.Find(window);
    return record != nullptr ? record->object : nullptr;
}

LRESULT Desktop::CallWindow(WindowRecord& record, UINT message, WPARAM wParam, LPARAM lParam, bool sent) {
    CWnd* object = record.object;
    if (object == nullptr) {
        return 0;
    }
    const MSG outer =
        std::exchange(m_currentMessage, MSG{record.handle, message, wParam, lParam, m_clock->Now(), m_ptPointer});
    if (m_observer) {
        m_observer(m_currentMessage, sent);
    }
    const LRESULT result = object->WindowProc(message, wParam, lParam);
    m_currentMessage = outer;
    return result;
}

LRESULT Desktop::SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    WindowRecord* record = m_table.Find(window);
    return record != nullptr ? CallWindow(*record, message, wParam, lParam, true) : 0;
}

bool Desktop::PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_table.Find(window) == nullptr) {
        return false;
    }
    m_posted.push_back({window, message, wParam, lParam, m_clock->Now(), m_ptPointer});
    Wake();
    return true;
}

HWND Desktop::ParentOf(HWND window) const {
    const WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return {};
    }
    return record->IsChild() ? record->parent : record->topLevel->owner;
}

HWND Desktop::TopLevelOf(HWND window) const {
    const WindowRecord* record = m_table.Find(window);
    while (record != nullptr && record->IsChild()) {
        record = m_table.Find(record->parent);
    }
    return record != nullptr ? record->handle : HWND();
}

bool Desktop::IsWithin(HWND window, HWND ancestor) const {
    const WindowRecord* record = m_table.Find(window);
    while (record != nullptr && record->handle != ancestor) {
        record = record->IsChild() ? m_table.Find(record->parent) : nullptr;
    }
    return record != nullptr;
}

HWND Desktop::ChildWithId(HWND parent, UINT id) const {
    const WindowRecord* record = m_table.Find(parent);
    if (record == nullptr) {
        return {};
    }
    for (const ChildList::Entry& entry : record->children.Entries()) {
        const WindowRecord* child = m_table.Find(entry.window);
        if (child != nullptr && child->id == id) {
            return entry.window;
        }
    }
    return {};
}

std::vector<HWND> Desktop::VisibleChildrenOf(HWND parent) const {
    std::vector<HWND> children;
    if (const WindowRecord* record = m_table.Find(parent)) {
        record->children.ForVisible([&](const ChildList::Entry& entry) {
            children.push_back(entry.window);
            return true;
        });
    }
    return children;
}

HWND Desktop::DefaultOwner() const {
    if (m_active) {
        return m_active;
    }
    const auto isFrame = [this](HWND window) {
        const WindowRecord* record = m_table.Find(window);
        return record->visible && (record->style & WS_POPUP) == 0;
    };
    const auto found = std::ranges::find_if(m_topLevels, isFrame);
    return found != m_topLevels.end() ? *found : HWND();
}

bool Desktop::ModifyStyle(HWND window, UINT remove, UINT add) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return false;
    }
    const UINT style = (record->style & ~remove) | add;
    return std::exchange(record->style, style) != style;
}

void Desktop::SetOpaque(HWND window) {
    if (WindowRecord* record = m_table.Find(window)) {
        record->opaque = true;
    }
}

void Desktop::SetText(HWND window, const CString& text) {
    WindowRecord* record = m_table.Find(window);
    if (record == nullptr) {
        return;
    }
    record->text = text;
    if (!record->IsChild()) {
        GetDisplay().SetTitle(window.Value(), text);
    }
}

}  // namespace veldan
