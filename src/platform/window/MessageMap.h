#pragma once

#include "platform/core/Geometry.h"
#include "platform/window/Messages.h"

#include <span>
#include <type_traits>

namespace veldan {

class CBrush;
class CDC;
class CWnd;

/// A brush as the answer to a request for colours; null: not handled.
using HBRUSH = const CBrush*;

/// WM_CREATE, lParam.
struct CREATESTRUCT {
    UINT style = 0;
    UINT exStyle = 0;
    UINT id = 0;
    CRect rect;
    HWND parent;
    const char* text = "";
};

/// WM_DRAWITEM, lParam; wParam is CtlID. Lives for the length of the call.
struct DRAWITEMSTRUCT {
    UINT CtlType = 0;  ///< An ODT_... kind.
    UINT CtlID = 0;
    UINT itemID = 0;      ///< Index of an entry in a list, kNoItem for the field of an empty one; 0 for buttons.
    UINT itemAction = 0;  ///< ODA_... bits: why it is drawn.
    UINT itemState = 0;   ///< ODS_... bits: how it is drawn.
    HWND hwndItem;
    CDC* pDC = nullptr;
    CRect rcItem;  ///< In client pixels of the window that is drawn on.
    UINT_PTR itemData = 0;
};

/// WM_MEASUREITEM, lParam; wParam is CtlID. The parent fills in the size. Lives for the length of the call.
struct MEASUREITEMSTRUCT {
    UINT CtlType = 0;  ///< An ODT_... kind.
    UINT CtlID = 0;
    UINT itemID = 0;
    UINT itemWidth = 0;   ///< In pixels.
    UINT itemHeight = 0;  ///< In pixels; comes with the control's default.
    UINT_PTR itemData = 0;
};

inline constexpr UINT kNoItem = 0xffffffff;

/// Kinds of owner-drawn controls.
inline constexpr UINT ODT_LISTBOX = 2;
inline constexpr UINT ODT_COMBOBOX = 3;
inline constexpr UINT ODT_BUTTON = 4;

inline constexpr UINT ODA_DRAWENTIRE = 0x01;
inline constexpr UINT ODA_SELECT = 0x02;
inline constexpr UINT ODA_FOCUS = 0x04;

inline constexpr UINT ODS_SELECTED = 0x01;
inline constexpr UINT ODS_DISABLED = 0x04;
inline constexpr UINT ODS_FOCUS = 0x10;
inline constexpr UINT ODS_COMBOBOXEDIT = 0x1000;  ///< The field of a combo box, not an entry of its list.

/// Kinds of controls that ask for colours, in the order of the WM_CTLCOLOR... messages.
inline constexpr UINT CTLCOLOR_MSGBOX = 0;
inline constexpr UINT CTLCOLOR_EDIT = 1;
inline constexpr UINT CTLCOLOR_LISTBOX = 2;
inline constexpr UINT CTLCOLOR_BTN = 3;
inline constexpr UINT CTLCOLOR_DLG = 4;
inline constexpr UINT CTLCOLOR_SCROLLBAR = 5;
inline constexpr UINT CTLCOLOR_STATIC = 6;

[[nodiscard]] constexpr bool IsCtlColor(UINT message) {
    return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

/// Notification codes of buttons, in the high word of WM_COMMAND's wParam.
inline constexpr UINT BN_CLICKED = 0;

struct MessageMapEntry {
    using Handler = LRESULT (*)(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, bool& handled);

    UINT message = 0;  ///< WM_CTLCOLORMSGBOX stands for all requests for colours.
    UINT code = 0;     ///< Notification code, for WM_COMMAND and OCM_COMMAND.
    UINT id = 0;       ///< Control or command id, for WM_COMMAND.
    Handler handler = nullptr;

    /// Whether this is the entry for the message; WM_COMMAND and OCM_COMMAND carry their code and id in wParam.
    [[nodiscard]] constexpr bool Matches(UINT number, WPARAM wParam) const {
        if (number == WM_COMMAND || number == OCM_COMMAND) {
            return message == number && code == HiWord(wParam) && (number == OCM_COMMAND || id == LoWord(wParam));
        }
        return message == (IsCtlColor(number) ? WM_CTLCOLORMSGBOX : number);
    }
};

/// The handlers of a class: a table, and the table of its base class for what it does not handle.
struct MessageMap {
    const MessageMap* base = nullptr;
    std::span<const MessageMapEntry> entries;
};

/// Signatures of handlers: each decodes the arguments of its messages and calls the handler.
namespace signature {

[[nodiscard]] VELDAN_PLATFORM_API CWnd* WindowOf(std::uint64_t handleValue);

template <class Call>
LRESULT ResultOf(Call call) {
    using Result = decltype(call());
    if constexpr (std::is_void_v<Result>) {
        call();
        return 0;
    } else if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<LRESULT>(call());
    } else {
        return static_cast<LRESULT>(call());
    }
}

inline CPoint PointOf(LPARAM lParam) {
    return {SignedLoWord(lParam), SignedHiWord(lParam)};
}

/// LRESULT Handler(WPARAM, LPARAM)
struct Raw {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(wParam, lParam); });
    }
};

/// void Handler()
struct Nothing {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(); });
    }
};

/// int Handler(CREATESTRUCT*): -1 refuses the window.
struct Create {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(reinterpret_cast<CREATESTRUCT*>(lParam)); });
    }
};

/// void Handler(BOOL)
struct Flag {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(wParam != 0 ? TRUE : FALSE); });
    }
};

/// void Handler(int x, int y)
struct Move {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(SignedLoWord(lParam), SignedHiWord(lParam)); });
    }
};

/// void Handler(UINT type, int width, int height)
struct Size {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(UINT(wParam), SignedLoWord(lParam), SignedHiWord(lParam)); });
    }
};

/// void Handler(CWnd*): the other window, or null.
struct OtherWindow {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(WindowOf(wParam)); });
    }
};

/// BOOL Handler(CDC*)
struct Erase {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(reinterpret_cast<CDC*>(wParam)); });
    }
};

/// void Handler(BOOL show, UINT status)
struct ShowWindow {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(wParam != 0 ? TRUE : FALSE, UINT(lParam)); });
    }
};

/// BOOL Handler(CWnd* under, UINT hitTest, UINT message)
struct SetCursor {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf(
            [&] { return (wnd.*Handler)(WindowOf(wParam), LoWord(WPARAM(lParam)), HiWord(WPARAM(lParam))); });
    }
};

/// void Handler(int id, DRAWITEMSTRUCT*)
struct DrawItem {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(int(wParam), reinterpret_cast<DRAWITEMSTRUCT*>(lParam)); });
    }
};

/// void Handler(int id, MEASUREITEMSTRUCT*)
struct MeasureItem {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(int(wParam), reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)); });
    }
};

/// void Handler(UINT key, UINT repeatCount): a virtual key code, or for WM_CHAR a character's code point.
struct Key {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(UINT(wParam), LoWord(WPARAM(lParam))); });
    }
};

/// void Handler(UINT_PTR id)
struct Timer {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(wParam); });
    }
};

/// HBRUSH Handler(CDC*, UINT kind): a CTLCOLOR_... kind; null: not handled.
struct CtlColorReflected {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(reinterpret_cast<CDC*>(wParam), UINT(lParam)); });
    }
};

/// void Handler(UINT flags, CPoint point)
struct Mouse {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] { return (wnd.*Handler)(UINT(wParam), PointOf(lParam)); });
    }
};

/// BOOL Handler(UINT flags, short delta, CPoint screen)
struct Wheel {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf(
            [&] { return (wnd.*Handler)(LoWord(wParam), short(SignedHiWord(LPARAM(wParam))), PointOf(lParam)); });
    }
};

}  // namespace signature

/// The signature that the list gives a message.
template <UINT Message>
struct SignatureOf;
#define VELDAN_MESSAGE_SIGNATURE(name, number, kind) \
    template <>                                      \
    struct SignatureOf<number> : signature::kind {};
VELDAN_MESSAGES(VELDAN_MESSAGE_SIGNATURE)
#undef VELDAN_MESSAGE_SIGNATURE

namespace detail {

template <class Member>
struct ClassOfMember;
template <class Wnd, class Result, class... Arguments>
struct ClassOfMember<Result (Wnd::*)(Arguments...)> {
    using Type = Wnd;
};

template <class Signature, auto Handler>
LRESULT CallHandler(CWnd& wnd, UINT /*message*/, WPARAM wParam, LPARAM lParam, bool& handled) {
    using Wnd = typename ClassOfMember<decltype(Handler)>::Type;
    handled = true;
    const LRESULT result = Signature::template Call<Handler>(static_cast<Wnd&>(wnd), wParam, lParam);
    if constexpr (std::is_same_v<Signature, SignatureOf<OCM_CTLCOLOR>>) {
        handled = result != 0;
    }
    return result;
}

template <auto Handler>
LRESULT CallCtlColor(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, bool& handled) {
    using Wnd = typename ClassOfMember<decltype(Handler)>::Type;
    handled = true;
    return signature::ResultOf([&] {
        return (static_cast<Wnd&>(wnd).*Handler)(reinterpret_cast<CDC*>(wParam),
                                                 signature::WindowOf(static_cast<std::uint64_t>(lParam)),
                                                 message - WM_CTLCOLORMSGBOX);
    });
}

}  // namespace detail

/// Entry for a message of the list: On<WM_MOUSEMOVE, &CFoo::OnMouseMove>().
template <UINT Message, auto Handler>
constexpr MessageMapEntry On() {
    static_assert(Message != WM_COMMAND && Message != OCM_COMMAND && !IsCtlColor(Message),
                  "OnCommand, OnControl, OnReflected and OnCtlColors make these entries");
    return {Message, 0, 0, &detail::CallHandler<SignatureOf<Message>, Handler>};
}

/// Entry for a message number of one's own: LRESULT Handler(WPARAM, LPARAM).
template <UINT Message, auto Handler>
constexpr MessageMapEntry OnMessage() {
    return {Message, 0, 0, &detail::CallHandler<signature::Raw, Handler>};
}

/// Entry for a notification of the control with an id: void Handler().
template <UINT Code, UINT Id, auto Handler>
constexpr MessageMapEntry OnControl() {
    return {WM_COMMAND, Code, Id, &detail::CallHandler<signature::Nothing, Handler>};
}

/// Entry for WM_COMMAND with an id, from a menu or a clicked button: void Handler().
template <UINT Id, auto Handler>
constexpr MessageMapEntry OnCommand() {
    return OnControl<BN_CLICKED, Id, Handler>();
}

/// Entry of a control for a notification of its own that its parent hands back: void Handler(). The parent's own
/// handlers are not asked then.
template <UINT Code, auto Handler>
constexpr MessageMapEntry OnReflected() {
    return {OCM_COMMAND, Code, 0, &detail::CallHandler<signature::Nothing, Handler>};
}

/// Entry for the requests for colours of all child controls: HBRUSH Handler(CDC*, CWnd* control, UINT kind), with a
/// CTLCOLOR_... kind. The handler asks the control itself by calling CWnd::OnCtlColor.
template <auto Handler>
constexpr MessageMapEntry OnCtlColors() {
    return {WM_CTLCOLORMSGBOX, 0, 0, &detail::CallCtlColor<Handler>};
}

}  // namespace veldan
