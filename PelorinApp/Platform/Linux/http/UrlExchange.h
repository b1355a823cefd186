#pragma once

#include "Platform/Linux/http/UrlSettings.h"
#include "Platform/UrlSession.h"

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};

/// One request with all its redirects, on the thread that made it. It follows them by itself, not
/// by the library, so that each is judged by where it leads from, and bodies of redirects need not
/// be read.
class UrlExchange {
  public:
    using Clock = std::chrono::steady_clock;

    /// The settings must outlive this.
    UrlExchange(UrlRequest request, const UrlSettings& settings);
    UrlExchange(const UrlExchange&) = delete;
    UrlExchange& operator=(const UrlExchange&) = delete;
    ~UrlExchange() = default;

    /// For the multi handle; its CURLINFO_PRIVATE is this. Null if there is no memory.
    [[nodiscard]] CURL* easy() const { return easy_.get(); }

    /// Makes the first transfer ready, or answers why it cannot.
    [[nodiscard]] std::optional<UrlError> prepare();

    /// To be called when a transfer has ended and left the multi handle. Answers nothing when the
    /// next one, of a redirect, is ready.
    [[nodiscard]] std::optional<UrlResult> transferEnded(CURLcode code);

    /// When it is to be given up, as things stand.
    [[nodiscard]] Clock::time_point deadline() const;

  private:
    struct Head {
        std::string location;
        bool understood = true;
        bool ended = false; // what follows are trailers
    };

    void setOptions();
    void prepareTransfer();
    [[nodiscard]] bool takeHeader(std::string_view line);
    void takeField(std::string_view name, std::string_view value);
    [[nodiscard]] bool headEnds();
    [[nodiscard]] bool follow(const std::string& location);
    [[nodiscard]] bool takeBody(std::string_view piece);
    void countReceived(std::size_t bytes);
    [[nodiscard]] bool giveUp(std::string why);
    [[nodiscard]] long status() const;

    static std::size_t headerArrived(char* data, std::size_t one, std::size_t size, void* self);
    static std::size_t bodyArrived(char* data, std::size_t one, std::size_t size, void* self);

    UrlRequest request_;
    const UrlSettings& settings_;
    std::chrono::duration<double> patience_;
    std::unique_ptr<CURL, EasyDeleter> easy_;
    std::unique_ptr<curl_slist, void (*)(curl_slist*)> headers_;
    std::string url_;  // of the present transfer
    std::string next_; // of the next one, if this is a redirect
    int redirects_ = 0;
    Head head_;
    std::size_t headerBytes_ = 0;
    std::shared_ptr<std::string> body_ = std::make_shared<std::string>();
    std::string failure_; // why it was given up, if it was by us
    Clock::time_point begun_ = Clock::now();
    Clock::time_point lively_ = begun_; // when so many bytes had come as patience asks for
    std::size_t receivedSince_ = 0;     // bytes, after that
};

} // namespace quillon
