#pragma once

#include <dispatch/dispatch.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace quillon::fakes {

/// A queue, whose work waits until a test has it run.
struct FakeQueue {
    struct Piece {
        void* context;
        dispatch_function_t work;
    };
    std::string label;
    bool isSerial = true;
    bool isReleased = false;
    std::deque<Piece> waiting;

    /// What is there now, in order. How many pieces ran.
    int run();
};

/// The system's queues.
class FakeDispatch {
  public:
    struct GlobalRequest {
        std::intptr_t identifier;
        std::uintptr_t flags;
    };
    struct After {
        dispatch_time_t when; // 0 for now, else nanoseconds after it
        FakeQueue* queue;
        FakeQueue::Piece piece;
    };

    FakeQueue main{.label = "com.apple.main-thread"};
    FakeQueue global{.label = "global", .isSerial = false};
    std::vector<std::unique_ptr<FakeQueue>> made;

    std::vector<GlobalRequest> globalRequests;
    std::vector<After> afters;

    /// The times of those that wait are over: they run, in the order in which they were asked for.
    void runAfters();

    /// Forgets everything, also what waits.
    void reset();
};

FakeDispatch& fakeDispatch();

} // namespace quillon::fakes
