#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace quillon {

struct UrlRequest {
    std::string url;

    /// An answer that grows beyond this many bytes is given up.
    std::size_t largestBody = 0;

    /// Seconds for which a server may send next to nothing until it is given up.
    double patience = 60;

    int mostRedirects = 10;

    /// Asked, on a thread that is not the main one, whether a server may refer from one address to
    /// another. Must own what it reads. Without it, what the session allows is followed.
    std::function<bool(const std::string& from, const std::string& to)> mayRedirect;
};

struct UrlResponse {
    /// Of an HTTP answer, after redirects; nothing where the address is of another kind.
    std::optional<int> statusCode;

    /// Never null. Shared, so that large answers need not be copied from thread to thread.
    std::shared_ptr<const std::string> body;
};

struct UrlError {
    std::string description; // for people
};

using UrlResult = std::variant<UrlResponse, UrlError>;

/// A fetch under way. Destroying it cancels it.
class UrlTask {
  public:
    UrlTask() = default;
    UrlTask(const UrlTask&) = delete;
    UrlTask& operator=(const UrlTask&) = delete;
    virtual ~UrlTask() = default;
};

/// Fetches data from addresses. Main thread only; the exchange itself takes place elsewhere.
///
/// It follows a limited number of redirects, only to http and https, and never from https down to
/// http. A body that the server has compressed counts unpacked.
class UrlSession {
  public:
    virtual ~UrlSession() = default;

    /// Begins a plain GET. `completion` is called once on the main thread, after this call has
    /// returned, and may destroy the task; never after the task is destroyed.
    [[nodiscard]] virtual std::unique_ptr<UrlTask>
    fetchData(UrlRequest request, std::function<void(UrlResult)> completion) = 0;
};

} // namespace quillon
