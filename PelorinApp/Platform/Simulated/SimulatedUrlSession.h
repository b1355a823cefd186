#pragma once

#include "Platform/RunLoop.h"
#include "Platform/UrlSession.h"

#include <map>
#include <string>
#include <vector>

namespace quillon {

/// Servers in memory. An address that nobody has given an answer to cannot be reached.
class SimulatedUrlSession final : public UrlSession {
  public:
    explicit SimulatedUrlSession(RunLoop& runLoop) : runLoop_(runLoop) {}

    [[nodiscard]] std::unique_ptr<UrlTask>
    fetchData(UrlRequest request, std::function<void(UrlResult)> completion) override;

    /// From now on this address answers so, `seconds` after it was asked.
    void answer(const std::string& url, int statusCode, std::string body, double seconds = 0);
    void fail(const std::string& url, std::string description, double seconds = 0);

    /// From now on this address refers to another.
    void redirect(const std::string& url, const std::string& to);

    [[nodiscard]] const std::vector<UrlRequest>& requests() const { return requests_; }

    /// How many fetches are under way.
    [[nodiscard]] int underWay() const { return *underWay_; }

  private:
    class SimulatedTask;
    struct Answer {
        UrlResult result;
        double seconds;
    };

    [[nodiscard]] Answer answerTo(const UrlRequest& request) const;

    RunLoop& runLoop_;
    std::map<std::string, Answer> answers_;
    std::map<std::string, std::string> redirects_;
    std::vector<UrlRequest> requests_;
    std::shared_ptr<int> underWay_ = std::make_shared<int>(0);
};

} // namespace quillon
