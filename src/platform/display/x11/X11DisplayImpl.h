#pragma once

#include "platform/display/Display.h"
#include "platform/display/x11/X11ActiveWindow.h"
#include "platform/display/x11/X11Connection.h"
#include "platform/display/x11/X11Cursors.h"
#include "platform/display/x11/X11Focus.h"
#include "platform/display/x11/X11Keyboard.h"
#include "platform/display/x11/X11Marks.h"
#include "platform/display/x11/X11OutsideWatch.h"
#include "platform/display/x11/X11Upload.h"
#include "platform/display/x11/X11Windows.h"

#include <deque>
#include <memory>
#include <optional>

namespace veldan {

/// The display on an X server. Popups and tool tips stand outside of the window manager's reach, so that they are where
/// they are told to be, with a manager and without; frames are the manager's.
///
/// What the server sends is read to the end before anything of it is handed out: only then is it known whether the
/// pointer or the focus that left one own window came into another, and only the newest of several moves counts.
class X11Display final : public Display {
public:
    X11Display(std::unique_ptr<X11Connection> connection, std::unique_ptr<Clock> clock, bool useRawPresses);
    ~X11Display() override;
    X11Display(const X11Display&) = delete;
    X11Display& operator=(const X11Display&) = delete;

    [[nodiscard]] std::string_view Name() const override { return "x11"; }
    [[nodiscard]] bool IsAlive() const override { return m_connection->IsAlive(); }
    [[nodiscard]] CRect ScreenRect() const override { return CRect::FromSize({}, m_screen); }

    void CreateTopLevel(TopLevelId id, const TopLevelTraits& traits, const CRect& rect) override;
    void DestroyTopLevel(TopLevelId id) override;
    void SetTitle(TopLevelId id, const std::string& title) override;
    void SetRect(TopLevelId id, const CRect& rect) override;
    void SetVisible(TopLevelId id, bool visible) override;
    void Restack(TopLevelId id, StackPlace place, TopLevelId sibling) override;

    void TakeFocus(TopLevelId id) override;
    void GiveBackFocus() override;

    [[nodiscard]] std::shared_ptr<Surface> MakeSurface(TopLevelId id, CSize size) override;
    void Present(TopLevelId id, const Surface& pixels, const Region& dirty) override;

    void SetCursor(TopLevelId id, CursorShape shape) override;
    [[nodiscard]] CPoint QueryPointer() override;
    void ReleaseGrab() override;
    [[nodiscard]] std::uint64_t Mark() override;

    [[nodiscard]] int Descriptor() const override;
    [[nodiscard]] bool NextEvent(DisplayEvent& event) override;
    void Flush() override;
    void Sync() override;
    [[nodiscard]] std::uint64_t RoundTrips() const override { return m_connection->RoundTrips(); }

private:
    [[nodiscard]] X11TopLevel* Living(TopLevelId id) const;
    void OnHidden(const X11TopLevel& topLevel);
    void OnOffScreen(const X11TopLevel& topLevel);
    void UpdateKeptOff();

    void ReadEvents();
    void Translate(const xcb_generic_event_t& event);
    void TranslateExtension(const xcb_generic_event_t& event);
    bool Settle();

    void OnMotion(const xcb_motion_notify_event_t& event);
    void OnEnter(const xcb_enter_notify_event_t& event);
    void OnLeave(const xcb_leave_notify_event_t& event);
    void OnPress(const xcb_button_press_event_t& event);
    void OnRelease(const xcb_button_release_event_t& event);
    void OnKey(const xcb_key_press_event_t& event, bool isPress);
    void OnFocus(const xcb_focus_in_event_t& event, bool isIn);
    void OnConfigure(const xcb_configure_notify_event_t& event, std::uint32_t sequence);
    void OnUnmap(const xcb_unmap_notify_event_t& event, std::uint32_t sequence);
    void OnMap(const xcb_map_notify_event_t& event);
    void OnProperty(const xcb_property_notify_event_t& event);
    void OnDestroy(const xcb_destroy_notify_event_t& event);
    void OnClientMessage(const xcb_client_message_event_t& event);

    void NotePress();
    void PushMove(TopLevelId window, CPoint screen, UINT flags);
    void PushLeave();
    void PushOutside();
    void PushFocus();
    void PushMoved();
    void PushPresence();
    void PushHidden(const X11TopLevel& topLevel);
    void PushForeignActive();

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<Clock> m_clock;
    X11Windows m_windows;
    X11Marks m_marks;
    X11Upload m_upload;
    X11Keyboard m_keyboard;
    X11Cursors m_cursors;
    X11OutsideWatch m_outside;
    X11Focus m_focus;
    X11ActiveWindow m_activeWindow;
    CSize m_screen;
    std::deque<DisplayEvent> m_events;
    TopLevelId m_pointerIn = 0;
    CPoint m_ptLast;
    std::optional<CPoint>
        m_ptLeft;                // where the pointer left an own window, until it is known whether it came into another
    bool m_bButtonHeld = false;  // pressed in an own window, which then grabs the pointer until the release
    std::uint32_t m_uSideButtons = 0;  // those of them that are held
    bool m_bLossTold = false;
};

}  // namespace veldan
