#pragma once

#include "Platform/Linux/session/RecordingDiagnostics.h"
#include "Platform/Linux/tray/LinuxImages.h"
#include "Platform/Linux/tray/LinuxStatusBar.h"
#include "Platform/Simulated/VirtualRunLoop.h"
#include "support/XServer.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xtest.h>

namespace quillon {

/// Says which toolkit platform and which bus a test has, before there is an application.
struct TrayEnvironment {
    TrayEnvironment() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
    }
};

/// The user's pointer.
class Hand {
  public:
    void move(int x, int y) const {
        xcb_test_fake_input(connection_->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                            connection_->root(), static_cast<std::int16_t>(x),
                            static_cast<std::int16_t>(y), 0);
        connection_->sync();
    }
    void press(std::uint8_t button) const { fake(XCB_BUTTON_PRESS, button); }
    void release(std::uint8_t button) const { fake(XCB_BUTTON_RELEASE, button); }
    void click(std::uint8_t button) const {
        press(button);
        release(button);
    }

  private:
    void fake(std::uint8_t type, std::uint8_t button) const {
        xcb_test_fake_input(connection_->get(), type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        connection_->sync();
    }

    std::unique_ptr<X11Connection> connection_ = X11Connection::open();
};

/// A program with a status item on an X server of its own. Time is virtual.
struct TrayBench {
    TrayEnvironment environment;
    XServer server;
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};
    VirtualRunLoop loop;
    RecordingDiagnostics diagnostics;
    CurrentEvent current;
    OwnWindows ownWindows;
    TrayContext context{loop, diagnostics, current, ownWindows, ""};
    LinuxStatusBar bar{context};
    std::vector<UserAction> actions; // what was the current event when an action was performed
    std::shared_ptr<StatusItem> item;

    ~TrayBench() {
        item.reset();
        loop.discardQueued();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void makeItem() {
        item = bar.statusItem(squareStatusItemLength);
        showLogo();
        loop.drain();
    }

    void showLogo() {
        LinuxImages images;
        ButtonLook look;
        look.image = images.named("MenuBarLogo");
        look.image->isTemplate = true;
        look.image->size = {20, 20};
        look.imagePosition = ImagePosition::imageOnly;
        item->button()->setLook(look);
        prepare(*item->button());
    }

    void prepare(Button& button) {
        button.setSendsActionOn(eventMask(EventType::leftMouseUp) |
                                eventMask(EventType::rightMouseUp));
        button.setAction({"", [this](Sender*) { actions.push_back(current.get().value()); }});
    }

    /// Lets the program run, and wait for what happens as programs do, until the condition holds;
    /// false after a limit that no passing test reaches.
    bool until(const std::function<bool()>& condition) {
        QTimer wakeUp;
        wakeUp.start(2);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(8);
        for (loop.drain(); !condition(); loop.drain()) {
            if (std::chrono::steady_clock::now() > deadline) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }
};

} // namespace quillon
