#include "Platform/Linux/tray/NotifierWatcher.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace quillon {

QString notifierWatcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }

NotifierWatcher::NotifierWatcher(const TrayContext& context, std::function<void()> changed)
    : changed_(std::move(changed)), bus_(context.runLoop, context.busAddress, [this] { begin(); }) {
}

void NotifierWatcher::begin() {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QString path = QStringLiteral("/org/freedesktop/DBus");
    // No sender is named for these: the toolkit would ask the bus for its owner, and wait.
    bus_.connection().connect(QString(), path, bus, QStringLiteral("NameOwnerChanged"),
                              {notifierWatcherName()}, QString(), this,
                              SLOT(nameOwnerChanged(QString, QString, QString)));
    bus_.connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                              QStringLiteral("org.freedesktop.DBus.Local"),
                              QStringLiteral("Disconnected"), this, SLOT(disconnected()));
    auto ask = QDBusMessage::createMethodCall(bus, path, bus, QStringLiteral("GetNameOwner"));
    ask << notifierWatcherName();
    auto* answer = new QDBusPendingCallWatcher(bus_.connection().asyncCall(ask), this);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QString> owner = *answer;
        answer->deleteLater();
        if (!owner.isError()) {
            setOwner(owner.value());
        }
    });
}

void NotifierWatcher::nameOwnerChanged(const QString& /*name*/, const QString& /*before*/,
                                       const QString& now) {
    setOwner(now);
}

void NotifierWatcher::disconnected() {
    setOwner(QString());
    bus_.lost();
}

void NotifierWatcher::setOwner(const QString& owner) {
    if (std::exchange(owner_, owner) != owner) {
        changed_();
    }
}

} // namespace quillon
