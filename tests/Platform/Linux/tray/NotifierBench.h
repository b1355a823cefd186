#pragma once

#include "Platform/Linux/tray/FakeWatcher.h"
#include "Platform/Linux/tray/PrivateBus.h"
#include "Platform/Linux/tray/TrayBench.h"

#include <QDBusPendingReply>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace quillon {

/// A program with a status item, and a host of status notifier items for it.
struct NotifierBench : TrayBench {
    PrivateBus bus;
    std::unique_ptr<FakeWatcher> watcher;

    NotifierBench() { context.busAddress = bus.address().toStdString(); }

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

} // namespace quillon
