#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// The system's URL loading: a server does only what a test has it do. The delegates are called on
/// the test's thread.
class FakeUrls {
  public:
    struct Fetch {
        std::string url;
        unsigned long cachePolicy = 0;
        double requestTimeout = 0;

        // Of its session.
        bool isEphemeral = false;
        bool hasDelegateQueue = false;
        double timeoutForRequest = 0;
        double timeoutForResource = 0;
        bool endsSession = false;

        bool isResumed = false;
        int cancels = 0;
    };

    std::vector<Fetch> fetches;

    /// Whether the head of the answer is accepted. -1 is an unknown size. Without a status it is
    /// no answer of HTTP.
    bool respond(std::size_t fetch, std::optional<int> status, long long expectedBytes = -1);

    /// Whether the redirect is followed, with the system's own new request.
    bool redirect(std::size_t fetch, const std::string& from, const std::string& to);
    void send(std::size_t fetch, const std::string& bytes);
    void complete(std::size_t fetch, std::optional<std::string> failure = std::nullopt);

    void reset();
};

FakeUrls& fakeUrls();

} // namespace quillon::fakes
