#include "Hub/HubServices.h"

#include <charconv>
#include <utility>

namespace quillon {

namespace {

/// A positive number of the configuration.
template <class T>
T configured(const Bundle& bundle, std::string_view key, T fallback) {
    const auto text = bundle.infoString(key).value_or("");
    T number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number > 0 ? number : fallback;
}

} // namespace

HubServices HubServices::of(Platform& platform) {
    return {platform.runLoop, platform.userDefaults.standard(),
            platform.bundle,  platform.diagnostics,
            platform.urls,    platform.files};
}

std::optional<std::filesystem::path> HubServices::supportFolder() const {
    const auto parent = fileManager.applicationSupportDirectory();
    return parent ? std::optional(folderWithin(*parent)) : std::nullopt;
}

std::filesystem::path HubServices::folderWithin(const std::filesystem::path& parent) const {
    return parent / bundle.identifier();
}

UrlRequest HubServices::request(std::string url, std::size_t usualLimit) const {
    UrlRequest request{.url = std::move(url)};
    request.largestBody = configured(bundle, "HubLargestDownload", usualLimit);
    request.patience = configured(bundle, "HubRequestTimeout", request.patience);
    return request;
}

} // namespace quillon
