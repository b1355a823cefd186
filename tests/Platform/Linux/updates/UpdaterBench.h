#pragma once

#include "Platform/Linux/session/RecordingDiagnostics.h"
#include "Platform/Linux/updates/FeedUpdater.h"
#include "Platform/Linux/updates/Feeds.h"
#include "Platform/Linux/updates/HeldFetches.h"
#include "Platform/Simulated/SimulatedUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

struct InfoTexts final : Bundle {
    [[nodiscard]] std::string identifier() const override { return "test"; }
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override {
        const auto found = texts.find(key);
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    std::map<std::string, std::string, std::less<>> texts{{"version", "0.1.0"}};
};

struct OpenedPages final : Workspace {
    void open(std::string_view url) override { pages.emplace_back(url); }
    [[nodiscard]] DisplayOptions displayOptions() const override { return {}; }
    void setDisplayOptionsHandler(std::function<void()> /*changed*/) override {}
    std::vector<std::string> pages;
};

struct ShownWindows final : UpdateWindow {
    void show(const std::string& title, const std::string& text,
              std::vector<UpdateButton> buttons) override {
        shown.push_back(title + " | " + text);
        last = std::move(buttons);
    }
    std::vector<std::string> shown;
    std::vector<UpdateButton> last;
};

struct FeedDelegate final : UpdaterDelegate {
    std::optional<std::string> feedURLStringForUpdater() override { return address; }
    std::optional<std::string> address;
};

inline constexpr const char* address = "https://example.org/feed.xml";
inline constexpr const char* upToDate = "You're up to date | Quillon 0.1.0 is the newest version.";
inline constexpr const char* available =
    "A new version of Quillon is available | Quillon 0.2.0 is available. You have 0.1.0.";

/// An updater with a feed, on services that write down what happens.
struct UpdaterBench : testing::Test {
    VirtualRunLoop loop;
    InfoTexts bundle;
    SimulatedUserDefaults defaults;
    RecordingDiagnostics diagnostics;
    OpenedPages workspace;
    ShownWindows window;
    std::shared_ptr<FeedDelegate> delegate = std::make_shared<FeedDelegate>();
    int running = 0;
    HeldFetches* fetches = nullptr; // the updater's
    std::unique_ptr<FeedUpdater> updater;

    UpdaterBench() {
        auto fetcher = std::make_unique<HeldFetches>(loop, running);
        fetches = fetcher.get();
        updater = std::make_unique<FeedUpdater>(
            UpdaterServices{loop, bundle, defaults, diagnostics, workspace, window},
            std::move(fetcher), delegate);
        bundle.texts["SUFeedURL"] = address;
    }

    void answer(const std::string& items) { fetches->answer(feedOf(items)); }

    void checkAndAnswer(const std::string& items) {
        updater->checkForUpdates(nullptr);
        answer(items);
    }

    /// Lets so much time pass in which feeds have these items.
    void advance(double seconds, const std::string& items) {
        fetches->ready = feedOf(items);
        loop.advance(seconds);
        fetches->ready.reset();
    }

    [[nodiscard]] std::vector<std::string> takeShown() { return std::exchange(window.shown, {}); }
};

} // namespace quillon
