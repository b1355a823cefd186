#include "Platform/Linux/http/CurlUrlSession.h"

#include "Platform/Linux/http/UrlExchangeThread.h"

#include <utility>

namespace quillon {

namespace {

class CurlUrlTask final : public UrlTask {
  public:
    CurlUrlTask(std::shared_ptr<UrlExchangeThread> thread, std::shared_ptr<UrlOrder> order)
        : thread_(std::move(thread)), order_(std::move(order)) {}
    CurlUrlTask(const CurlUrlTask&) = delete;
    CurlUrlTask& operator=(const CurlUrlTask&) = delete;
    ~CurlUrlTask() override { thread_->cancel(*order_); }

  private:
    std::shared_ptr<UrlExchangeThread> thread_;
    std::shared_ptr<UrlOrder> order_;
};

} // namespace

CurlUrlSession::CurlUrlSession(RunLoop& runLoop, std::string userAgent)
    : CurlUrlSession(runLoop, UrlSettings{.userAgent = std::move(userAgent)}) {}

CurlUrlSession::CurlUrlSession(RunLoop& runLoop, UrlSettings settings)
    : thread_(std::make_shared<UrlExchangeThread>(runLoop, std::move(settings))) {}

CurlUrlSession::~CurlUrlSession() { thread_->end(); }

std::unique_ptr<UrlTask> CurlUrlSession::fetchData(UrlRequest request,
                                                   std::function<void(UrlResult)> completion) {
    auto order = std::make_shared<UrlOrder>();
    order->request = std::move(request);
    order->completion = std::move(completion);
    thread_->begin(order);
    return std::make_unique<CurlUrlTask>(thread_, std::move(order));
}

} // namespace quillon
