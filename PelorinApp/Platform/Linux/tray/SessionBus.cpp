#include "Platform/Linux/tray/SessionBus.h"

#include <QFile>
#include <QUuid>

namespace quillon {

QString sessionBusAddress() {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address.startsWith(QLatin1String("autolaunch")) ? QString() : address;
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + QStringLiteral("/bus");
    return !folder.isEmpty() && QFile::exists(socket) ? QStringLiteral("unix:path=") + socket
                                                      : QString();
}

SessionBus::SessionBus(RunLoop& runLoop, std::function<void()> connected)
    : connected_(std::move(connected)) {
    const QString address = sessionBusAddress();
    if (address.isEmpty()) {
        return;
    }
    const std::weak_ptr<bool> alive = alive_;
    connecting_ = std::jthread([this, &runLoop, address, alive] {
        const QString name = QUuid::createUuid().toString();
        const auto connection = QDBusConnection::connectToBus(address, name);
        runLoop.async([this, alive, connection] {
            if (alive.expired()) {
                QDBusConnection::disconnectFromBus(connection.name());
            } else if (connection.isConnected()) {
                connection_ = connection;
                connected_();
            }
        });
    });
}

SessionBus::~SessionBus() {
    if (connection_) {
        QDBusConnection::disconnectFromBus(connection_->name());
    }
}

} // namespace quillon
