#include "platform/window/ClientDC.h"

#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

namespace veldan {

CClientDC::CClientDC(const CWnd* window) : m_hWnd(window != nullptr ? window->GetSafeHwnd() : HWND()) {
    if (m_hWnd) {
        Attach(Desktop::Get().WindowDC(m_hWnd));
    }
}

CClientDC::~CClientDC() {
    if (m_hWnd) {
        Desktop::Get().MarkDrawn(m_hWnd);
    }
}

CPaintDC::CPaintDC(const CWnd* window) {
    if (window != nullptr && window->GetSafeHwnd()) {
        Attach(Desktop::Get().BeginPaint(window->GetSafeHwnd(), m_area));
    }
}

CPaintDC::~CPaintDC() = default;

}  // namespace veldan
