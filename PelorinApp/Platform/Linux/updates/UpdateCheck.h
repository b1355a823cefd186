#pragma once

#include "Platform/Linux/updates/FeedFetcher.h"
#include "Platform/Linux/updates/UpdateChoice.h"
#include "Platform/RunLoop.h"

namespace quillon {

/// What a feed publishes, nothing if no version is for us, or why that is not known.
using UpdateFindings = std::variant<std::optional<PublishedVersion>, FeedFailure>;

/// One look into the feed, within a time limit. Destroying it cancels it.
class UpdateCheck {
  public:
    /// For everything, in seconds.
    static constexpr double limit = 30;

    /// `completion` is called once, after the constructor has returned, and may destroy this.
    UpdateCheck(RunLoop& runLoop, FeedFetcher& fetcher, const std::string& address,
                std::function<void(UpdateFindings)> completion);
    UpdateCheck(const UpdateCheck&) = delete;
    UpdateCheck& operator=(const UpdateCheck&) = delete;
    ~UpdateCheck() { timeout_->cancel(); }

  private:
    void read(const FetchedFeed& feed);
    void complete(UpdateFindings findings);

    std::function<void(UpdateFindings)> completion_;
    TimerRef timeout_;
    std::unique_ptr<FeedFetch> fetch_;
};

} // namespace quillon
