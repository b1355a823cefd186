#include "Platform/MacOS/UrlFetch.h"

#include <utility>

namespace quillon {

namespace {
constexpr const char* tooLarge = "the server's answer is too large";
}

UrlFetch::UrlFetch(RunLoop& runLoop, UrlRequest request, std::function<void(UrlResult)> completion)
    : runLoop_(runLoop), request_(std::move(request)), completion_(std::move(completion)) {}

bool UrlFetch::giveUp(std::string why) {
    failure_ = std::move(why);
    return false;
}

bool UrlFetch::follows(const std::string& from, const std::string& fromScheme,
                       const std::string& to, const std::string& toScheme) {
    const bool isSecure = toScheme == "https" || (toScheme == "http" && fromScheme != "https");
    if (!isSecure || (request_.mayRedirect && !request_.mayRedirect(from, to))) {
        return giveUp("the server refers to an address that is not secure");
    }
    if (++redirects_ > request_.mostRedirects) {
        return giveUp("the server refers from one address to the next without end");
    }
    return true;
}

bool UrlFetch::takesBodyOf(long long expectedBytes) {
    const bool isKnown = expectedBytes >= 0;
    return !isKnown || static_cast<std::size_t>(expectedBytes) <= request_.largestBody ||
           giveUp(tooLarge);
}

bool UrlFetch::takeBody(std::string_view piece) {
    if (!failure_.empty()) {
        return false;
    }
    if (piece.size() > request_.largestBody - body_->size()) {
        return giveUp(tooLarge);
    }
    body_->append(piece);
    return true;
}

void UrlFetch::ended(std::optional<int> statusCode, std::optional<std::string> error) {
    UrlResult result;
    if (!failure_.empty()) {
        result = UrlError{failure_};
    } else if (error) {
        result = UrlError{std::move(*error)};
    } else {
        result = UrlResponse{statusCode, std::move(body_)};
    }
    runLoop_.async([self = shared_from_this(), result = std::move(result)]() mutable {
        if (const auto completion = std::exchange(self->completion_, nullptr)) {
            completion(std::move(result));
        }
    });
}

} // namespace quillon
