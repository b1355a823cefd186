#pragma once

#include "Platform/Linux/updates/FeedFetcher.h"

namespace quillon {

/// Fetches over HTTP. The network stack, with its thread, exists only as long as a fetch.
class HttpFeedFetcher final : public FeedFetcher {
  public:
    /// No more than this is read, in bytes.
    static constexpr int largestFeed = 1024 * 1024;

    explicit HttpFeedFetcher(std::string userAgent) : userAgent_(std::move(userAgent)) {}

    [[nodiscard]] std::unique_ptr<FeedFetch>
    fetch(const std::string& address, std::function<void(FetchedFeed)> completion) override;

  private:
    std::string userAgent_;
};

} // namespace quillon
