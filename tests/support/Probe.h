#pragma once

#include "platform/core/Text.h"
#include "platform/draw/DC.h"
#include "platform/widgets/Button.h"
#include "platform/window/ClientDC.h"
#include "platform/window/Wnd.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace veldan {

/// A window that records its messages, is filled with one colour, and can run an action when a message comes.
template <class Base>
class Probe : public Base {
public:
    using Base::Base;
    using Action = std::function<void(Probe&)>;

    /// Numbers of the messages so far, except WM_SETCURSOR, which comes with every move.
    std::vector<UINT> log;
    COLORREF colour = RGB(200, 0, 0);
    UINT actAt = 0;
    Action action;

    [[nodiscard]] int CountOf(UINT message) const {
        return static_cast<int>(std::count(log.begin(), log.end(), message));
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_SETCURSOR) {
            log.push_back(message);
        }
        if (message == actAt && action) {
            const Action act = std::exchange(action, nullptr);
            const HWND self = this->GetSafeHwnd();
            act(*this);
            if (CWnd::FromHandle(self) != this) {
                return 0;
            }
        }
        if (message == WM_ERASEBKGND) {
            reinterpret_cast<CDC*>(wParam)->FillSolidRect(this->GetClientRect(), colour);
            return TRUE;
        }
        return Base::WindowProc(message, wParam, lParam);
    }
};

using ProbeWnd = Probe<CWnd>;

/// An owner-drawn button that is filled with one colour, and with another one while it is pressed.
class ProbeButton : public Probe<CButton> {
public:
    UINT drawnState = 0;

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override {
        drawnState = item->itemState;
        item->pDC->FillSolidRect(item->rcItem, (item->itemState & ODS_SELECTED) != 0 ? RGB(0, 0, 250) : colour);
    }
};

inline bool MakePopup(CWnd& window, const CRect& rect, CWnd* owner = nullptr) {
    return window.CreateEx(0, CWnd::kPlainClass, "popup", WS_POPUP | WS_VISIBLE, rect,
                           owner != nullptr ? owner->GetSafeHwnd() : HWND(), 0);
}

inline bool MakeChild(CWnd& window, CWnd& parent, const CRect& rect, UINT id = 0) {
    return window.CreateEx(0, CWnd::kPlainClass, "", WS_CHILD | WS_VISIBLE, rect, parent.GetSafeHwnd(), id);
}

}  // namespace veldan
