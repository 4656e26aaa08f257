// What users wait for, measured on the display that the environment names. Prints one line of JSON. Each measurement
// ends when the server has confirmed that everything is on the screen.

#include "ProcessMemory.h"
#include "Tree.h"

#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"
#include "veldan/veldan.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>

using namespace veldan;

namespace {

constexpr UINT kMsgPicked = WM_USER + 1;
constexpr UINT kMsgGroupHover = 0x6bd;
constexpr UINT kMsgItemClick = 0x6c7;
constexpr UINT kFirstItemId = 1000;
constexpr UINT kScrollDownId = 3999;
constexpr UINT kFirstGroupId = 4000;
constexpr CPoint kMenuAt{100, 10};

double NowMs() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double StartMs(double otherwise) {
    const char* start = std::getenv("BENCH_T0_NS");
    return start != nullptr ? std::atof(start) / 1e6 : otherwise;
}

double Median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 != 0 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void FinishOnScreen() {
    Desktop::Get().Dispatch();
    Desktop::Get().GetDisplay().Sync();
}

/// Waits until the effects of a step have ended, before the next one is timed.
void Settle(int milliseconds) {
    const double end = NowMs() + milliseconds;
    while (NowMs() < end) {
        Desktop::Get().Dispatch();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    FinishOnScreen();
}

template <class Step>
double Timed(Step step) {
    const double begin = NowMs();
    step();
    FinishOnScreen();
    return NowMs() - begin;
}

class Host : public CWnd {
public:
    CString picked;
    double pickedAt = 0;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {OnMessage<kMsgPicked, &Host::OnPicked>()};
        static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
        return kMap;
    }

private:
    LRESULT OnPicked(WPARAM, LPARAM lParam) {
        pickedAt = NowMs();
        picked = reinterpret_cast<const char*>(lParam);
        return 0;
    }
};

HWND FindMenu() {
    const Desktop& desktop = Desktop::Get();
    const auto isMenu = [&](HWND window) { return desktop.Find(window)->text == "veldan menu"; };
    const auto found = std::ranges::find_if(desktop.TopLevels(), isMenu);
    return found != desktop.TopLevels().end() ? *found : HWND();
}

/// The measurements of one run.
class Scenario {
public:
    Scenario(const Tree& tree, Host& host) : m_tree(tree), m_host(host), m_menu(FindMenu()) {}

    [[nodiscard]] bool HasMenu() const { return static_cast<bool>(m_menu); }

    double Show() {
        const double time = Timed([this] { VELDAN_ShowProfileMenus(&m_host, kMenuAt.x, kMenuAt.y, kMsgPicked); });
        Settle(50);
        return time;
    }
    double Open(std::size_t group) {
        return Timed([=, this] { Desktop::Get().PostMessage(m_menu, kMsgGroupHover, kFirstGroupId + group); });
    }
    void OpenAll(std::vector<double>& filled, double& firstOpen, double& empty) {
        for (std::size_t group = 0; group < m_tree.rows.size(); ++group) {
            const double time = Open(group);
            if (m_tree.rows[group] == 0) {
                empty = time;
            } else if (firstOpen == 0) {
                firstOpen = time;
            } else {
                filled.push_back(time);
            }
            Settle(30);
        }
    }
    void ScrollThroughAll() {
        for (std::size_t group = 0; group < m_tree.rows.size(); ++group) {
            Open(group);
            for (std::size_t row = 0; row < m_tree.rows[group]; ++row) {
                Desktop::Get().SendMessage(m_menu, WM_COMMAND, kScrollDownId);
                Desktop::Get().Dispatch();
            }
        }
        FinishOnScreen();
    }
    /// From a click on the fourth row of the first filled group until the host has the path, the recent profiles are
    /// updated and the menu is hidden.
    double PickAndUpdate() {
        OpenFirstFilled();
        const double time = Timed([this] { Click(); });
        Settle(50);
        return time;
    }
    /// The same without the update: the time until the host has the path, plus the time to hide the menu.
    double Pick() {
        OpenFirstFilled();
        const double begin = NowMs();
        Click();
        const double toHost = m_host.pickedAt - begin;
        Settle(50);
        Show();
        OpenFirstFilled();
        const double toGo = Timed(VELDAN_HideProfileMenus);
        Settle(50);
        return toHost + toGo;
    }
    [[nodiscard]] bool PickIsRight() const {
        return m_host.picked == m_tree.fourthOfFirst && !Desktop::Get().IsVisible(m_menu);
    }

private:
    /// The last group is open before, as OpenAll leaves the menu, so that the rows are new on the screen.
    void OpenFirstFilled() {
        const auto filled = std::ranges::find_if(m_tree.rows, [](std::size_t rows) { return rows != 0; });
        const auto first = static_cast<std::size_t>(filled - m_tree.rows.begin());
        for (const std::size_t group : {m_tree.rows.size() - 1, first}) {
            Open(group);
            Settle(50);
        }
    }
    void Click() {
        m_host.picked.clear();
        Desktop::Get().SendMessage(m_menu, kMsgItemClick, kFirstItemId + 3);
    }

    const Tree& m_tree;
    Host& m_host;
    HWND m_menu;
};

}  // namespace

int main(int argc, char** argv) {
    const double main = NowMs();
    const auto tree = argc == 3 && std::string_view(argv[1]) == "--tree" ? ReadTree(argv[2]) : std::nullopt;
    if (!tree) {
        std::fputs("usage: menu_scenario --tree DIR, a folder that holds Profiles\n", stderr);
        return 2;
    }
    if (Desktop::Get().GetDisplay().Name() != "x11") {
        std::fputs("menu_scenario: no X server answers\n", stderr);
        return 2;
    }
    Host host;
    host.CreateEx(0, CWnd::kPlainClass, "host", WS_OVERLAPPED | WS_VISIBLE, {700, 10, 900, 110}, {}, 0);
    const double begin = NowMs();
    VELDAN_InitProfileMenus(&host, argv[2]);
    const double ready = NowMs();
    const long rssInit = ResidentKb();
    Settle(50);

    Scenario scenario(*tree, host);
    if (!scenario.HasMenu()) {
        std::fputs("menu_scenario: Init made no menu\n", stderr);
        return 1;
    }
    const double show = scenario.Show();
    double firstOpen = 0;
    double empty = 0;
    std::vector<double> first;
    std::vector<double> second;
    scenario.OpenAll(first, firstOpen, empty);
    double secondOfFirst = 0;
    scenario.OpenAll(second, secondOfFirst, empty);
    second.push_back(secondOfFirst);
    const long rssAll = ResidentKb();
    const double pickAndUpdate = scenario.PickAndUpdate();
    const bool firstPickRight = scenario.PickIsRight();
    scenario.Show();
    const double pick = scenario.Pick();
    const bool right = firstPickRight && scenario.PickIsRight();
    const double showAgain = scenario.Show();
    scenario.ScrollThroughAll();
    const long rssScrolled = ResidentKb();

    const double start = StartMs(main);
    std::printf(
        "{\"prog\":\"veldan\",\"mode\":\"-\",\"profiles\":%zu,\"init_total_ms\":%.3f,\"load_ms\":%.3f,"
        "\"init_ms\":%.3f,\"show_ms\":%.3f,\"show_again_ms\":%.3f,\"first_open_ms\":%.3f,\"hover_first_ms\":%.3f,"
        "\"hover_second_ms\":%.3f,\"hover_empty_ms\":%.3f,\"pick_ms\":%.3f,\"pick_update_ms\":%.3f,\"pick_ok\":%s,"
        "\"rss_init_kb\":%ld,"
        "\"rss_all_kb\":%ld,\"rss_scrolled_kb\":%ld}\n",
        tree->profiles, ready - start, main - start, ready - begin, show, showAgain, firstOpen, Median(first),
        Median(second), empty, pick, pickAndUpdate, right ? "true" : "false", rssInit, rssAll, rssScrolled);
    VELDAN_ReleaseProfileMenus();
    return right ? 0 : 1;
}
