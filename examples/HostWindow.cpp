#include "HostWindow.h"

#include "platform/core/Path.h"
#include "platform/draw/DC.h"
#include "platform/window/Desktop.h"
#include "veldan/veldan.h"

#include <cstdio>

using namespace veldan;

namespace {

constexpr UINT kOpenId = 1;
constexpr CRect kButton{24, 64, 224, 100};

constexpr COLORREF kPaper = RGB(246, 244, 242);
constexpr COLORREF kRule = RGB(221, 215, 210);
constexpr COLORREF kInk = RGB(44, 36, 32);
constexpr COLORREF kFaintInk = RGB(122, 108, 100);
constexpr COLORREF kAccent = RGB(111, 50, 23);
constexpr COLORREF kHotAccent = RGB(146, 64, 26);
constexpr COLORREF kPressedAccent = RGB(84, 36, 15);
constexpr COLORREF kOnAccent = RGB(255, 248, 240);

void Tell(const char* word, const CString& text) {
    std::printf("%s %s\n", word, text.c_str());
    std::fflush(stdout);
}

void DrawLine(CDC& dc, const CString& text, CRect rect, CFont& font, COLORREF colour, UINT format = DT_LEFT) {
    dc.SelectObject(&font);
    dc.SetTextColor(colour);
    dc.DrawText(text, rect, format | DT_SINGLELINE | DT_VCENTER);
}

}  // namespace

const MessageMap& OpenButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_MOUSEMOVE, &OpenButton::OnMouseMove>(),
        On<WM_MOUSELEAVE, &OpenButton::OnMouseLeave>(),
    };
    static const MessageMap kMap{&CButton::ClassMessageMap(), kEntries};
    return kMap;
}

void OpenButton::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
    if (!m_bHot) {
        m_bHot = TrackMouseEvent(TME_LEAVE, 0);
        Invalidate();
    }
    Default();
}

LRESULT OpenButton::OnMouseLeave(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    m_bHot = false;
    Invalidate();
    return 0;
}

void OpenButton::DrawItem(DRAWITEMSTRUCT* lpDrawItemStruct) {
    CDC& dc = *lpDrawItemStruct->pDC;
    const CRect rect = lpDrawItemStruct->rcItem;
    const bool pressed = (lpDrawItemStruct->itemState & ODS_SELECTED) != 0;
    const COLORREF colour = pressed ? kPressedAccent : m_bHot ? kHotAccent : kAccent;
    dc.FillSolidRect(rect, kPaper);
    CBrush brush(colour);
    CPen pen(1, colour);
    dc.SelectObject(&brush);
    dc.SelectObject(&pen);
    dc.RoundRect(rect, {10, 10});
    dc.SetBkMode(TRANSPARENT);
    CFont font(17, kFontBold);
    DrawLine(dc, GetWindowText(), rect, font, kOnAccent, DT_CENTER);
}

bool HostWindow::Create(const CRect& rect) {
    return CreateEx(0, kPlainClass, "veldan host", WS_OVERLAPPED, rect, {}, 0) &&
           m_button.Create("Choose a profile", WS_VISIBLE | BS_OWNERDRAW, kButton, this, kOpenId) &&
           (ShowWindow(SW_SHOW), true);
}

void HostWindow::ShowMenu(CPoint screen) {
    VELDAN_ShowProfileMenus(this, screen.x, screen.y, kMsgPicked);
    Tell("shown", Format("%d %d", screen.x, screen.y));
}

const MessageMap& HostWindow::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_ERASEBKGND, &HostWindow::OnEraseBkgnd>(), On<WM_SIZE, &HostWindow::OnSize>(),
        On<WM_CLOSE, &HostWindow::OnClose>(),           OnCommand<kOpenId, &HostWindow::OnOpen>(),
        OnMessage<kMsgPicked, &HostWindow::OnPicked>(),
    };
    static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
    return kMap;
}

BOOL HostWindow::OnEraseBkgnd(CDC* pDC) {
    const CRect client = GetClientRect();
    pDC->FillSolidRect(client, kPaper);
    pDC->FillSolidRect({24, 118, client.right - 24, 119}, kRule);
    pDC->SetBkMode(TRANSPARENT);
    CFont title(20, kFontBold);
    CFont text(15, kFontNormal);
    DrawLine(*pDC, "Convert a video", {24, 20, client.right - 24, 52}, title, kInk);
    const bool picked = !m_strPicked.empty();
    DrawLine(*pDC, "Profile", {24, 128, 84, 152}, text, kFaintInk);
    DrawLine(*pDC, picked ? m_strPicked : CString("none picked yet"), {84, 128, client.right - 24, 152}, text,
             picked ? kInk : kFaintInk);
    return TRUE;
}

void HostWindow::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
    Invalidate();
}

void HostWindow::OnClose() {
    Desktop::Get().PostQuitMessage(0);
}

void HostWindow::OnOpen() {
    ShowMenu(ClientToScreen({kButton.left, kButton.bottom + 2}));
}

LRESULT HostWindow::OnPicked(WPARAM /*wParam*/, LPARAM lParam) {
    const CString path = reinterpret_cast<const char*>(lParam);
    Tell("picked", path);
    Tell("file", ToSystemPath(path));
    m_strPicked = path.substr(path.rfind('\\') + 1);
    Invalidate();
    if (m_bExitAfterPick) {
        Desktop::Get().PostQuitMessage(0);
    }
    return 0;
}
