#include "Platform/MacOS/DispatchSerialQueue.h"

#include <string>
#include <utility>

namespace quillon {

DispatchSerialQueue::DispatchSerialQueue(std::string_view label)
    : queue_(dispatch_queue_create(std::string(label).c_str(), DISPATCH_QUEUE_SERIAL)) {}

DispatchSerialQueue::~DispatchSerialQueue() {
    while (waiting_.pop()) {
    }
    // Whatever the system still has to call uses this object.
    dispatch_sync_f(queue_, nullptr, [](void* /*context*/) {});
    dispatch_release(queue_);
}

void DispatchSerialQueue::sync(const std::function<void()>& work) {
    dispatch_sync_f(queue_, const_cast<std::function<void()>*>(&work),
                    [](void* context) { (*static_cast<const std::function<void()>*>(context))(); });
}

void DispatchSerialQueue::enqueue(std::unique_ptr<Work> work) {
    waiting_.push(std::move(work));
    dispatch_async_f(queue_, this, runNext);
}

void DispatchSerialQueue::runNext(void* self) {
    if (const auto work = static_cast<DispatchSerialQueue*>(self)->waiting_.pop()) {
        work->run();
    }
}

} // namespace quillon
