// The window system on the display in memory.

#include "platform/display/memory/MemoryDisplay.h"
#include "platform/window/Desktop.h"
#include "platform/window/Wnd.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace veldan {

namespace {

constexpr UINT kMessage = WM_USER + 1;

/// A window with a handler in its table.
class Target : public CWnd {
public:
    int handled = 0;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {OnMessage<kMessage, &Target::OnUser>()};
        static const MessageMap kMap{&CWnd::ClassMessageMap(), kEntries};
        return kMap;
    }

private:
    LRESULT OnUser(WPARAM, LPARAM) { return ++handled; }
};

/// A desktop of its own with one popup.
class World {
public:
    World() {
        Desktop::Install(std::make_unique<Desktop>(std::make_unique<MemoryDisplay>(), std::make_unique<ManualClock>()));
        parent.CreateEx(0, CWnd::kPlainClass, "", WS_POPUP | WS_VISIBLE, {0, 0, 1000, 1000}, {}, 0);
        Desktop::Get().Dispatch();
    }
    ~World() {
        parent.DestroyWindow();
        Desktop::Install(nullptr);
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    [[nodiscard]] std::vector<std::unique_ptr<CWnd>> MakeChildren(std::size_t count) {
        std::vector<std::unique_ptr<CWnd>> children;
        for (std::size_t i = 0; i < count; ++i) {
            const int x = static_cast<int>(i % 100) * 10;
            const int y = static_cast<int>(i / 100) * 10;
            children.push_back(std::make_unique<CWnd>());
            children.back()->CreateEx(0, CWnd::kPlainClass, "", WS_CHILD | WS_VISIBLE, {x, y, x + 10, y + 10},
                                      parent.GetSafeHwnd(), static_cast<UINT>(i));
        }
        return children;
    }

    Target parent;
};

void PostedMessageThroughAHandler(benchmark::State& state) {
    World world;
    Desktop& desktop = Desktop::Get();
    MSG message;
    for (auto _ : state) {
        world.parent.PostMessage(kMessage);
        while (desktop.PeekMessage(message)) {
            desktop.TranslateAndDispatch(message);
        }
    }
    benchmark::DoNotOptimize(world.parent.handled);
}
BENCHMARK(PostedMessageThroughAHandler);

/// The time per window to make a number of windows and destroy them again; the same for any number.
void CreateAndDestroy(benchmark::State& state) {
    World world;
    const auto count = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(world.MakeChildren(count));
    }
    state.counters["per_window"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(count),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(CreateAndDestroy)->Arg(100)->Arg(10'000);

/// The lowest of a number of visible siblings.
void WindowAtAPoint(benchmark::State& state) {
    World world;
    const auto children = world.MakeChildren(static_cast<std::size_t>(state.range(0)));
    const CRect last = children.back()->GetWindowRect();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Desktop::Get().WindowAt(world.parent.GetSafeHwnd(), last.TopLeft()));
    }
}
BENCHMARK(WindowAtAPoint)->Arg(100)->Arg(10'000);

}  // namespace

}  // namespace veldan
