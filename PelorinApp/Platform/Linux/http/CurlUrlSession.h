#pragma once

#include "Platform/Linux/http/UrlSettings.h"
#include "Platform/RunLoop.h"
#include "Platform/UrlSession.h"

#include <memory>
#include <string>

namespace quillon {

class UrlExchangeThread;

/// Fetches over HTTP by libcurl, on a thread that exists only while something is fetched: whatever
/// a server does, the main thread never waits for it. Tasks may outlive the session.
///
/// Only http and https are spoken; certificates are verified; nothing is kept from one fetch to the
/// next, such as cookies. A user name in the address is told to its host, but to none that it
/// refers to. The environment's proxies are used, except for this computer itself. A server that
/// cannot be connected to within 10 seconds, or the request's patience, or that takes more than a
/// quarter of an hour for all is given up.
class CurlUrlSession final : public UrlSession {
  public:
    CurlUrlSession(RunLoop& runLoop, std::string userAgent);
    CurlUrlSession(RunLoop& runLoop, UrlSettings settings);

    /// Gives up what is under way, without waiting for servers: completions are not called any
    /// more.
    ~CurlUrlSession() override;
    CurlUrlSession(const CurlUrlSession&) = delete;
    CurlUrlSession& operator=(const CurlUrlSession&) = delete;

    [[nodiscard]] std::unique_ptr<UrlTask>
    fetchData(UrlRequest request, std::function<void(UrlResult)> completion) override;

  private:
    std::shared_ptr<UrlExchangeThread> thread_;
};

} // namespace quillon
