#include "Platform/Linux/tray/FakeTray.h"
#include "Platform/Linux/tray/NotifierBench.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quillon {
namespace {

struct NotifierTest : testing::Test, NotifierBench {};

TEST_F(NotifierTest, SaysWhatItIs) {
    offer();
    item->button()->setToolTip("Open");
    loop.drain();
    const QVariantMap all = properties();
    EXPECT_EQ(all.value("Id"), "quillon");
    EXPECT_EQ(all.value("Title"), "Quillon");
    EXPECT_EQ(all.value("Category"), "ApplicationStatus");
    EXPECT_EQ(all.value("Status"), "Active");
    EXPECT_FALSE(all.contains("Menu"));
    EXPECT_EQ(qdbus_cast<NotifierToolTip>(all.value("ToolTip")).title, "Open");
}

TEST_F(NotifierTest, PicturesInSeveralSizes) {
    offer();
    const NotifierPixmaps all = pixmaps();
    ASSERT_EQ(all.size(), 4);
    for (const NotifierPixmap& pixmap : all) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.bytes.size(), 4 * pixmap.width * pixmap.height);
        EXPECT_GT(highestAlpha(pixmap), 0xF0);
        EXPECT_EQ(pixmap.bytes[0], 0) << "transparent corners";
    }
    EXPECT_EQ(all[0].width, 22);
    EXPECT_EQ(all[3].width, 48);
}

TEST_F(NotifierTest, ThePictureFades) {
    offer();
    const int before = watcher->newIcons;
    item->button()->setAlphaValue(0.5);
    ASSERT_TRUE(until([&] { return watcher->newIcons == before + 1; }));
    EXPECT_NEAR(highestAlpha(pixmaps()[3]), 128, 2);
    EXPECT_EQ(watcher->newToolTips, 0);
    item->button()->setToolTip("Volume");
    ASSERT_TRUE(until([&] { return watcher->newToolTips == 1; }));
    EXPECT_EQ(watcher->newIcons, before + 1) << "the picture is the same";
}

TEST_F(NotifierTest, ActivationAndContextMenuAreClicks) {
    offer();
    finish(watcher->call("SecondaryActivate", {1, 1}));
    finish(watcher->call("Activate", {300, 10}));
    finish(watcher->call("ContextMenu", {301, 11}));
    ASSERT_TRUE(until([this] { return actions.size() == 2; }));
    EXPECT_EQ(actions[0], (UserAction{EventType::leftMouseUp, 0, 300, 10}));
    EXPECT_EQ(actions[1], (UserAction{EventType::rightMouseUp, 0, 301, 11}));
}

TEST_F(NotifierTest, InACustomViewTheButtonIsClicked) {
    offer();
    auto box = std::make_shared<View>();
    auto level = std::make_shared<Button>();
    box->setFrame({0, 0, 22, 22});
    level->setFrame({0, 0, 22, 22});
    prepare(*level);
    box->addSubview(level);
    item->setCustomView(box);
    finish(watcher->call("Activate", {300, 10}));
    EXPECT_TRUE(until([this] { return actions.size() == 1; }));
}

TEST_F(NotifierTest, AWatcherThatComesLateOrAgain) {
    makeItem();
    loop.advance(3.1);
    EXPECT_EQ(diagnostics.take().size(), 1U);
    watcher = std::make_unique<FakeWatcher>(bus.address());
    ASSERT_TRUE(until([this] { return isOffered(); }));
    EXPECT_EQ(diagnostics.take(), std::vector<std::string>{"✅ The tray is there"});

    watcher.reset();
    ASSERT_TRUE(until([this] { return loop.timerCount() > 0; }));
    watcher = std::make_unique<FakeWatcher>(bus.address());
    EXPECT_TRUE(until([this] { return isOffered(); }));
    loop.advance(4);
    EXPECT_TRUE(diagnostics.take().empty());
}

TEST_F(NotifierTest, ATrayIsPreferred) {
    offer();
    const auto number = [this] { return watcher->registered.last().section(u'-', -1).toInt(); };
    const int first = number();
    {
        FakeTray tray;
        ASSERT_TRUE(until([&] { return tray.hasItem() && watcher->items().isEmpty(); }));
        EXPECT_EQ(item->button()->onScreen(), (Rect{1200, 775, 22, 22}));
    }
    int turns = 0;
    ASSERT_TRUE(until([&] { return ++turns > 4 && isOffered(); }));
    EXPECT_FALSE(item->button()->isInWindow());
    EXPECT_EQ(number(), first + 1) << "none was offered while there was a tray";
}

TEST_F(NotifierTest, InPlaceOfATrayThatGivesUpButStays) {
    FakeTray tray;
    watcher = std::make_unique<FakeWatcher>(bus.address());
    makeItem();
    ASSERT_TRUE(until([&] { return tray.hasItem() && item->button()->isInWindow(); }));
    tray.giveUp();
    EXPECT_TRUE(until([this] {
        loop.advance(0.01);
        return isOffered();
    }));
}

TEST_F(NotifierTest, ABusThatIsBack) {
    offer();
    for (int time = 0; time < 2; ++time) {
        bus.end();
        watcher.reset();
        ASSERT_TRUE(until([this] { return loop.timerCount() > 0; })) << "there is no tray";
        loop.advance(3.1);
        EXPECT_EQ(diagnostics.take().size(), 1U);
        EXPECT_EQ(loop.timerCount(), 0U) << "nobody is asked over and over";
        bus.begin();
        watcher = std::make_unique<FakeWatcher>(bus.address());
        EXPECT_TRUE(until([this] {
            loop.advance(0.01);
            return isOffered();
        }));
        EXPECT_EQ(diagnostics.take(), std::vector<std::string>{"✅ The tray is there"});
    }
}

TEST_F(NotifierTest, HiddenAndGone) {
    offer();
    item->setVisible(false);
    ASSERT_TRUE(until([this] { return watcher->items().isEmpty(); }));
    item->setVisible(true);
    ASSERT_TRUE(until([this] { return isOffered(); }));
    item.reset();
    EXPECT_TRUE(until([this] { return watcher->items().isEmpty(); }));
}

TEST_F(NotifierTest, NeverWaitsForTheBus) {
    watcher = std::make_unique<FakeWatcher>(bus.address());
    bus.stop();
    const auto start = std::chrono::steady_clock::now();
    makeItem();
    item->button()->setAlphaValue(0.5);
    loop.drain();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    bus.resume();
    EXPECT_TRUE(until([this] { return isOffered(); }));
}

TEST_F(NotifierTest, NeverWaitsForTheBusLaterEither) {
    offer();
    bus.stop();
    const auto start = std::chrono::steady_clock::now();
    item->button()->setAlphaValue(0.5);
    loop.drain();
    item->setVisible(false);
    item->setVisible(true);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    bus.resume();
    EXPECT_TRUE(until([this] { return isOffered(); }));
}

} // namespace
} // namespace quillon
