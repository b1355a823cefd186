#pragma once

#include "Platform/Linux/http/CurlUrlSession.h"
#include "Platform/Linux/updates/FeedFetcher.h"
#include "Platform/RunLoop.h"

namespace quillon {

/// Fetches over HTTP. Whatever a server does, the main thread never waits for it.
class HttpFeedFetcher final : public FeedFetcher {
  public:
    /// No more than this is read, in bytes.
    static constexpr int largestFeed = 1024 * 1024;

    HttpFeedFetcher(RunLoop& runLoop, UrlSettings settings)
        : session_(runLoop, std::move(settings)) {}

    [[nodiscard]] std::unique_ptr<FeedFetch>
    fetch(const std::string& address, std::function<void(FetchedFeed)> completion) override;

  private:
    CurlUrlSession session_;
};

} // namespace quillon
