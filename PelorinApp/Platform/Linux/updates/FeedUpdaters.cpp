#include "Platform/Linux/updates/FeedUpdaters.h"

#include "Platform/Linux/updates/HttpFeedFetcher.h"

#include <algorithm>

namespace quillon {

namespace {

/// Of the characters that an HTTP token may have, those that versions use.
bool isTokenCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' ||
           c == '-' || c == '+' || c == '_';
}

} // namespace

std::string userAgent(std::string_view version) {
    std::string token;
    std::copy_if(version.begin(), version.end(), std::back_inserter(token), isTokenCharacter);
    return token.empty() ? "Quillon" : "Quillon/" + token;
}

std::unique_ptr<UpdaterController>
FeedUpdaters::makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) {
    auto fetcher = std::make_unique<HttpFeedFetcher>(
        services_.runLoop,
        UrlSettings{.userAgent = userAgent(services_.bundle.infoString("version").value_or(""))});
    auto controller =
        std::make_unique<FeedUpdater>(services_, std::move(fetcher), std::move(delegate));
    if (startingUpdater) {
        controller->start();
    }
    return controller;
}

} // namespace quillon
