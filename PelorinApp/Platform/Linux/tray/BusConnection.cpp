#include "Platform/Linux/tray/BusConnection.h"

#include "Platform/Linux/session/SessionBus.h"

#include <QUuid>

namespace quillon {

BusConnection::BusConnection(RunLoop& runLoop, std::function<void()> connected)
    : connected_(std::move(connected)) {
    if (!hasSessionBus()) {
        return;
    }
    const QString address = QString::fromStdString(sessionBusAddress());
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

BusConnection::~BusConnection() {
    if (connection_) {
        QDBusConnection::disconnectFromBus(connection_->name());
    }
}

} // namespace quillon
