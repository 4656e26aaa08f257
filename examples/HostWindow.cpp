#include "HostWindow.h"

#include "Colours.h"
#include "MenuWindow.h"

#include "platform/core/Path.h"
#include "platform/draw/DC.h"
#include "platform/draw/Graphics.h"
#include "platform/window/Desktop.h"
#include "veldan/veldan.h"

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace veldan;

namespace {

constexpr UINT kOpenId = 1;

constinit const WindowClass kHostClass{"host", 0, CursorShape::Arrow, {260, 200}};

constexpr int kMargin = 24;
constexpr CRect kButton{kMargin, 64, 224, 100};
constexpr int kRuleTop = 118;
constexpr CRect kTile{kMargin, 132, 68, 176};
constexpr float kLargestIcon = 36;
constexpr int kTextLeft = 80;

/// A press that takes the focus from the menu closes it shortly before the button receives the press.
constexpr std::int64_t kSamePress = 250;  // milliseconds

void Print(const char* word, const CString& text) {
    std::printf("%s %s\n", word, text.c_str());
    std::fflush(stdout);
}

void DrawLine(CDC& dc, const CString& text, CRect rect, CFont& font, COLORREF colour) {
    dc.SelectObject(&font);
    dc.SetTextColor(colour);
    dc.DrawText(text, rect, DT_LEFT | DT_SINGLELINE | DT_VCENTER);
}

/// Draws an icon in the middle of a box of the menu's colour, for which icons are made. Large icons are scaled down.
void DrawIcon(CDC& dc, Image& icon, const CRect& box) {
    const auto width = static_cast<float>(icon.GetWidth());
    const auto height = static_cast<float>(icon.GetHeight());
    if (width <= 0 || height <= 0) {
        return;
    }
    CBrush brush(kAccent);
    CPen pen(1, kAccent);
    dc.SelectObject(&brush);
    dc.SelectObject(&pen);
    dc.RoundRect(box, {10, 10});
    const auto room = static_cast<float>(box.Width());
    const float scale = std::min({1.0F, kLargestIcon / width, kLargestIcon / height});
    const RectF place{static_cast<float>(box.left) + (room - width * scale) / 2,
                      static_cast<float>(box.top) + (room - height * scale) / 2, width * scale, height * scale};
    Graphics(dc).DrawImageRectRect(&icon, place, {0, 0, width, height});
}

}  // namespace

bool HostWindow::Create(const CRect& rect) {
    const CSize size{std::max(rect.Width(), kHostClass.smallest.cx), std::max(rect.Height(), kHostClass.smallest.cy)};
    return CreateEx(0, kHostClass, "Convert a Video - veldan host", WS_OVERLAPPED,
                    CRect::FromSize(rect.TopLeft(), size), {}, 0) &&
           m_button.Create("Choose a profile", WS_VISIBLE | BS_OWNERDRAW, kButton, this, kOpenId) &&
           (ShowWindow(SW_SHOW), true);
}

void HostWindow::ShowMenu(CPoint screen) {
    VELDAN_ShowProfileMenus(this, screen.x, screen.y, kMsgPicked);
    m_bMenuWasOpen = true;
    Print("shown", Format("%d %d", screen.x, screen.y));
}

const MessageMap& HostWindow::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        On<WM_ERASEBKGND, &HostWindow::OnEraseBkgnd>(), On<WM_SIZE, &HostWindow::OnSize>(),
        On<WM_SETFOCUS, &HostWindow::OnSetFocus>(),     On<WM_CLOSE, &HostWindow::OnClose>(),
        OnCommand<kOpenId, &HostWindow::OnOpen>(),      OnMessage<kMsgPicked, &HostWindow::OnPicked>(),
    };
    static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
    return kMap;
}

BOOL HostWindow::OnEraseBkgnd(CDC* pDC) {
    const CRect client = GetClientRect();
    pDC->FillSolidRect(client, kPaper);
    pDC->FillSolidRect({kMargin, kRuleTop, client.right - kMargin, kRuleTop + 1}, kRule);
    pDC->SetBkMode(TRANSPARENT);
    CFont title(20, kFontBold);
    DrawLine(*pDC, "Convert a video", {kMargin, 20, client.right - kMargin, 52}, title, kInk);
    DrawPicked(*pDC);
    return TRUE;
}

void HostWindow::DrawPicked(CDC& dc) const {
    const int right = GetClientRect().right - kMargin;
    CFont text(15, kFontNormal);
    if (m_picked.caption.empty()) {
        DrawLine(dc, "No profile chosen yet", {kMargin, kTile.top, right, kTile.bottom}, text, kFaintInk);
        return;
    }
    if (m_picked.icon) {
        DrawIcon(dc, *m_picked.icon, kTile);
    }
    CFont caption(15, kFontBold);
    const int middle = m_picked.comment.empty() ? kTile.bottom : (kTile.top + kTile.bottom) / 2;
    DrawLine(dc, m_picked.caption, {kTextLeft, kTile.top, right, middle}, caption, kInk);
    DrawLine(dc, m_picked.comment, {kTextLeft, middle, right, kTile.bottom}, text, kFaintInk);
}

void HostWindow::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
    Invalidate();
}

/// The window also gets the focus when the menu closes.
void HostWindow::OnSetFocus(CWnd* /*pOther*/) {
    if (m_bMenuWasOpen && !IsMenuVisible()) {
        m_bMenuWasOpen = false;
        m_nMenuClosedAt = Desktop::Get().GetClock().Now();
    }
    Default();
}

/// Sees the button's input before the button does.
bool HostWindow::PreTranslateMessage(MSG& message) {
    if (message.hwnd == m_button.GetSafeHwnd()) {
        switch (message.message) {
            case WM_MOUSEMOVE:
                m_bMenuWasOpen = IsMenuVisible();
                break;
            case WM_LBUTTONDOWN:
            case WM_LBUTTONDBLCLK:
                m_bPressClosesMenu = IsMenuVisible() || message.time - m_nMenuClosedAt < kSamePress;
                m_bMenuWasOpen = false;
                m_nMenuClosedAt = 0;
                break;
            case WM_KEYDOWN:
                m_bPressClosesMenu = false;
                break;
            default:
                break;
        }
    }
    return CWnd::PreTranslateMessage(message);
}

void HostWindow::OnClose() {
    m_bDone = true;
}

void HostWindow::OnOpen() {
    if (std::exchange(m_bPressClosesMenu, false) || IsMenuVisible()) {
        VELDAN_HideProfileMenus();
    } else {
        ShowMenu(MenuPlaceBeside(ButtonRect()));
    }
}

LRESULT HostWindow::OnPicked(WPARAM /*wParam*/, LPARAM lParam) {
    const CString path = reinterpret_cast<const char*>(lParam);
    const CString file = ToSystemPath(path);
    Print("picked", path);
    Print("file", file);
    m_picked = ReadPickedProfile(file);
    m_bMenuWasOpen = false;
    Invalidate();
    m_bDone = m_bDone || m_bExitAfterPick;
    return 0;
}
