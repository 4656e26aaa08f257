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

/// WM_DRAWITEM, lParam. Lives for the length of the call.
struct DRAWITEMSTRUCT {
    UINT CtlID = 0;
    UINT itemState = 0;  ///< ODS_... bits.
    HWND hwndItem;
    CDC* pDC = nullptr;
    CRect rcItem;  ///< In client pixels of the control.
};

inline constexpr UINT ODS_SELECTED = 0x01;
inline constexpr UINT ODS_DISABLED = 0x04;
inline constexpr UINT ODS_FOCUS = 0x10;

/// OCM_CTLCOLOR, lParam: wParam holds the CDC*.
inline constexpr UINT CTLCOLOR_BTN = 3;

/// Notification codes of buttons, in the high word of WM_COMMAND's wParam.
inline constexpr UINT BN_CLICKED = 0;

struct MessageMapEntry {
    using Handler = LRESULT (*)(CWnd& wnd, WPARAM wParam, LPARAM lParam, bool& handled);

    UINT message = 0;
    UINT code = 0;  ///< Notification code, for WM_COMMAND.
    UINT id = 0;    ///< Control or command id, for WM_COMMAND.
    Handler handler = nullptr;
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

/// HBRUSH Handler(CDC*, CWnd* control, UINT type)
struct CtlColor {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM lParam) {
        return ResultOf([&] {
            return (wnd.*Handler)(reinterpret_cast<CDC*>(wParam), WindowOf(std::uint64_t(lParam)), CTLCOLOR_BTN);
        });
    }
};

/// HBRUSH Handler(CDC*, UINT type)
struct CtlColorReflected {
    template <auto Handler, class Wnd>
    static LRESULT Call(Wnd& wnd, WPARAM wParam, LPARAM) {
        return ResultOf([&] { return (wnd.*Handler)(reinterpret_cast<CDC*>(wParam), CTLCOLOR_BTN); });
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
LRESULT CallHandler(CWnd& wnd, WPARAM wParam, LPARAM lParam, bool& handled) {
    using Wnd = typename ClassOfMember<decltype(Handler)>::Type;
    handled = true;
    const LRESULT result = Signature::template Call<Handler>(static_cast<Wnd&>(wnd), wParam, lParam);
    if constexpr (std::is_same_v<Signature, SignatureOf<OCM_CTLCOLOR>>) {
        handled = result != 0;
    }
    return result;
}

}  // namespace detail

/// Entry for a message of the list: On<WM_MOUSEMOVE, &CFoo::OnMouseMove>().
template <UINT Message, auto Handler>
constexpr MessageMapEntry On() {
    return {Message, 0, 0, &detail::CallHandler<SignatureOf<Message>, Handler>};
}

/// Entry for a message number of one's own: LRESULT Handler(WPARAM, LPARAM).
template <UINT Message, auto Handler>
constexpr MessageMapEntry OnMessage() {
    return {Message, 0, 0, &detail::CallHandler<signature::Raw, Handler>};
}

/// Entry for WM_COMMAND with an id, from a menu or a clicked button: void Handler().
template <UINT Id, auto Handler>
constexpr MessageMapEntry OnCommand() {
    return {WM_COMMAND, BN_CLICKED, Id, &detail::CallHandler<signature::Nothing, Handler>};
}

}  // namespace veldan
