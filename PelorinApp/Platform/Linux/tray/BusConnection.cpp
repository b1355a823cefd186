#include "Platform/Linux/tray/BusConnection.h"

#include "Platform/Linux/session/BusAddress.h"

#include <QUuid>

#include <filesystem>
#include <system_error>
#include <utility>

namespace quillon {

namespace {

// The socket's file is there a moment before the bus listens.
constexpr double betweenTriesSeconds = 0.1;
constexpr int triesPerChange = 10;

/// Without the identity of today's bus, which the next one does not have.
std::string lastingAddress(const std::string& address) {
    const auto socket = busSocket(address);
    return socket ? busAddress(*socket) : address;
}

} // namespace

BusConnection::BusConnection(RunLoop& runLoop, const std::string& address,
                             std::function<void()> connected)
    : runLoop_(runLoop), address_(lastingAddress(address)), connected_(std::move(connected)) {
    if (!address_.empty()) {
        connect();
    }
}

BusConnection::~BusConnection() {
    if (retry_) {
        retry_->cancel();
    }
    drop();
}

void BusConnection::connect() {
    isConnecting_ = true;
    connecting_ = std::jthread(
        [this, &runLoop = runLoop_, address = address_, alive = std::weak_ptr(alive_)] {
            const QString name = QUuid::createUuid().toString();
            const auto connection =
                QDBusConnection::connectToBus(QString::fromStdString(address), name);
            runLoop.async([this, alive, connection] {
                if (alive.expired()) {
                    QDBusConnection::disconnectFromBus(connection.name());
                } else {
                    isConnecting_ = false;
                    finish(connection);
                }
            });
        });
}

void BusConnection::finish(const QDBusConnection& made) {
    if (made.isConnected()) {
        folder_.reset();
        connection_ = made;
        connected_();
        return;
    }
    QDBusConnection::disconnectFromBus(made.name());
    if (triesLeft_ > 0) {
        retry_ = runLoop_.asyncAfter(betweenTriesSeconds, [this] {
            retry_.reset();
            tryAgain();
        });
    }
}

void BusConnection::lost() {
    // Later: a connection is not dropped from within its own call.
    runLoop_.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            drop();
            waitForBus();
        }
    });
}

void BusConnection::waitForBus() {
    const auto socket = busSocket(address_);
    if (!socket || socket->isAbstract) {
        return; // nothing tells when such a one is back
    }
    folder_ = std::make_unique<QFileSystemWatcher>();
    folder_->addPath(
        QString::fromStdString(std::filesystem::path(socket->path).parent_path().string()));
    QObject::connect(folder_.get(), &QFileSystemWatcher::directoryChanged, folder_.get(), [this] {
        triesLeft_ = triesPerChange;
        tryAgain();
    });
    triesLeft_ = 1; // where connecting is what starts a new bus
    tryAgain();
}

void BusConnection::tryAgain() {
    std::error_code ignored;
    const auto socket = busSocket(address_);
    if (isConnecting_ || retry_ || connection_ || triesLeft_ == 0 || !socket ||
        !std::filesystem::exists(socket->path, ignored)) {
        return;
    }
    --triesLeft_;
    connect();
}

void BusConnection::drop() {
    if (const auto dropped = std::exchange(connection_, std::nullopt)) {
        QDBusConnection::disconnectFromBus(dropped->name());
    }
}

} // namespace quillon
