#include "Platform/Linux/http/CurlUrlSession.h"

#include <utility>

namespace quillon {

CurlUrlSession::CurlUrlSession(RunLoop& runLoop, std::string userAgent)
    : runLoop_(runLoop), userAgent_(std::move(userAgent)) {}

CurlUrlSession::~CurlUrlSession() = default;

std::unique_ptr<UrlTask> CurlUrlSession::fetchData(UrlRequest /*request*/,
                                                   std::function<void(UrlResult)> completion) {
    runLoop_.async(
        [completion = std::move(completion)] { completion(UrlError{"nothing is fetched yet"}); });
    return std::make_unique<UrlTask>();
}

} // namespace quillon
