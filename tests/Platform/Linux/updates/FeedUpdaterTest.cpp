#include "Platform/Linux/updates/UpdaterBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using FeedUpdaterTest = UpdaterBench;
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
