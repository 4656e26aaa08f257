#include "platform/window/Desktop.h"

#include "platform/core/Keys.h"
#include "platform/display/DisplayFactory.h"
#include "platform/draw/Font.h"
#include "platform/window/MessageLoop.h"
#include "platform/window/WindowLife.h"

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

/// Each part knows those above it only.
struct Desktop::Parts {
    Parts(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock)
        : context(std::move(display), std::move(clock)) {
        tree.ListenToDestruction(queue);
        tree.ListenToDestruction(timers);
        // A hidden or disabled window loses the capture before the focus.
        tree.Listen(painting);
        tree.Listen(popups);
        tree.Listen(pointer);
        tree.Listen(activation);
    }

    DesktopContext context;
    WindowTree tree;
    Messenger messenger{tree, context.GetClock()};
    MessageQueue queue{context, tree, messenger};
    InputQueue events{context};
    Timers timers{context, tree, messenger};
    Surfaces surfaces{context, tree};
    Painting painting{context, tree, messenger, surfaces};
    Popups popups{context, tree, messenger};
    TopLevelStack stack{context, tree};
    FrameFlash flash{context, tree, painting, surfaces};
    Activation activation{context, tree, messenger, events, popups, stack, flash};
    OutsidePresses outside{tree, messenger, activation, popups};
    Pointer pointer{context, tree, messenger, queue, activation, popups, outside};
    Keyboard keyboard{tree, messenger, queue, activation, popups};
    WindowState state{context, tree, messenger, events, stack, painting, surfaces, activation};
    WindowLife life{context, tree, messenger, state};
    Input input{tree, events, queue, pointer, keyboard, activation, outside, state};
    MessageLoop loop{context, messenger, queue, events, input, painting, surfaces, pointer, keyboard, timers, flash};
};

Desktop::Desktop(std::unique_ptr<Display> display, std::unique_ptr<Clock> clock)
    : m_parts(std::make_unique<Parts>(std::move(display), std::move(clock))) {}

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
    return m_parts->context.GetDisplay();
}

const Clock& Desktop::GetClock() const {
    return m_parts->context.GetClock();
}

const WindowRecord* Desktop::Find(HWND window) const {
    return m_parts->tree.Find(window);
}

CWnd* Desktop::ObjectOf(HWND window) const {
    const WindowRecord* record = Find(window);
    return record != nullptr ? record->object : nullptr;
}

const std::vector<HWND>& Desktop::TopLevels() const {
    return m_parts->tree.TopLevels();
}

std::size_t Desktop::WindowCount() const {
    return m_parts->tree.Count();
}

void Desktop::SetObserver(MessageObserver observer) {
    m_parts->messenger.SetObserver(std::move(observer));
}

int Desktop::Descriptor() const {
    return std::as_const(m_parts->context).GetWaitSet().Descriptor();
}

void Desktop::Dispatch() {
    m_parts->loop.Dispatch();
}

int Desktop::Run() {
    return m_parts->loop.Run();
}

bool Desktop::PumpMessage() {
    return m_parts->loop.Pump();
}

bool Desktop::RunWhile(const std::function<bool()>& goesOn) {
    return m_parts->loop.RunWhile(goesOn);
}

void Desktop::SetWaitFunction(WaitFunction wait) {
    m_parts->loop.SetWaitFunction(std::move(wait));
}

bool Desktop::PeekMessage(MSG& message) {
    return m_parts->loop.Peek(message);
}

void Desktop::TranslateAndDispatch(MSG& message) {
    m_parts->loop.TranslateAndDispatch(message);
}

void Desktop::PostQuitMessage(int result) {
    m_parts->queue.PostQuit(result);
}

void Desktop::Settle() {
    m_parts->loop.Settle();
}

HWND Desktop::CreateWindow(CWnd& object, const WindowClass& windowClass, const CREATESTRUCT& create) {
    return m_parts->life.Create(object, windowClass, create);
}

bool Desktop::DestroyWindow(HWND window) {
    return m_parts->life.Destroy(window);
}

bool Desktop::ReplaceObject(HWND window, CWnd& object) {
    return m_parts->life.ReplaceObject(window, object);
}

void Desktop::DetachObject(HWND window) {
    m_parts->life.DetachObject(window);
}

LRESULT Desktop::SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return m_parts->messenger.Send(window, message, wParam, lParam);
}

bool Desktop::PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return m_parts->queue.Post(window, message, wParam, lParam);
}

const MSG& Desktop::CurrentMessage() const {
    return m_parts->messenger.Current();
}

short Desktop::GetKeyState(UINT key) const {
    constexpr std::pair<UINT, UINT> kFlags[] = {{VK_SHIFT, MK_SHIFT},     {VK_CONTROL, MK_CONTROL},
                                                {VK_MENU, MK_ALT},        {VK_LBUTTON, MK_LBUTTON},
                                                {VK_RBUTTON, MK_RBUTTON}, {VK_MBUTTON, MK_MBUTTON}};
    const auto* found = std::ranges::find(kFlags, key, &std::pair<UINT, UINT>::first);
    return found != std::end(kFlags) && (CurrentMessage().flags & found->second) != 0 ? -1 : 0;
}

MSG Desktop::ExchangeCurrentMessage(const MSG& message) {
    return m_parts->messenger.ExchangeCurrent(message);
}

HWND Desktop::ParentOf(HWND window) const {
    return m_parts->tree.ParentOf(window);
}

HWND Desktop::TopLevelOf(HWND window) const {
    return m_parts->tree.TopLevelOf(window);
}

bool Desktop::IsWithin(HWND window, HWND ancestor) const {
    return m_parts->tree.IsWithin(window, ancestor);
}

HWND Desktop::ChildWithId(HWND parent, UINT id) const {
    return m_parts->tree.ChildWithId(parent, id);
}

std::vector<HWND> Desktop::VisibleChildrenOf(HWND parent) const {
    return m_parts->tree.VisibleChildrenOf(parent);
}

HWND Desktop::DefaultOwner() const {
    return Active() ? Active() : m_parts->tree.TopmostVisibleFrame();
}

CRect Desktop::WindowRect(HWND window) const {
    return m_parts->tree.WindowRect(window);
}

bool Desktop::IsVisible(HWND window) const {
    return m_parts->tree.IsVisible(window);
}

bool Desktop::ShowWindow(HWND window, ShowCommand command) {
    return m_parts->state.Show(window, command);
}

bool Desktop::PlaceWindow(HWND window, const CRect& rect, Stacking stacking, HWND sibling, UINT flags) {
    return m_parts->state.Place(window, rect, stacking, sibling, flags);
}

bool Desktop::EnableWindow(HWND window, bool enable, HWND modal) {
    return m_parts->state.Enable(window, enable, modal);
}

bool Desktop::TakesInput(HWND window) const {
    return m_parts->tree.TakesInput(window);
}

bool Desktop::ModifyStyle(HWND window, UINT remove, UINT add) {
    return m_parts->state.ModifyStyle(window, remove, add);
}

void Desktop::SetOpaque(HWND window) {
    if (WindowRecord* record = m_parts->tree.Find(window)) {
        record->opaque = true;
    }
}

void Desktop::SetText(HWND window, const CString& text) {
    m_parts->state.SetText(window, text);
}

HWND Desktop::WindowAt(HWND topLevel, CPoint screen) const {
    return m_parts->tree.WindowAt(topLevel, screen);
}

void Desktop::Invalidate(HWND window, const CRect& client, bool erase) {
    if (WindowRecord* record = m_parts->tree.Find(window)) {
        m_parts->painting.Invalidate(*record, client, erase);
    }
}

void Desktop::UpdateWindow(HWND window) {
    m_parts->painting.Update(window);
    if (const WindowRecord* topLevel = Find(TopLevelOf(window))) {
        m_parts->surfaces.Present(*topLevel);
        m_parts->context.GetDisplayQuietly().Flush();
    }
}

HDC Desktop::WindowDC(HWND window) {
    return m_parts->painting.WindowDC(window);
}

HDC Desktop::BeginPaint(HWND window, Region& area) {
    return m_parts->painting.BeginPaint(window, area);
}

void Desktop::MarkDrawn(HWND window) {
    if (const WindowRecord* record = Find(window)) {
        m_parts->surfaces.AddDirty(window, m_parts->tree.VisibleRegion(*record));
    }
}

HWND Desktop::Focus() const {
    return m_parts->activation.Focus();
}

HWND Desktop::Active() const {
    return m_parts->activation.Active();
}

HWND Desktop::SetFocus(HWND window) {
    return m_parts->activation.SetFocus(window);
}

void Desktop::Activate(HWND topLevel) {
    m_parts->activation.Activate(topLevel);
}

void Desktop::Deactivate() {
    m_parts->activation.Deactivate();
}

bool Desktop::OpenPopup(HWND popup, HWND owner) {
    return m_parts->popups.Open(popup, owner);
}

void Desktop::ClosePopup(HWND popup) {
    m_parts->popups.Close(popup);
}

void Desktop::CancelPopups() {
    m_parts->popups.CancelAll();
}

HWND Desktop::Capture() const {
    return m_parts->pointer.Capture();
}

HWND Desktop::SetCapture(HWND window) {
    return m_parts->pointer.SetCapture(window);
}

bool Desktop::TrackMouseEvent(HWND window, UINT flags, UINT hoverTime) {
    return m_parts->pointer.TrackMouseEvent(window, flags, hoverTime);
}

CPoint Desktop::CursorPos() {
    return m_parts->pointer.Place();
}

void Desktop::SetCursor(CursorShape shape) {
    m_parts->pointer.SetCursor(shape);
}

void Desktop::ReleaseGrab() {
    m_parts->context.GetDisplayQuietly().ReleaseGrab();
}

UINT_PTR Desktop::SetTimer(HWND window, UINT_PTR id, UINT period) {
    return m_parts->timers.Set(window, id, period);
}

UINT_PTR Desktop::SetTimer(const TimerOwner& owner, UINT period, TimerProc proc) {
    return m_parts->timers.Set(owner, period, proc);
}

bool Desktop::KillTimer(HWND window, UINT_PTR id) {
    return m_parts->timers.Kill(window, id);
}

}  // namespace veldan
