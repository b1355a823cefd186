#include "Platform/Linux/http/UrlTransfers.h"

#include "Platform/Linux/http/CurlFailure.h"

#include <algorithm>
#include <utility>

namespace quillon {

UrlTransfers::UrlTransfers(const UrlSettings& settings, Report report)
    : settings_(settings), report_(std::move(report)), multi_(curl_multi_init()) {}

UrlTransfers::~UrlTransfers() {
    while (!transfers_.empty()) {
        drop(transfers_.begin());
    }
}

void UrlTransfers::add(std::shared_ptr<UrlOrder> order) {
    if (order->isCancelled) {
        return;
    }
    auto exchange = std::make_unique<UrlExchange>(order->request, settings_);
    if (auto error = exchange->prepare()) {
        report_(order, std::move(*error));
    } else if (multi_ == nullptr ||
               curl_multi_add_handle(multi_.get(), exchange->easy()) != CURLM_OK) {
        report_(order, UrlError{failureReason(CURLE_FAILED_INIT, 0)});
    } else {
        transfers_.push_back({std::move(order), std::move(exchange)});
    }
}

void UrlTransfers::drop(std::vector<Transfer>::iterator transfer) {
    curl_multi_remove_handle(multi_.get(), transfer->exchange->easy());
    transfers_.erase(transfer);
}

void UrlTransfers::turn(int wake) {
    dropCancelledAndLate();
    int running = 0;
    curl_multi_perform(multi_.get(), &running);
    takeEnded();
    if (!transfers_.empty()) {
        curl_waitfd waker{wake, CURL_WAIT_POLLIN, 0};
        curl_multi_poll(multi_.get(), &waker, 1, untilNextDeadline(), nullptr);
    }
}

void UrlTransfers::takeEnded() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg == CURLMSG_DONE) {
            ended(message->easy_handle, message->data.result); // the message goes with its handle
        }
    }
}

void UrlTransfers::ended(CURL* easy, CURLcode code) {
    const auto found = std::find_if(transfers_.begin(), transfers_.end(),
                                    [&](const auto& one) { return one.exchange->easy() == easy; });
    curl_multi_remove_handle(multi_.get(), easy);
    auto result = found->exchange->transferEnded(code);
    if (!result && curl_multi_add_handle(multi_.get(), easy) != CURLM_OK) {
        result = UrlError{failureReason(CURLE_FAILED_INIT, 0)};
    }
    if (result) {
        report_(found->order, std::move(*result));
        transfers_.erase(found);
    }
}

void UrlTransfers::dropCancelledAndLate() {
    const auto now = UrlExchange::Clock::now();
    for (auto one = transfers_.begin(); one != transfers_.end();) {
        const bool isLate = one->exchange->deadline() <= now;
        if (isLate) {
            report_(one->order, UrlError{tooSlowAnswer});
        }
        if (isLate || one->order->isCancelled) {
            const auto place = one - transfers_.begin();
            drop(one);
            one = transfers_.begin() + place;
        } else {
            ++one;
        }
    }
}

int UrlTransfers::untilNextDeadline() const {
    const auto next = std::min_element(
        transfers_.begin(), transfers_.end(), [](const Transfer& one, const Transfer& other) {
            return one.exchange->deadline() < other.exchange->deadline();
        });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next->exchange->deadline() -
                                                                   UrlExchange::Clock::now());
    return static_cast<int>(std::max<std::int64_t>(0, left.count()));
}

} // namespace quillon
