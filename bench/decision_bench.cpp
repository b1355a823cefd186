// What one scroll event costs in the tap: nanoseconds, and allocations per event.

#include "support/AllocationCount.h"
#include "support/ToolBench.h"

#include <benchmark/benchmark.h>

namespace quillon {
namespace {

/// Sends events through the tap callback, as a platform does, and empties the queue behind it
/// outside the measurement.
void decide(benchmark::State& state, bool armed, Point pointer) {
    ToolBench bench;
    bench.store("Tool4LeftEdge", armed);
    const auto manager = bench.startTool();
    bench.desktop.displays.pointer = pointer;
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);

    std::size_t allocations = 0;
    constexpr int batch = 1000;
    while (state.KeepRunningBatch(batch)) {
        const std::size_t before = allocationCount();
        for (int i = 0; i < batch; ++i) {
            benchmark::DoNotOptimize(
                EdgeScrollManager::tapCallback(EventType::scrollWheel, &event, manager.get()));
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

BENCHMARK_CAPTURE(decide, no_edge_armed, false, Point{5, 450});
BENCHMARK_CAPTURE(decide, outside_the_band, true, Point{720, 450});
BENCHMARK_CAPTURE(decide, in_the_band, true, Point{5, 450});

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
