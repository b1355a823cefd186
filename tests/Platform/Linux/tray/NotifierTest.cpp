#include "Platform/Linux/tray/FakeTray.h"
#include "Platform/Linux/tray/FakeWatcher.h"
#include "Platform/Linux/tray/PrivateBus.h"
#include "Platform/Linux/tray/TrayBench.h"

#include <QDBusPendingReply>

#include <gtest/gtest.h>

#include <chrono>

namespace quillon {
namespace {

TEST(SquareAround, AsWideAsThePanelIsThickAndWithinIt) {
    const PixelRect below{0, 772, 1280, 28};
    EXPECT_EQ(squareAround({600, 780}, below, 24), (PixelRect{586, 772, 28, 28}));
    EXPECT_EQ(squareAround({1279, 799}, below, 24), (PixelRect{1252, 772, 28, 28}));
    const PixelRect upright{0, 0, 40, 800};
    EXPECT_EQ(squareAround({3, 400}, upright, 24), (PixelRect{0, 380, 40, 40}));
    EXPECT_EQ(squareAround({100, 100}, std::nullopt, 24), (PixelRect{88, 88, 24, 24}));
}

struct NotifierTest : testing::Test, TrayBench {
    PrivateBus bus;
    std::unique_ptr<FakeWatcher> watcher;

    NotifierTest() { context.busAddress = bus.address().toStdString(); }

    void offer() {
        watcher = std::make_unique<FakeWatcher>(bus.address());
        makeItem();
        ASSERT_TRUE(until([this] { return isOffered(); }));
    }

    [[nodiscard]] bool isOffered() const { return watcher && watcher->items().size() == 1; }

    /// Until the answer is there.
    void finish(const QDBusPendingCall& call) {
        ASSERT_TRUE(until([&] { return call.isFinished(); }));
        EXPECT_FALSE(call.isError()) << call.error().message().toStdString();
    }

    QVariantMap properties() {
        const QDBusPendingReply<QVariantMap> reply = watcher->readProperties();
        finish(reply);
        return reply.isError() ? QVariantMap() : reply.value();
    }

    NotifierPixmaps pixmaps() {
        return qdbus_cast<NotifierPixmaps>(properties().value(QStringLiteral("IconPixmap")));
    }

    /// Of the largest picture, the highest alpha and the brightest colour that is fully opaque.
    static int highestAlpha(const NotifierPixmap& pixmap) {
        int highest = 0;
        for (qsizetype i = 0; i < pixmap.bytes.size(); i += 4) {
            highest = std::max(highest, int{static_cast<unsigned char>(pixmap.bytes[i])});
        }
        return highest;
    }
};

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

TEST_F(NotifierTest, IsWhereItWasLastActivated) {
    offer();
    EXPECT_FALSE(item->button()->isInWindow());
    finish(watcher->call("Activate", {300, 300}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{288, 488, 24, 24}));
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 22, 22}));
    EXPECT_EQ(bar.panelOnScreen(), std::nullopt);
}

/// A panel without a tray: a dock window.
struct Dock {
    std::unique_ptr<X11Connection> connection = X11Connection::open();

    Dock(const PixelRect& place, std::uint32_t ground) {
        const TrayAtoms atoms(*connection);
        xcb_connection_t* const x = connection->get();
        const xcb_window_t window = xcb_generate_id(x);
        xcb_create_window(
            x, XCB_COPY_FROM_PARENT, window, connection->root(), static_cast<std::int16_t>(place.x),
            static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
            static_cast<std::uint16_t>(place.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &ground);
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, atoms.windowType, XCB_ATOM_ATOM, 32,
                            1, &atoms.dockType);
        xcb_map_window(x, window);
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, connection->root(), atoms.clientList,
                            XCB_ATOM_WINDOW, 32, 1, &window);
        connection->sync();
    }
};

TEST_F(NotifierTest, AsHighAsThePanelThere) {
    const Dock dock({0, 770, 1280, 30}, 0);
    offer();
    finish(watcher->call("Activate", {300, 780}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{285, 0, 30, 30}));
    EXPECT_EQ(bar.panelOnScreen(), (Rect{0, 0, 1280, 30}));
    EXPECT_FALSE(bar.isVertical());
}

TEST_F(NotifierTest, AtThePointerWhereTheHostDoesNotSay) {
    const Dock dock({0, 0, 40, 800}, 0);
    offer();
    Hand().move(20, 500);
    finish(watcher->call("Activate", {0, 900}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{0, 280, 40, 40}));
    EXPECT_TRUE(bar.isVertical());
}

TEST_F(NotifierTest, DarkOnALightPanel) {
    offer();
    const auto red = [this] {
        const NotifierPixmap pixmap = pixmaps()[3];
        for (qsizetype i = 0; i < pixmap.bytes.size(); i += 4) {
            if (static_cast<unsigned char>(pixmap.bytes[i]) == 255) {
                return int{static_cast<unsigned char>(pixmap.bytes[i + 1])};
            }
        }
        return -1;
    };
    EXPECT_EQ(red(), 255);
    const Dock dock({0, 770, 1280, 30}, 0xEEEEEE);
    EXPECT_TRUE(until([this] { return watcher->newIcons > 0; })) << "a panel came";
    EXPECT_EQ(red(), 0);
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
