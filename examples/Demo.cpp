#include "Demo.h"

#include "MenuWindow.h"

#include "platform/core/File.h"
#include "platform/display/memory/MemoryDisplay.h"
#include "platform/draw/Png.h"
#include "platform/window/Desktop.h"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace veldan;

namespace {

// Places in the menu, in its own pixels.
constexpr int kStripFromBottom = 9;
constexpr int kGroupHeight = 30;
constexpr CPoint MiddleOfGroup(int group) {
    return {80, 17 + kGroupHeight * group};
}
constexpr CPoint MiddleOfRow(int row) {
    return {400, 42 + 50 * row};
}

/// Acts on the display in real time, and takes pictures of it.
class Player {
public:
    explicit Player(std::string folder)
        : m_display(dynamic_cast<MemoryDisplay*>(&Desktop::Get().GetDisplay())), m_folder(std::move(folder)) {}

    [[nodiscard]] bool IsReady() const { return m_display != nullptr; }

    void Wait(int milliseconds) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
        for (auto now = steady_clock::now(); now < end; now = steady_clock::now()) {
            Desktop::Get().Dispatch();
            pollfd descriptor{Desktop::Get().Descriptor(), POLLIN, 0};
            poll(&descriptor, 1, static_cast<int>(duration_cast<std::chrono::milliseconds>(end - now).count()) + 1);
        }
        Desktop::Get().Dispatch();
    }
    void Rest(CPoint screen) {
        m_display->MovePointer(screen);
        Wait(60);
    }
    void Click(CPoint screen) {
        Rest(screen);
        m_display->PressButton(1);
        Wait(20);
        m_display->ReleaseButton(1);
        Wait(60);
    }
    void Wheel(int steps) {
        for (int i = 0; i < steps; ++i) {
            m_display->TurnWheel(-120);
            Wait(20);
        }
    }
    bool Picture(const char* name) {
        const CString path = Format("%s/%02d-%s.png", m_folder.c_str(), ++m_nPictures, name);
        const bool written = WriteFileWhole(path, EncodePng(*m_display->Picture(), PngAlpha::Ignore));
        if (!written) {
            std::fprintf(stderr, "veldan-host: can't write %s\n", path.c_str());
        }
        return written;
    }

private:
    MemoryDisplay* m_display;
    std::string m_folder;
    int m_nPictures = 0;
};

}  // namespace

bool RunDemo(HostWindow& host, const std::string& folder) {
    Player player(folder);
    if (!player.IsReady()) {
        return false;
    }
    const CPoint button = host.ButtonRect().TopLeft() + CPoint{96, 16};
    const CPoint menu = MenuPlaceBeside(host.ButtonRect());
    player.Wait(50);
    bool done = player.Picture("host");
    player.Click(button);
    done = player.Picture("menu") && done;
    player.Rest(menu + MiddleOfGroup(1));
    done = player.Picture("group") && done;
    player.Rest(menu + MiddleOfRow(2));
    done = player.Picture("row") && done;
    player.Wheel(1);
    player.Click(menu + CPoint{330, MenuSize().cy - kStripFromBottom});
    done = player.Picture("scrolled") && done;
    player.Rest(menu + MiddleOfGroup(std::clamp(MenuSize().cy / kGroupHeight - 2, 0, 13)));
    done = player.Picture("another-group") && done;
    player.Click(menu + MiddleOfRow(0));
    done = player.Picture("picked") && done;
    player.Click(button);
    player.Rest(menu + MiddleOfGroup(0));
    return player.Picture("recent") && done;
}
