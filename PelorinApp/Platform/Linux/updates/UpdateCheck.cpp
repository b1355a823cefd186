#include "Platform/Linux/updates/UpdateCheck.h"

#include <utility>

namespace quillon {

UpdateCheck::UpdateCheck(RunLoop& runLoop, FeedFetcher& fetcher, const std::string& address,
                         std::function<void(UpdateFindings)> completion)
    : completion_(std::move(completion)),
      timeout_(runLoop.asyncAfter(
          limit, [this] { complete(FeedFailure{"the server takes too long to answer"}); })),
      fetch_(fetcher.fetch(address, [this](const FetchedFeed& feed) { read(feed); })) {}

void UpdateCheck::read(const FetchedFeed& feed) {
    if (const auto* failure = std::get_if<FeedFailure>(&feed)) {
        complete(*failure);
        return;
    }
    const auto parsed = parseAppcast(std::get<std::string>(feed));
    if (const auto* failure = std::get_if<FeedFailure>(&parsed)) {
        complete(*failure);
    } else {
        complete(newestVersion(std::get<Appcast>(parsed)));
    }
}

void UpdateCheck::complete(UpdateFindings findings) {
    timeout_->cancel();
    fetch_.reset();
    const auto completion = std::move(completion_);
    completion(std::move(findings));
}

} // namespace quillon
