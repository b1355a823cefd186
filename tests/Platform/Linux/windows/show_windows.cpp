// Shows the windows of the program as a user would see them, on the desktop of $DISPLAY, as told by
// lines on the standard input, and says on the standard output what came of it.
//
//   show X Y W H     the popover at an anchor, in points from the bottom left
//   show             the popover without an anchor
//   close, key, menu X Y W H, context, alert, message, theme light|dark, quit

#include "Platform/Linux/windows/QuickPopover.h"
#include "Platform/Linux/windows/WidgetAlerts.h"
#include "Platform/Linux/windows/WidgetMenus.h"
#include "Platform/Linux/x11/X11Connection.h"
#include "Views/Screens.h"
#include "support/SimulatedHub.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>

#include <iostream>
#include <sstream>

#include <unistd.h>

namespace quillon {
namespace {

struct Anchor final : View, ViewHost {
    std::optional<Rect> place;
    Anchor() { setHost(this); }
    void viewChanged() override {}
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return place; }
};

QPalette darkPalette() {
    QPalette palette(QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x2a, 0x2a, 0x2a));
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Text, Qt::white);
    return palette;
}

class Windows {
  public:
    Windows() {
        displays_.follow(*connection_);
        popover_ = popovers_.make("ContentView", [] { say("escaped"); });
        for (const char* title : {"About Quillon", "Check for Updates…", "-", "Quit Quillon"}) {
            auto item = std::make_shared<MenuItem>();
            item->title = title;
            item->isSeparator = item->title == "-";
            item->keyEquivalent = item->title == "Quit Quillon" ? "q" : "";
            item->hasCheckMark = item->title == "Check for Updates…";
            item->isEnabled = item->title != "About Quillon";
            item->action.perform = [title = item->title](Sender*) { say("chosen " + title); };
            menu_->items.push_back(item);
        }
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        Rect rect;
        const bool hasRect = !!(words >> rect.x >> rect.y >> rect.width >> rect.height);
        anchor_.place = hasRect ? std::optional(rect) : std::nullopt;
        if (verb == "show") {
            QElapsedTimer watch;
            watch.start();
            popover_->show(anchor_, RectEdge::minY);
            auto& window = *dynamic_cast<QuickPopover&>(*popover_).window();
            QObject::connect(
                &window, &QQuickWindow::frameSwapped, &window,
                [watch] { say("frame after " + std::to_string(watch.nsecsElapsed() / 1e6)); },
                static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
            say("shown in " + std::to_string(watch.nsecsElapsed() / 1e6));
        } else if (verb == "close") {
            popover_->close();
            say("closed");
        } else if (verb == "key") {
            popover_->makeKeyWindow();
        } else if (verb == "menu") {
            menus_.popUp(menu_, {0, 0}, anchor_);
        } else if (verb == "context") {
            menus_.popUpContextMenu(menu_, EventType::rightMouseUp, anchor_);
        } else if (verb == "alert") {
            alerts_.runModal(
                {AlertStyle::warning,
                 "Quillon cannot start by itself",
                 "The folder for programs that start with the session is not writable.",
                 {"OK"}});
        } else if (verb == "message") {
            message_ = std::make_unique<MessageWindow>(
                Message{AlertStyle::informational,
                        "A new version is available",
                        "Quillon 1.1 is out; you have 1.0.",
                        {{"Download", [] { say("pressed Download"); }},
                         {"Later", [] { say("pressed Later"); }}}},
                nullptr);
        } else if (verb == "theme") {
            QGuiApplication::setPalette(line == "theme dark" ? darkPalette() : light_);
        } else if (verb == "quit") {
            QCoreApplication::quit();
        }
    }

  private:
    static void say(const std::string& text) { std::cout << text << std::endl; }

    std::unique_ptr<X11Connection> connection_ = X11Connection::open();
    X11Displays displays_;
    SimulatedHub hub_;
    QuickPopovers popovers_{
        {displays_, nullptr, nullptr, [this](std::string_view name) {
             return QuickScreen{screenUrl(name), {{"hub", QVariant::fromValue(hub_.hub.get())}}};
         }}};
    std::unique_ptr<Popover> popover_;
    WidgetMenus menus_{displays_};
    std::shared_ptr<Menu> menu_ = std::make_shared<Menu>();
    WidgetAlerts alerts_{nullptr};
    std::unique_ptr<MessageWindow> message_;
    QPalette light_ = QGuiApplication::palette();
    Anchor anchor_;
};

} // namespace
} // namespace quillon

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    quillon::Windows windows;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    std::string pending;
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char buffer[512];
        const auto got = read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0) {
            QCoreApplication::quit();
            return;
        }
        pending.append(buffer, static_cast<std::size_t>(got));
        for (std::size_t end; (end = pending.find('\n')) != std::string::npos;) {
            const std::string line = pending.substr(0, end);
            pending.erase(0, end + 1);
            windows.obey(line);
        }
    });
    return QCoreApplication::exec();
}
