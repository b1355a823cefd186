#include "Platform/Linux/session/SingleInstance.h"

#include "Platform/Linux/session/InstanceAdaptors.h"
#include "Platform/Linux/session/InstanceCaller.h"
#include "Platform/Linux/session/InstanceNames.h"
#include "Platform/Linux/session/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <ostream>
#include <string>
#include <system_error>
#include <utility>

namespace quillon {

namespace {

using std::chrono::milliseconds;

/// The main thread answers input: it cannot wait long for a bus that has come back.
constexpr milliseconds patienceWithNewBus{100};

/// The socket's file is there a moment before the bus listens.
constexpr milliseconds betweenTries{100};
constexpr int triesPerBus = 10;

constexpr int patienceWithClaim = 2000; // milliseconds

QDBusMessage busCall(const char* method) {
    return QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", method);
}

} // namespace

std::optional<int> SingleInstance::activateRunning(std::ostream& errors) {
    if (!hasSessionBus()) {
        return std::nullopt;
    }
    using Outcome = InstanceCaller::Outcome;
    switch (InstanceCaller().activate().outcome) {
    case Outcome::done:
        return 0;
    case Outcome::notRunning:
        return std::nullopt;
    case Outcome::noAnswer:
    case Outcome::refused:
        break;
    }
    errors << "quillon: Quillon is already running but does not answer\n";
    return 1;
}

SingleInstance::SingleInstance(Handlers handlers, Diagnostics& diagnostics)
    : handlers_(std::move(handlers)), diagnostics_(diagnostics) {
    new ApplicationAdaptor(
        this, [this](std::optional<std::uint32_t> timestamp) { Q_EMIT activated(timestamp); });
    new ToolsAdaptor(this, handlers_);
    new DevelopmentAdaptor(this, [this](double percent) { Q_EMIT levelAskedFor(percent); });
    // Queued: the caller does not wait for what the handlers do, and a connection is not dropped
    // from within its own call.
    connect(this, &SingleInstance::activated, this, handlers_.activate, Qt::QueuedConnection);
    connect(this, &SingleInstance::levelAskedFor, this, handlers_.showVolumeLevel,
            Qt::QueuedConnection);
    connect(this, &SingleInstance::lost, this, &SingleInstance::waitForBus, Qt::QueuedConnection);
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &SingleInstance::tryAgain);
    connect(&folderWatcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        triesLeft_ = triesPerBus;
        tryAgain();
    });
}

SingleInstance::~SingleInstance() { QDBusConnection::disconnectFromBus(InstanceNames::connection); }

bool SingleInstance::claim() { return connectAndClaim() != Claimed::byAnother; }

SingleInstance::Claimed SingleInstance::connectAndClaim() {
    if (!hasSessionBus()) {
        return Claimed::noBus;
    }
    auto bus = QDBusConnection::connectToBus(QString::fromStdString(sessionBusAddress()),
                                             InstanceNames::connection);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(InstanceNames::connection);
        return Claimed::noBus;
    }
    // Before the name, so that whoever finds the name is answered.
    bus.registerObject(InstanceNames::path, this, QDBusConnection::ExportAdaptors);
    bus.connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                "Disconnected", this, SLOT(busLost()));
    auto request = busCall("RequestName");
    constexpr unsigned doNotQueue = 4;
    request << InstanceNames::service << doNotQueue;
    const QDBusMessage reply = bus.call(request, QDBus::Block, patienceWithClaim);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return Claimed::noBus; // stuck or gone; if gone, we shall be told
    }
    constexpr unsigned owner = 1;
    constexpr unsigned ownerAlready = 4;
    const unsigned answer = reply.arguments().value(0).toUInt();
    return answer == owner || answer == ownerAlready ? Claimed::yes : Claimed::byAnother;
}

void SingleInstance::busLost() {
    diagnostics_.line("⚠️ The session bus is gone: until it is back, a second start of Quillon "
                      "does not find this one");
    Q_EMIT lost();
}

void SingleInstance::waitForBus() {
    QDBusConnection::disconnectFromBus(InstanceNames::connection);
    const auto folder = sessionBusSocket().parent_path();
    if (!folder.empty()) {
        folderWatcher_.addPath(QString::fromStdString(folder.string()));
    }
    triesLeft_ = 1; // where connecting is what starts a new bus
    tryAgain();
}

void SingleInstance::tryAgain() {
    std::error_code ignored;
    if (triesLeft_ == 0 || !std::filesystem::exists(sessionBusSocket(), ignored)) {
        return;
    }
    --triesLeft_;
    const auto claimed = sessionBusAnswers(patienceWithNewBus) ? connectAndClaim() : Claimed::noBus;
    if (claimed == Claimed::noBus) {
        retry_.start(betweenTries);
        return;
    }
    triesLeft_ = 0;
    retry_.stop();
    folderWatcher_.removePaths(folderWatcher_.directories());
    diagnostics_.line(
        claimed == Claimed::yes
            ? "✅ The session bus is back"
            : "⚠️ The session bus is back, and another Quillon has come up on it");
}

} // namespace quillon
