#pragma once

#include "Platform/Linux/updates/FeedFetcher.h"
#include "Platform/RunLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Holds each fetch until the test answers it, or answers at once when it has an answer.
struct HeldFetches final : FeedFetcher {
    struct Fetch final : FeedFetch {
        explicit Fetch(HeldFetches& owner) : fetches(owner) {}
        Fetch(const Fetch&) = delete;
        Fetch& operator=(const Fetch&) = delete;
        ~Fetch() override { --fetches.running; }
        HeldFetches& fetches;
    };
    std::unique_ptr<FeedFetch> fetch(const std::string& address,
                                     std::function<void(FetchedFeed)> completion) override {
        addresses.push_back(address);
        if (ready) {
            loop.async([feed = *ready, completion] { completion(feed); });
        } else {
            answer = std::move(completion);
        }
        ++running;
        return std::make_unique<Fetch>(*this);
    }
    HeldFetches(RunLoop& runLoop, int& runningCount) : loop(runLoop), running(runningCount) {}
    RunLoop& loop;
    int& running;
    std::optional<FetchedFeed> ready;
    std::vector<std::string> addresses;
    std::function<void(FetchedFeed)> answer;
};

} // namespace quillon
