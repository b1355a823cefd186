#pragma once

#include "Platform/Linux/updates/FeedFetcher.h"
#include "Platform/RunLoop.h"

namespace quillon {

/// Fetches over HTTP. The network stack, with its thread, exists only as long as a fetch.
///
/// Qt 6.4 reads headers of any length: destroying a fetch whose server floods it with them takes
/// the 5 seconds for which Qt waits for its thread.
class HttpFeedFetcher final : public FeedFetcher {
  public:
    /// No more than this is read, in bytes.
    static constexpr int largestFeed = 1024 * 1024;

    HttpFeedFetcher(RunLoop& runLoop, std::string userAgent)
        : runLoop_(runLoop), userAgent_(std::move(userAgent)) {}

    [[nodiscard]] std::unique_ptr<FeedFetch>
    fetch(const std::string& address, std::function<void(FetchedFeed)> completion) override;

  private:
    RunLoop& runLoop_;
    std::string userAgent_;
};

} // namespace quillon
