#include "Platform/MainQueue.h"

namespace quillon {

MainQueue::~MainQueue() {
    // One by one: the default would destroy a long chain recursively.
    while (pop()) {
    }
}

bool MainQueue::push(std::unique_ptr<Work> work) {
    const std::scoped_lock lock(mutex_);
    Work* added = work.get();
    const bool wasEmpty = head_ == nullptr;
    if (wasEmpty) {
        head_ = std::move(work);
    } else {
        tail_->next = std::move(work);
    }
    tail_ = added;
    return wasEmpty;
}

std::unique_ptr<Work> MainQueue::popFrom(std::unique_ptr<Work>& head) {
    std::unique_ptr<Work> first = std::move(head);
    if (first) {
        head = std::move(first->next);
    }
    return first;
}

std::unique_ptr<Work> MainQueue::pop() {
    const std::scoped_lock lock(mutex_);
    return popFrom(head_);
}

std::size_t MainQueue::runQueued() {
    std::unique_ptr<Work> queued;
    {
        const std::scoped_lock lock(mutex_);
        queued = std::move(head_);
    }
    std::size_t count = 0;
    while (auto work = popFrom(queued)) {
        work->run();
        ++count;
    }
    return count;
}

} // namespace quillon
