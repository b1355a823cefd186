// What one scroll event costs in a tap: nanoseconds, and allocations per event.

#include "Tools/Edges/ScrollReverseManager.h"
#include "support/AllocationCount.h"
#include "support/ToolBench.h"

#include <benchmark/benchmark.h>

namespace quillon {
namespace {

/// Sends events through a tap's callback, as a platform does, and empties the queue behind it
/// outside the measurement.
void decide(benchmark::State& state, ToolBench& bench, EventTapCallback callback, void* manager) {
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);

    std::size_t allocations = 0;
    constexpr int batch = 1000;
    while (state.KeepRunningBatch(batch)) {
        const std::size_t before = allocationCount();
        for (int i = 0; i < batch; ++i) {
            benchmark::DoNotOptimize(callback(EventType::scrollWheel, &event, manager));
        }
        allocations += allocationCount() - before;
        state.PauseTiming();
        bench.desktop.runLoop.drain();
        bench.actions.clear();
        state.ResumeTiming();
    }
    state.counters["allocations/event"] =
        static_cast<double>(allocations) / static_cast<double>(state.iterations());
}

void switchDesktops(benchmark::State& state, bool armed, Point pointer) {
    ToolBench bench;
    bench.store("Tool4LeftEdge", armed);
    const auto manager = bench.startTool();
    bench.desktop.displays.pointer = pointer;
    decide(state, bench, &EdgeScrollManager::tapCallback, manager.get());
}
BENCHMARK_CAPTURE(switchDesktops, no_edge_armed, false, Point{5, 450});
BENCHMARK_CAPTURE(switchDesktops, outside_the_band, true, Point{720, 450});
BENCHMARK_CAPTURE(switchDesktops, in_the_band, true, Point{5, 450});

void reverse(benchmark::State& state, bool mouse) {
    ToolBench bench;
    bench.store("ScrollReverseMouse", mouse);
    const auto manager = bench.start<ScrollReverseManager>();
    decide(state, bench, &ScrollReverseManager::tapCallback, manager.get());
}
BENCHMARK_CAPTURE(reverse, another_kind, false);
BENCHMARK_CAPTURE(reverse, this_kind, true);

/// The yardstick: what merely handing a piece of work to the main queue costs.
void handOver(benchmark::State& state) {
    SimulatedDesktop desktop;
    constexpr int batch = 1000;
    while (state.KeepRunningBatch(batch)) {
        for (int i = 0; i < batch; ++i) {
            desktop.runLoop.async([i] { benchmark::DoNotOptimize(i); });
        }
        state.PauseTiming();
        desktop.runLoop.drain();
        state.ResumeTiming();
    }
}
BENCHMARK(handOver)->Name("yardstick/hand_over_to_the_main_queue");

} // namespace
} // namespace quillon
