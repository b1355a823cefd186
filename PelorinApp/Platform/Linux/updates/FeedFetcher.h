#pragma once

#include "Platform/Linux/updates/Appcast.h"

#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace quillon {

/// The bytes of a feed, or why there are none.
using FetchedFeed = std::variant<std::string, FeedFailure>;

/// A fetch under way. Destroying it cancels it.
class FeedFetch {
  public:
    FeedFetch() = default;
    FeedFetch(const FeedFetch&) = delete;
    FeedFetch& operator=(const FeedFetch&) = delete;
    virtual ~FeedFetch() = default;
};

/// Where feeds come from. Main thread only.
class FeedFetcher {
  public:
    virtual ~FeedFetcher() = default;

    /// Begins to fetch from an address that mayFetch() allows. `completion` is called once, after
    /// this call has returned, and may destroy the fetch; never after the fetch is destroyed.
    [[nodiscard]] virtual std::unique_ptr<FeedFetch>
    fetch(const std::string& address, std::function<void(FetchedFeed)> completion) = 0;
};

} // namespace quillon
