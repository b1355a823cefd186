#pragma once

#include "Platform/MainQueue.h"
#include "Platform/RunLoop.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace quillon {

/// A serial queue on a thread of its own, which sleeps while there is nothing to do.
class ThreadQueue final : public SerialQueue {
  public:
    /// The thread is named by the beginning of `label`.
    explicit ThreadQueue(std::string_view label);
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    /// Waits for the piece of work that is running.
    ~ThreadQueue() override;

    void sync(const std::function<void()>& work) override;

  protected:
    void enqueue(std::unique_ptr<Work> work) override;

  private:
    void run();

    MainQueue queue_;
    std::mutex mutex_;
    std::condition_variable queued_;
    int count_ = 0; // of what is queued
    bool stops_ = false;
    std::thread thread_;
};

} // namespace quillon
