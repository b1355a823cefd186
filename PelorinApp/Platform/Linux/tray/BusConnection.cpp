#include "Platform/Linux/tray/BusConnection.h"

#include <QUuid>

namespace quillon {

BusConnection::BusConnection(RunLoop& runLoop, const std::string& address,
                             std::function<void()> connected)
    : connected_(std::move(connected)) {
    if (address.empty()) {
        return;
    }
    const std::weak_ptr<bool> alive = alive_;
    connecting_ = std::jthread([this, &runLoop, address, alive] {
        const QString name = QUuid::createUuid().toString();
        const auto connection =
            QDBusConnection::connectToBus(QString::fromStdString(address), name);
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
