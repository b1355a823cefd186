#pragma once

#include "Platform/MainQueue.h"
#include "Platform/RunLoop.h"

#include <dispatch/dispatch.h>

#include <string_view>

namespace quillon {

/// A serial queue of the system. Its pieces of work wait in a list of our own, so that what has not
/// begun can be dropped.
class DispatchSerialQueue final : public SerialQueue {
  public:
    explicit DispatchSerialQueue(std::string_view label);
    DispatchSerialQueue(const DispatchSerialQueue&) = delete;
    DispatchSerialQueue& operator=(const DispatchSerialQueue&) = delete;

    /// Waits for the piece of work that is running.
    ~DispatchSerialQueue() override;

    void sync(const std::function<void()>& work) override;

  protected:
    void enqueue(std::unique_ptr<Work> work) override;

  private:
    static void runNext(void* self);

    MainQueue waiting_;
    dispatch_queue_t queue_;
};

} // namespace quillon
