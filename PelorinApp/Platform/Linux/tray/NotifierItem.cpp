#include "Platform/Linux/tray/NotifierItem.h"

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
    square_.reset();
    panel_.reset();
}

void NotifierItem::samplePanel() {
    if (name_.isEmpty() || !screen_.isConnected()) {
        return;
    }
    const auto root = placeOf(screen_.connection(), screen_.connection().root());
    const auto panels = docks(screen_.connection(), screen_.atoms());
    const auto panel = panel_ ? panel_ : panels.empty() ? std::nullopt : std::optional(panels[0]);
    const auto seen = panel && root ? intersection(*panel, *root) : std::nullopt;
    const QImage pixels = seen ? screenPixels(screen_.connection(), *seen) : QImage();
    const double before = panelLuminance_;
    panelLuminance_ = medianLuminance(pixels, QRect()).value_or(before);
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

QString NotifierItem::toolTip() const { return QString::fromStdString(content_.toolTip()); }

void NotifierItem::activated(int x, int y) { click(EventType::leftMouseUp, {x, y}); }

void NotifierItem::contextMenuRequested(int x, int y) { click(EventType::rightMouseUp, {x, y}); }

void NotifierItem::click(EventType type, QPoint told) {
    // Hosts tell the place in units of their own, some none at all; the pointer is the witness.
    QPoint place = told;
    if (screen_.isConnected()) {
        const auto panels = docks(screen_.connection(), screen_.atoms());
        panel_ = dockAt(panels, told);
        if (const auto pointer = panel_ ? std::nullopt : screen_.pointer()) {
            panel_ = dockAt(panels, *pointer);
            place = panel_ || told.isNull() ? *pointer : told;
        }
        square_ = squareAround(place, panel_,
                               static_cast<int>(std::lround(usualSquare * screen_.scale())));
        samplePanel();
    }
    // Later, since the host waits for this call while what it brings about may take its time.
    runLoop_.async([this, alive = std::weak_ptr(alive_), type, place] {
        if (!alive.expired()) {
            content_.clicked({type, 0, place.x(), place.y()}, std::nullopt);
        }
    });
}

std::optional<Rect> NotifierItem::onScreen() const {
    return square_ && screen_.isConnected() ? std::optional(screen_.toPoints(*square_))
                                            : std::nullopt;
}

std::optional<Rect> NotifierItem::panelOnScreen() const {
    return panel_ && screen_.isConnected() ? std::optional(screen_.toPoints(*panel_))
                                           : std::nullopt;
}

bool NotifierItem::isVertical() const { return panel_ && panel_->height > panel_->width; }

} // namespace quillon
