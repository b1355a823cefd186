#pragma once

#include "Platform/RunLoop.h"
#include "Platform/UrlSession.h"

#include <memory>
#include <string>

namespace quillon {

/// Fetches over HTTP by libcurl, on a thread that exists only while something is fetched: whatever
/// a server does, the main thread never waits for it. Tasks may outlive the session.
class CurlUrlSession final : public UrlSession {
  public:
    CurlUrlSession(RunLoop& runLoop, std::string userAgent);

    /// Gives up what is under way, without waiting for servers.
    ~CurlUrlSession() override;
    CurlUrlSession(const CurlUrlSession&) = delete;
    CurlUrlSession& operator=(const CurlUrlSession&) = delete;

    [[nodiscard]] std::unique_ptr<UrlTask>
    fetchData(UrlRequest request, std::function<void(UrlResult)> completion) override;

  private:
    class Exchange;

    RunLoop& runLoop_;
    std::string userAgent_;
};

} // namespace quillon
