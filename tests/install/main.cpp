// A host that opens the menu on the display in memory, picks a profile and gets its path. The argument is the folder
// that holds the catalogue. Exit status 0 if all of it worked.

#include <veldan/platform.h>
#include <veldan/platform/display/memory/MemoryDisplay.h>
#include <veldan/veldan.h>

#include <cstdio>
#include <memory>

using namespace veldan;

namespace {

constexpr UINT kMsgPicked = WM_USER + 1;
constexpr CPoint kMenu{100, 100};
// Places in the menu, in its own pixels.
constexpr CPoint kThirdGroup{80, 77};
constexpr CPoint kFirstRow{400, 42};

class HostWindow : public CWnd {
public:
    CString m_strPicked;

protected:
    [[nodiscard]] const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {OnMessage<kMsgPicked, &HostWindow::OnPicked>()};
        static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
        return kMap;
    }

private:
    LRESULT OnPicked(WPARAM /*wParam*/, LPARAM lParam) {
        m_strPicked = ToSystemPath(reinterpret_cast<const char*>(lParam));
        return 0;
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    auto display = std::make_unique<MemoryDisplay>();
    auto clock = std::make_unique<ManualClock>();
    MemoryDisplay& screen = *display;
    ManualClock& time = *clock;
    Desktop::Install(std::make_unique<Desktop>(std::move(display), std::move(clock)));

    HostWindow host;
    if (!host.CreateEx(0, CWnd::kPlainClass, "host", WS_OVERLAPPED, {0, 0, 300, 200}, {}, 0)) {
        return 1;
    }
    host.ShowWindow(SW_SHOW);
    VELDAN_InitProfileMenus(&host, argv[1]);
    VELDAN_ShowProfileMenus(&host, kMenu.x, kMenu.y, kMsgPicked);
    for (const CPoint place : {kThirdGroup, kFirstRow}) {
        screen.MovePointer(kMenu + place);
        Desktop::Get().Dispatch();
        time.Advance(100);
        Desktop::Get().Dispatch();
    }
    screen.PressButton(1);
    screen.ReleaseButton(1);
    Desktop::Get().Dispatch();
    VELDAN_HideProfileMenus();
    VELDAN_ReleaseProfileMenus();
    std::printf("picked %s\n", host.m_strPicked.c_str());
    return FileExists(host.m_strPicked) ? 0 : 1;
}
