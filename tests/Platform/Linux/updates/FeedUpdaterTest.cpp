#include "Platform/Linux/updates/FeedUpdater.h"

#include "Platform/Linux/session/RecordingDiagnostics.h"
#include "Platform/Linux/updates/Feeds.h"
#include "Platform/Linux/updates/HeldFetches.h"
#include "Platform/Simulated/SimulatedUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <map>

namespace quillon {
namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;

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

struct Delegate final : UpdaterDelegate {
    std::optional<std::string> feedURLStringForUpdater() override { return address; }
    std::optional<std::string> address;
};

constexpr const char* address = "https://example.org/feed.xml";
constexpr const char* upToDate = "You're up to date | Quillon 0.1.0 is the newest version.";
constexpr const char* available =
    "A new version of Quillon is available | Quillon 0.2.0 is available. You have 0.1.0.";

struct FeedUpdaterTest : testing::Test {
    VirtualRunLoop loop;
    InfoTexts bundle;
    SimulatedUserDefaults defaults;
    RecordingDiagnostics diagnostics;
    OpenedPages workspace;
    ShownWindows window;
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    int running = 0;
    HeldFetches* fetches = nullptr; // the updater's
    std::unique_ptr<FeedUpdater> updater;

    FeedUpdaterTest() {
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

using Shown = std::vector<std::string>;

TEST_F(FeedUpdaterTest, TellsThatThisIsTheNewest) {
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(takeShown(), Shown{});
    EXPECT_EQ(fetches->addresses, Shown{address});
    answer(itemOf("0.1.0") + itemOf("0.0.9"));
    EXPECT_EQ(takeShown(), Shown{upToDate});
    ASSERT_EQ(window.last.size(), 1);
    EXPECT_EQ(window.last[0].title, "OK");
    checkAndAnswer("");
    checkAndAnswer(itemOf("0.2.0-rc.1", "<v:channel>beta</v:channel>"));
    EXPECT_EQ(takeShown(), (Shown{upToDate, upToDate}));
    EXPECT_EQ(running, 0);
    EXPECT_EQ(loop.timerCount(), 0);
}

TEST_F(FeedUpdaterTest, OffersTheReleasePage) {
    checkAndAnswer(itemOf("0.2.0", "<link>https://example.org/0.2.0</link>"));
    EXPECT_EQ(takeShown(), Shown{available});
    ASSERT_EQ(window.last.size(), 2);
    EXPECT_EQ(window.last[0].title, "Open Release Page");
    EXPECT_EQ(window.last[1].title, "Later");
    EXPECT_FALSE(window.last[1].perform);
    updater.reset(); // the window may be answered whenever the user likes
    EXPECT_TRUE(workspace.pages.empty());
    window.last[0].perform();
    EXPECT_EQ(workspace.pages, Shown{"https://example.org/0.2.0"});
}

TEST_F(FeedUpdaterTest, WithoutAPageThereIsNothingToOpen) {
    updater->checkForUpdates(nullptr);
    fetches->answer("<rss><channel><item><link>file:///x</link><version>0.2.0</version></item>"
                    "</channel></rss>");
    EXPECT_EQ(takeShown(), Shown{available});
    ASSERT_EQ(window.last.size(), 1);
    EXPECT_EQ(window.last[0].title, "Later");
}

TEST_F(FeedUpdaterTest, TextsOfTheFeedAreTamed) {
    checkAndAnswer(itemOf("9&#10;&lt;b&gt;" + std::string(100, 'x')));
    EXPECT_EQ(takeShown(), Shown{"A new version of Quillon is available | Quillon 9 <b>" +
                                 std::string(34, 'x') + "… is available. You have 0.1.0."});
}

TEST_F(FeedUpdaterTest, FailuresAreTold) {
    updater->checkForUpdates(nullptr);
    fetches->answer(FeedFailure{"the server does not answer"});
    updater->checkForUpdates(nullptr);
    fetches->answer(std::string("<!DOCTYPE html>"));
    updater->checkForUpdates(nullptr);
    fetches->answer(FeedFailure{"is this computer online?"});
    EXPECT_EQ(takeShown(),
              (Shown{"Could not check for updates | "
                     "The update feed could not be read: the server does not answer.",
                     "Could not check for updates | "
                     "The update feed could not be read: the server sent a web page instead.",
                     "Could not check for updates | "
                     "The update feed could not be read: is this computer online?"}));
}

TEST_F(FeedUpdaterTest, PatienceEnds) {
    updater->checkForUpdates(nullptr);
    loop.advance(29);
    EXPECT_EQ(takeShown(), Shown{});
    EXPECT_EQ(running, 1);
    loop.advance(1);
    EXPECT_EQ(takeShown(), Shown{"Could not check for updates | The update feed could not be read: "
                                 "the server takes too long to answer."});
    EXPECT_EQ(running, 0);
    EXPECT_EQ(loop.timerCount(), 0);
}

TEST_F(FeedUpdaterTest, OneCheckAtATime) {
    updater->checkForUpdates(nullptr);
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(fetches->addresses.size(), 1);
    answer("");
    EXPECT_EQ(takeShown(), Shown{upToDate});
    checkAndAnswer("");
    EXPECT_EQ(fetches->addresses.size(), 2);
}

TEST_F(FeedUpdaterTest, SaysWhatIsNotConfigured) {
    bundle.texts.erase("SUFeedURL");
    updater->checkForUpdates(nullptr);
    bundle.texts["SUFeedURL"] = " ";
    updater->checkForUpdates(nullptr);
    const std::string unconfigured = "Updates are not configured | This copy of Quillon does not "
                                     "know where to look for new versions.";
    EXPECT_EQ(takeShown(), (Shown{unconfigured, unconfigured}));
    for (const char* bad : {"http://example.org/feed", "file:///feed", "feed.xml"}) {
        bundle.texts["SUFeedURL"] = bad;
        updater->checkForUpdates(nullptr);
        EXPECT_EQ(takeShown(), Shown{"Could not check for updates | The address of the update "
                                     "feed must begin with https://."});
    }
    EXPECT_TRUE(fetches->addresses.empty());
}

TEST_F(FeedUpdaterTest, TheDelegatesFeedGoesFirst) {
    delegate->address = "https://example.com/other";
    checkAndAnswer("");
    delegate->address = std::nullopt;
    checkAndAnswer("");
    delegate->address = "https://example.com/other";
    delegate.reset();
    checkAndAnswer("");
    EXPECT_EQ(fetches->addresses, (Shown{"https://example.com/other", address, address}));
}

TEST_F(FeedUpdaterTest, ByItselfItSpeaksOnceOfEachVersion) {
    updater->start();
    loop.drain();
    loop.advance(60);
    EXPECT_TRUE(fetches->addresses.empty());
    advance(60, itemOf("0.2.0"));
    EXPECT_EQ(fetches->addresses.size(), 1);
    EXPECT_EQ(takeShown(), Shown{available});
    for (const char* version : {"0.2.0", "0.2", "0.1.5", "0.1.0"}) {
        advance(day + 2 * hour, itemOf(version));
        EXPECT_EQ(takeShown(), Shown{}) << version;
    }
    EXPECT_EQ(fetches->addresses.size(), 5);
    advance(day + 2 * hour, itemOf("0.3.0"));
    EXPECT_EQ(takeShown().size(), 1);
    checkAndAnswer(itemOf("0.3.0"));
    EXPECT_EQ(takeShown().size(), 1) << "who asks is told again";
}

TEST_F(FeedUpdaterTest, ByItselfItKeepsFailuresToItself) {
    updater->start();
    loop.drain();
    fetches->ready = FeedFailure{"it is empty"};
    loop.advance(120);
    EXPECT_EQ(takeShown(), Shown{});
    EXPECT_EQ(diagnostics.take(), Shown{"⚠️ The update feed could not be read: it is empty."});
    loop.advance(20 * hour);
    EXPECT_EQ(fetches->addresses.size(), 1);
}

TEST_F(FeedUpdaterTest, WhoAsksDuringADailyCheckGetsItsResult) {
    updater->start();
    loop.drain();
    loop.advance(100);
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(fetches->addresses.size(), 1);
    answer("");
    EXPECT_EQ(takeShown(), Shown{upToDate});
    advance(day + 2 * hour, "");
    EXPECT_EQ(fetches->addresses.size(), 2);
    EXPECT_EQ(takeShown(), Shown{}) << "the next one is its own again";
}

TEST_F(FeedUpdaterTest, ADailyCheckDoesNotDisturbTheUsers) {
    updater->start();
    loop.drain();
    loop.advance(80);
    updater->checkForUpdates(nullptr);
    loop.advance(20);
    EXPECT_EQ(fetches->addresses.size(), 1);
    answer("");
    EXPECT_EQ(takeShown(), Shown{upToDate});
    advance(2 * hour, "");
    EXPECT_EQ(fetches->addresses.size(), 2) << "made up for";
    EXPECT_EQ(takeShown(), Shown{});
}

TEST_F(FeedUpdaterTest, WithoutAFeedItNeverWakes) {
    for (const char* bad : {"", "http://example.org/"}) {
        bundle.texts["SUFeedURL"] = bad;
        updater->start();
        loop.drain();
        EXPECT_EQ(loop.timerCount(), 0);
        updater->checkForUpdates(nullptr);
        EXPECT_EQ(loop.timerCount(), 0);
    }
    delegate->address = address;
    checkAndAnswer("");
    EXPECT_EQ(loop.timerCount(), 1) << "it has one now";
    delegate->address = std::nullopt;
    loop.advance(2 * hour);
    EXPECT_EQ(loop.timerCount(), 0) << "and no more";
    EXPECT_EQ(fetches->addresses.size(), 1);
}

TEST_F(FeedUpdaterTest, UnlessStartedItChecksOnlyWhenAsked) {
    loop.drain();
    checkAndAnswer("");
    EXPECT_EQ(loop.timerCount(), 0);
}

TEST_F(FeedUpdaterTest, DestroyedItLeavesNothingBehind) {
    updater->start();
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(running, 1);
    updater.reset();
    EXPECT_EQ(running, 0);
    loop.drain();
    EXPECT_EQ(loop.timerCount(), 0);
    EXPECT_EQ(takeShown(), Shown{});
}

TEST_F(FeedUpdaterTest, AProgramWithoutAVersionComparesNothing) {
    bundle.texts.erase("version");
    FeedUpdater unversioned({loop, bundle, defaults, diagnostics, workspace, window},
                            std::make_unique<HeldFetches>(loop, running), delegate);
    unversioned.start();
    unversioned.checkForUpdates(nullptr);
    loop.drain();
    EXPECT_EQ(takeShown(), Shown{"Could not check for updates | "
                                 "The version of this copy of Quillon is not known."});
    EXPECT_EQ(loop.timerCount(), 0);
}

} // namespace
} // namespace quillon
