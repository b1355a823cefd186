#include "Platform/Simulated/SimulatedUrlSession.h"

#include <string_view>
#include <utility>

namespace quillon {

namespace {

/// To the web alone, and never to less security.
bool mayFollow(std::string_view from, std::string_view to) {
    return to.starts_with("https://") || (to.starts_with("http://") && from.starts_with("http://"));
}

} // namespace

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
    Answer answer = answerTo(request);
    requests_.push_back(std::move(request));
    auto timer = runLoop_.asyncAfter(answer.seconds,
                                     [result = std::move(answer.result),
                                      completion = std::move(completion)] { completion(result); });
    return std::make_unique<SimulatedTask>(std::move(timer), underWay_);
}

SimulatedUrlSession::Answer SimulatedUrlSession::answerTo(const UrlRequest& request) const {
    std::string address = request.url;
    int followed = 0;
    for (auto next = redirects_.find(address); next != redirects_.end();
         next = redirects_.find(address)) {
        if (followed++ == request.mostRedirects || !mayFollow(address, next->second) ||
            (request.mayRedirect && !request.mayRedirect(address, next->second))) {
            return {UrlError{"The server refers to an address that is not allowed."}, 0};
        }
        address = next->second;
    }
    const auto found = answers_.find(address);
    if (found == answers_.end()) {
        return {UrlError{"Could not connect to the server."}, 0};
    }
    if (const auto* response = std::get_if<UrlResponse>(&found->second.result);
        response != nullptr && response->body->size() > request.largestBody) {
        return {UrlError{"The answer is too large."}, found->second.seconds};
    }
    return found->second;
}

void SimulatedUrlSession::answer(const std::string& url, int statusCode, std::string body,
                                 double seconds) {
    answers_.insert_or_assign(
        url,
        Answer{UrlResponse{statusCode, std::make_shared<std::string>(std::move(body))}, seconds});
}

void SimulatedUrlSession::redirect(const std::string& url, const std::string& to) {
    redirects_.insert_or_assign(url, to);
}

void SimulatedUrlSession::fail(const std::string& url, std::string description, double seconds) {
    answers_.insert_or_assign(url, Answer{UrlError{std::move(description)}, seconds});
}

} // namespace quillon
