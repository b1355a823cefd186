#include "Platform/Linux/tray/FakeWatcher.h"

#include "Platform/Linux/tray/NotifierWatcher.h"

#include <QDBusConnectionInterface>
#include <QUuid>

namespace quillon {

namespace {
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
} // namespace

FakeWatcher::FakeWatcher(const QString& address)
    : bus_(QDBusConnection::connectToBus(address, QUuid::createUuid().toString())) {
    bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                        QDBusConnection::ExportAllSlots);
    bus_.registerService(notifierWatcherName());
    bus_.connect(QString(), itemPath, itemInterface, QStringLiteral("NewIcon"), this,
                 SLOT(countIcon()));
    bus_.connect(QString(), itemPath, itemInterface, QStringLiteral("NewToolTip"), this,
                 SLOT(countToolTip()));
}

FakeWatcher::~FakeWatcher() { QDBusConnection::disconnectFromBus(bus_.name()); }

QStringList FakeWatcher::items() const {
    QStringList there;
    for (const QString& item : registered) {
        if (bus_.interface()->isServiceRegistered(item)) {
            there.push_back(item);
        }
    }
    return there;
}

QDBusPendingCall FakeWatcher::call(const QString& method, const QVariantList& arguments) {
    auto message =
        QDBusMessage::createMethodCall(registered.last(), itemPath, itemInterface, method);
    message.setArguments(arguments);
    return bus_.asyncCall(message);
}

QDBusPendingCall FakeWatcher::readProperties() {
    return bus_.asyncCall(
        QDBusMessage::createMethodCall(registered.last(), itemPath,
                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                       QStringLiteral("GetAll"))
        << itemInterface);
}

void FakeWatcher::RegisterStatusNotifierItem(const QString& service) {
    registered.push_back(service);
}

} // namespace quillon
