#pragma once

#include "Platform/Linux/http/UrlExchange.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace quillon {

/// A fetch as its task and the thread that exchanges both know it.
struct UrlOrder {
    UrlRequest request;
    std::atomic<bool> isCancelled = false;

    /// Main thread only; empty once it was called or the task is gone, so that what it holds never
    /// ends on another thread.
    std::function<void(UrlResult)> completion;
};

/// The exchanges that are under way, on the thread that made it.
class UrlTransfers {
  public:
    using Report = std::function<void(const std::shared_ptr<UrlOrder>&, UrlResult)>;

    /// The settings must outlive this.
    UrlTransfers(const UrlSettings& settings, Report report);
    UrlTransfers(const UrlTransfers&) = delete;
    UrlTransfers& operator=(const UrlTransfers&) = delete;
    ~UrlTransfers();

    void add(std::shared_ptr<UrlOrder> order);

    /// Does what can be done at once, then waits until there is more to do or `wake` is readable.
    void turn(int wake);

    [[nodiscard]] bool empty() const { return transfers_.empty(); }

  private:
    struct Transfer {
        std::shared_ptr<UrlOrder> order;
        std::unique_ptr<UrlExchange> exchange;
    };
    struct MultiDeleter {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };

    void takeEnded();
    void ended(CURL* easy, CURLcode code);
    void dropCancelledAndLate();
    void drop(std::vector<Transfer>::iterator transfer);
    [[nodiscard]] int untilNextDeadline() const;

    const UrlSettings& settings_;
    Report report_;
    std::unique_ptr<CURLM, MultiDeleter> multi_;
    std::vector<Transfer> transfers_; // a few dozen at most
};

} // namespace quillon
