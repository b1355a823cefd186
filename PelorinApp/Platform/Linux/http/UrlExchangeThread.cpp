#include "Platform/Linux/http/UrlExchangeThread.h"

#include "Platform/Linux/http/CurlFailure.h"

#include <chrono>
#include <csignal>
#include <system_error>
#include <utility>

#include <pthread.h>

namespace quillon {

namespace {

// At its end the process takes TLS down, in which the thread should not be any more. It hears of
// the end at once, and usually has gone within a millisecond; should it be busy, as with reading
// certificates, it is left to itself rather than waited for longer than anybody would notice.
constexpr std::chrono::milliseconds longestFarewell{20};

/// The library's own set-up, which is not to keep the main thread. Should it fail, no handle can be
/// made, which is told like every failure.
void prepareLibrary() {
    [[maybe_unused]] static const CURLcode prepared = curl_global_init(CURL_GLOBAL_DEFAULT);
}

} // namespace

/// Threads that start while there is one leave all signals to others; above all, a connection that
/// breaks off must not end the process.
class UrlExchangeThread::NoSignals {
  public:
    NoSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;
    ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_{};
};

UrlExchangeThread::UrlExchangeThread(RunLoop& runLoop, UrlSettings settings)
    : settings_(std::move(settings)), runLoop_(&runLoop) {}

void UrlExchangeThread::begin(std::shared_ptr<UrlOrder> order) {
    const std::scoped_lock lock(mutex_);
    orders_.push_back(std::move(order));
    if (isRunning_) {
        wake_.wake();
    } else {
        start();
    }
}

void UrlExchangeThread::start() {
    if (thread_.joinable()) {
        thread_.join(); // it has let go of everything already
    }
    try {
        const NoSignals none;
        thread_ = std::thread([self = shared_from_this()] { self->run(); });
        isRunning_ = true;
        pthread_setname_np(thread_.native_handle(), "http");
    } catch (const std::system_error&) {
        for (const auto& order : std::exchange(orders_, {})) {
            complete(order, UrlError{failureReason(CURLE_FAILED_INIT, 0)});
        }
    }
}

void UrlExchangeThread::cancel(UrlOrder& order) {
    order.completion = nullptr;
    order.isCancelled = true;
    wake_.wake();
}

void UrlExchangeThread::end() {
    std::unique_lock lock(mutex_);
    runLoop_ = nullptr;
    orders_.clear();
    wake_.wake();
    const bool hasStopped =
        stopped_.wait_for(lock, longestFarewell, [this] { return !isRunning_; });
    lock.unlock();
    if (thread_.joinable()) {
        hasStopped ? thread_.join() : thread_.detach();
    }
}

bool UrlExchangeThread::hasOrders() {
    const std::scoped_lock lock(mutex_);
    if (orders_.empty()) {
        isRunning_ = false;
        stopped_.notify_all();
    }
    return isRunning_;
}

bool UrlExchangeThread::takeOrders(UrlTransfers& transfers) {
    wake_.clear();
    std::vector<std::shared_ptr<UrlOrder>> orders;
    {
        const std::scoped_lock lock(mutex_);
        if (runLoop_ == nullptr) {
            return false;
        }
        orders.swap(orders_);
    }
    for (auto& order : orders) {
        transfers.add(std::move(order));
    }
    return !transfers.empty();
}

void UrlExchangeThread::run() {
    prepareLibrary();
    while (hasOrders()) {
        UrlTransfers transfers(settings_,
                               [this](const std::shared_ptr<UrlOrder>& order, UrlResult result) {
                                   report(order, std::move(result));
                               });
        while (takeOrders(transfers)) {
            transfers.turn(wake_.descriptor());
        }
    }
}

void UrlExchangeThread::report(const std::shared_ptr<UrlOrder>& order, UrlResult result) {
    const std::scoped_lock lock(mutex_);
    complete(order, std::move(result));
}

void UrlExchangeThread::complete(const std::shared_ptr<UrlOrder>& order, UrlResult result) {
    if (runLoop_ != nullptr) {
        runLoop_->async([self = shared_from_this(), order, held = std::move(result)]() mutable {
            const auto completion = std::exchange(order->completion, nullptr);
            if (completion && self->runLoop_ != nullptr) { // which only this thread sets
                completion(std::move(held));
            }
        });
    }
}

} // namespace quillon
