#include "Platform/Linux/tray/NotifierItem.h"

#include "Platform/Linux/windows/ShellTexts.h"

#include "Platform/Linux/tray/PanelSample.h"
#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/Pixels.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <unistd.h>

namespace quillon {

namespace {

// What panels ask for; they scale what lies between.
constexpr std::array pictureSides{22, 24, 32, 48};
constexpr double usualSquare = 24.0; // points

QString objectPath() { return QStringLiteral("/StatusNotifierItem"); }

QDBusMessage busCall(const QString& method) {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                          method);
}

std::optional<PixelRect> dockAt(const std::vector<PixelRect>& docks, QPoint place) {
    const auto found = std::find_if(docks.begin(), docks.end(), [place](const PixelRect& dock) {
        return QRect(dock.x, dock.y, dock.width, dock.height).contains(place);
    });
    return found == docks.end() ? std::nullopt : std::optional(*found);
}

} // namespace

PixelRect squareAround(QPoint place, const std::optional<PixelRect>& panel, int usual) {
    const int side = panel ? std::min(panel->width, panel->height) : usual;
    PixelRect square{place.x() - side / 2, place.y() - side / 2, side, side};
    if (panel) {
        square.x = std::clamp(square.x, panel->x, panel->x + panel->width - side);
        square.y = std::clamp(square.y, panel->y, panel->y + panel->height - side);
    }
    return square;
}

NotifierItem::NotifierItem(RunLoop& runLoop, NotifierWatcher& watcher, TrayScreen& screen,
                           TrayContent& content)
    : runLoop_(runLoop), watcher_(watcher), screen_(screen), content_(content) {}

NotifierItem::~NotifierItem() { withdraw(); }

void NotifierItem::setOffered(bool offered) {
    withdraw();
    if (!offered || !watcher_.isThere()) {
        return;
    }
    static int count = 0;
    name_ = QStringLiteral("org.kde.StatusNotifierItem-%1-%2").arg(getpid()).arg(++count);
    object_ = std::make_unique<QObject>();
    adaptor_ = new NotifierAdaptor(object_.get(), *this);
    samplePanel();
    shown_ = picture(pictureSides.back());
    shownToolTip_ = toolTip();

    // The bus keeps the order of one sender's messages, so no answer is waited for.
    QDBusConnection& bus = watcher_.bus();
    bus.registerObject(objectPath(), object_.get());
    constexpr unsigned doNotQueue = 4;
    bus.asyncCall(busCall(QStringLiteral("RequestName")) << name_ << doNotQueue);
    bus.asyncCall(QDBusMessage::createMethodCall(
                      notifierWatcherName(), QStringLiteral("/StatusNotifierWatcher"),
                      notifierWatcherName(), QStringLiteral("RegisterStatusNotifierItem"))
                  << name_);
}

void NotifierItem::withdraw() {
    if (name_.isEmpty()) {
        return;
    }
    adaptor_ = nullptr;
    object_.reset(); // which takes it off the bus
    watcher_.bus().asyncCall(busCall(QStringLiteral("ReleaseName")) << name_);
    name_.clear();
    known_ = {};
}

void NotifierItem::samplePanel() {
    if (!name_.isEmpty() && screen_.isConnected()) {
        samplePanel(docks(screen_.connection(), screen_.atoms()));
    }
}

void NotifierItem::samplePanel(const std::vector<PixelRect>& docks) {
    auto panel = known_.panel ? known_.panel : mainPanel(docks);
    if (!panel && !docks.empty()) {
        panel = docks.front();
    }
    const double before = panelLuminance_;
    panelLuminance_ =
        (panel ? panelLuminance(screen_.connection(), *panel) : std::nullopt).value_or(before);
    if (labelColor(before) != labelColor(panelLuminance_)) {
        contentChanged();
    }
}

void NotifierItem::contentChanged() {
    if (adaptor_ == nullptr) {
        return;
    }
    const QImage now = picture(pictureSides.back());
    if (now != shown_) {
        shown_ = now;
        Q_EMIT adaptor_->NewIcon();
    }
    const QString text = toolTip();
    if (std::exchange(shownToolTip_, text) != text) {
        Q_EMIT adaptor_->NewToolTip();
    }
}

QImage NotifierItem::picture(int side) const {
    return content_.picture({side, side}, std::nullopt, labelColor(panelLuminance_));
}

NotifierPixmaps NotifierItem::pixmaps() const {
    NotifierPixmaps all;
    for (const int side : pictureSides) {
        all.push_back({side, side, networkOrderPixels(picture(side))});
    }
    return all;
}

QString NotifierItem::toolTip() const { return translated(content_.toolTip()); }

void NotifierItem::activated(int x, int y) { click(EventType::leftMouseUp, {x, y}); }

void NotifierItem::contextMenuRequested(int x, int y) { click(EventType::rightMouseUp, {x, y}); }

void NotifierItem::click(EventType type, QPoint told) {
    // Hosts tell the place in units of their own, some none at all, which they tell as a null
    // point, in a panel as it may be. The pointer is the better witness.
    QPoint place = told;
    if (const auto pointer = screen_.pointer()) {
        const auto panels = docks(screen_.connection(), screen_.atoms());
        auto panel = dockAt(panels, *pointer);
        if (panel || told.isNull()) {
            place = *pointer;
        } else {
            panel = dockAt(panels, told);
        }
        known_ = {squareIn(panel, place), panel};
        samplePanel(panels);
    }
    // Later, since the host waits for this call while what it brings about may take its time.
    runLoop_.async([this, alive = std::weak_ptr(alive_), type, place] {
        if (!alive.expired()) {
            content_.clicked({type, 0, place.x(), place.y()}, std::nullopt);
        }
    });
}

NotifierItem::Spot NotifierItem::spot() const {
    const auto pointer = known_.square ? std::nullopt : screen_.pointer();
    if (!pointer) {
        return known_;
    }
    const auto panels = docks(screen_.connection(), screen_.atoms());
    const auto panel = name_.isEmpty() ? std::nullopt : dockAt(panels, *pointer);
    return panel ? Spot{squareIn(panel, *pointer), panel} : Spot{std::nullopt, mainPanel(panels)};
}

std::optional<PixelRect> NotifierItem::mainPanel(const std::vector<PixelRect>& docks) const {
    const Rect screen = screen_.mainScreen();
    const auto found = std::find_if(docks.begin(), docks.end(), [&](const PixelRect& dock) {
        const Rect place = screen_.toPoints(dock);
        return place.minX() < screen.maxX() && place.maxX() > screen.minX() &&
               place.minY() < screen.maxY() && place.maxY() > screen.minY();
    });
    return found == docks.end() ? std::nullopt : std::optional(*found);
}

PixelRect NotifierItem::squareIn(const std::optional<PixelRect>& panel, QPoint place) const {
    return squareAround(place, panel, static_cast<int>(std::lround(usualSquare * screen_.scale())));
}

std::optional<Rect> NotifierItem::onScreen() const {
    const auto square = screen_.isConnected() ? spot().square : std::nullopt;
    return square ? std::optional(screen_.toPoints(*square)) : std::nullopt;
}

std::optional<Rect> NotifierItem::panelOnScreen() const {
    const auto panel = screen_.isConnected() ? spot().panel : std::nullopt;
    return panel ? std::optional(screen_.toPoints(*panel)) : std::nullopt;
}

bool NotifierItem::isVertical() const {
    const auto panel = spot().panel;
    return panel && panel->height > panel->width;
}

} // namespace quillon
