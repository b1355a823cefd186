#include "Platform/Linux/session/ThreadQueue.h"

#include <utility>

#include <pthread.h>

namespace quillon {

namespace {
constexpr std::size_t longestThreadName = 15;
}

ThreadQueue::ThreadQueue(std::string_view label) : thread_([this] { run(); }) {
    const std::string name(label.substr(0, longestThreadName));
    pthread_setname_np(thread_.native_handle(), name.c_str());
}

ThreadQueue::~ThreadQueue() {
    {
        const std::scoped_lock lock(mutex_);
        stops_ = true;
    }
    queued_.notify_one();
    thread_.join();
}

void ThreadQueue::enqueue(std::unique_ptr<Work> work) {
    queue_.push(std::move(work));
    {
        const std::scoped_lock lock(mutex_);
        ++count_;
    }
    queued_.notify_one();
}

void ThreadQueue::sync(const std::function<void()>& work) {
    std::mutex mutex;
    std::condition_variable ran;
    bool hasRun = false;
    async([&] {
        work();
        const std::scoped_lock lock(mutex);
        hasRun = true;
        ran.notify_one(); // under the lock: the waiting thread owns the condition
    });
    std::unique_lock lock(mutex);
    ran.wait(lock, [&] { return hasRun; });
}

void ThreadQueue::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        queued_.wait(lock, [this] { return count_ > 0 || stops_; });
        if (stops_) {
            return;
        }
        --count_;
        lock.unlock();
        queue_.pop()->run();
        lock.lock();
    }
}

} // namespace quillon
