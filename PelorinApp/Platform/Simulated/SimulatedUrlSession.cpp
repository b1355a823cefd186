#include "Platform/Simulated/SimulatedUrlSession.h"

#include <utility>

namespace quillon {

class SimulatedUrlSession::SimulatedTask final : public UrlTask {
  public:
    SimulatedTask(TimerRef timer, std::shared_ptr<int> underWay)
        : timer_(std::move(timer)), underWay_(std::move(underWay)) {
        ++*underWay_;
    }
    SimulatedTask(const SimulatedTask&) = delete;
    SimulatedTask& operator=(const SimulatedTask&) = delete;
    ~SimulatedTask() override {
        --*underWay_;
        timer_->cancel();
    }

  private:
    TimerRef timer_;
    std::shared_ptr<int> underWay_;
};

std::unique_ptr<UrlTask> SimulatedUrlSession::fetchData(UrlRequest request,
                                                        std::function<void(UrlResult)> completion) {
    const auto found = answers_.find(request.url);
    Answer answer = found != answers_.end()
                        ? found->second
                        : Answer{UrlError{"Could not connect to the server."}, 0};
    if (const auto* response = std::get_if<UrlResponse>(&answer.result);
        response != nullptr && response->body->size() > request.largestBody) {
        answer.result = UrlError{"The answer is too large."};
    }
    requests_.push_back(std::move(request));
    auto timer = runLoop_.asyncAfter(answer.seconds,
                                     [result = std::move(answer.result),
                                      completion = std::move(completion)] { completion(result); });
    return std::make_unique<SimulatedTask>(std::move(timer), underWay_);
}

void SimulatedUrlSession::answer(const std::string& url, int statusCode, std::string body,
                                 double seconds) {
    answers_.insert_or_assign(
        url,
        Answer{UrlResponse{statusCode, std::make_shared<std::string>(std::move(body))}, seconds});
}

void SimulatedUrlSession::fail(const std::string& url, std::string description, double seconds) {
    answers_.insert_or_assign(url, Answer{UrlError{std::move(description)}, seconds});
}

} // namespace quillon
