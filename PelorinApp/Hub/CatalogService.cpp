#include "Hub/CatalogService.h"

#include <QUrl>

#include <utility>

namespace quillon {

namespace {

constexpr const char* baseKey = "HubCatalogBaseURL";
constexpr const char* resource = "tools/catalog";

QUrl parse(const std::string& text) { return {QString::fromStdString(text), QUrl::StrictMode}; }

} // namespace

bool isAddress(const std::string& text) {
    const QUrl url = parse(text);
    return url.isValid() && !url.isEmpty();
}

std::optional<std::string> addressBelow(const std::string& base, std::string_view path) {
    if (!isAddress(base)) {
        return std::nullopt;
    }
    QUrl url = parse(base);
    QString whole = url.path(QUrl::FullyEncoded);
    if (!whole.endsWith(u'/')) {
        whole += u'/';
    }
    whole += QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
    url.setPath(whole, QUrl::StrictMode);
    return url.toString(QUrl::FullyEncoded).toStdString();
}

bool isSuccess(const UrlResponse& response) {
    constexpr int first = 200;
    constexpr int last = 299;
    return response.statusCode && *response.statusCode >= first && *response.statusCode <= last;
}

CatalogService::CatalogService(const HubServices& services, std::shared_ptr<SerialQueue> queue)
    : services_(services), queue_(std::move(queue)) {}

void CatalogService::fetchCatalog(std::function<void(ToolCatalog)> completion) {
    completion_ = std::make_shared<std::function<void(ToolCatalog)>>(std::move(completion));
    const auto address =
        addressBelow(services_.bundle.infoString(baseKey).value_or(developmentServer), resource);
    if (!address) {
        receive(UrlError{"no address"});
        return;
    }
    task_ = services_.session.fetchData(services_.request(*address, largestCatalog),
                                        [this](UrlResult result) {
                                            task_.reset();
                                            receive(std::move(result));
                                        });
}

void CatalogService::receive(UrlResult result) {
    queue_->async([result = std::move(result), &runLoop = services_.runLoop,
                   weak = std::weak_ptr(completion_)]() mutable {
        const auto* response = std::get_if<UrlResponse>(&result);
        auto catalog = response != nullptr && isSuccess(*response) ? decodeCatalog(*response->body)
                                                                   : std::nullopt;
        if (!catalog) {
            catalog = builtInCatalog();
        }
        runLoop.async([catalog = std::move(*catalog), weak = std::move(weak)]() mutable {
            if (const auto completion = weak.lock()) {
                (*completion)(std::move(catalog));
            }
        });
    });
}

} // namespace quillon
