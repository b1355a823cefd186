#include "FakeDispatch.h"

#include <utility>

namespace quillon::fakes {

int FakeQueue::run() {
    int count = 0;
    for (auto pieces = std::exchange(waiting, {}); !pieces.empty(); ++count) {
        const Piece piece = pieces.front();
        pieces.pop_front();
        piece.work(piece.context);
    }
    return count;
}

void FakeDispatch::runAfters() {
    for (const After& after : std::exchange(afters, {})) {
        after.piece.work(after.piece.context);
    }
}

void FakeDispatch::reset() {
    main.waiting.clear();
    global.waiting.clear();
    made.clear();
    globalRequests.clear();
    afters.clear();
}

FakeDispatch& fakeDispatch() {
    static FakeDispatch dispatch;
    return dispatch;
}

} // namespace quillon::fakes

using quillon::fakes::fakeDispatch;
using quillon::fakes::FakeQueue;

namespace {

FakeQueue* fake(dispatch_queue_t queue) { return reinterpret_cast<FakeQueue*>(queue); }
dispatch_queue_t real(FakeQueue* queue) { return reinterpret_cast<dispatch_queue_t>(queue); }

} // namespace

extern "C" {

dispatch_queue_main_t dispatch_get_main_queue() { return real(&fakeDispatch().main); }

dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags) {
    fakeDispatch().globalRequests.push_back({identifier, flags});
    return real(&fakeDispatch().global);
}

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attr) {
    auto& made = fakeDispatch().made;
    made.push_back(std::make_unique<FakeQueue>());
    made.back()->label = label;
    made.back()->isSerial = attr == nullptr;
    return real(made.back().get());
}

void dispatch_release(dispatch_queue_t object) { fake(object)->isReleased = true; }

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    fake(queue)->waiting.push_back({context, work});
}

void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    while (fake(queue)->run() > 0) {
    }
    work(context);
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work) {
    fakeDispatch().afters.push_back({when, fake(queue), {context, work}});
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
    return when + static_cast<dispatch_time_t>(delta);
}

} // extern "C"
