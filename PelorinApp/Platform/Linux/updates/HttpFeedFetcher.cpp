#include "Platform/Linux/updates/HttpFeedFetcher.h"

#include "Platform/Linux/updates/FeedAddress.h"

#include <utility>

namespace quillon {

namespace {

constexpr int mostRedirects = 5;

constexpr int firstRedirect = 300;
constexpr int firstError = 400;

FetchedFeed feedOf(const UrlResult& result) {
    if (const auto* error = std::get_if<UrlError>(&result)) {
        return FeedFailure{error->description};
    }
    const auto& response = std::get<UrlResponse>(result);
    const int status = response.statusCode.value_or(0);
    if (status >= firstError) {
        return FeedFailure{"the server answered with error " + std::to_string(status)};
    }
    if (status >= firstRedirect) { // one that leads nowhere
        return FeedFailure{"the server's answer makes no sense"};
    }
    return *response.body;
}

class HttpFeedFetch final : public FeedFetch {
  public:
    HttpFeedFetch(UrlSession& session, UrlRequest request,
                  std::function<void(FetchedFeed)> completion)
        : task_(session.fetchData(std::move(request),
                                  [completion = std::move(completion)](const UrlResult& result) {
                                      completion(feedOf(result));
                                  })) {}

  private:
    std::unique_ptr<UrlTask> task_;
};

} // namespace

std::unique_ptr<FeedFetch> HttpFeedFetcher::fetch(const std::string& address,
                                                  std::function<void(FetchedFeed)> completion) {
    UrlRequest request{.url = feedUrl(address).toEncoded().toStdString(),
                       .largestBody = largestFeed};
    request.mostRedirects = mostRedirects;
    request.mayRedirect = [](const std::string& from, const std::string& to) {
        return mayRedirect(feedUrl(from), feedUrl(to));
    };
    return std::make_unique<HttpFeedFetch>(session_, std::move(request), std::move(completion));
}

} // namespace quillon
