#pragma once

#include "Platform/RunLoop.h"
#include "Platform/UrlSession.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// What one fetch has got so far, and what it may get. But for what is said of the main thread it
/// belongs to the one thread that the system reports on.
class UrlFetch : public std::enable_shared_from_this<UrlFetch> {
  public:
    UrlFetch(RunLoop& runLoop, UrlRequest request, std::function<void(UrlResult)> completion);

    /// Whether the server may refer from one address to another; if not, the fetch has failed.
    /// The schemes are in lower case.
    [[nodiscard]] bool follows(const std::string& from, const std::string& fromScheme,
                               const std::string& to, const std::string& toScheme);

    /// Whether there is room for a body of this size; if not, the fetch has failed.
    [[nodiscard]] bool takesBodyOf(long long expectedBytes);
    [[nodiscard]] bool takeBody(std::string_view piece);

    /// The exchange is over: the completion is queued on the main thread. `error` is what the
    /// system says went wrong, if anything.
    void ended(std::optional<int> statusCode, std::optional<std::string> error);

    /// Main thread. The completion is not called any more.
    void cancel() { completion_ = nullptr; }

  private:
    [[nodiscard]] bool giveUp(std::string why);

    RunLoop& runLoop_;
    UrlRequest request_;
    std::function<void(UrlResult)> completion_; // main thread only
    std::shared_ptr<std::string> body_ = std::make_shared<std::string>();
    int redirects_ = 0;
    std::string failure_; // why it was given up, if it was by us
};

} // namespace quillon
