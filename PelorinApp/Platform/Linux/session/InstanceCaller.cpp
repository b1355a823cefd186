#include "Platform/Linux/session/InstanceCaller.h"

#include "Platform/Linux/session/InstanceNames.h"
#include "Platform/Linux/session/SessionBus.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>

namespace quillon {

namespace {

constexpr const char* connectionName = "quillon-caller";
constexpr int patience = 5000; // milliseconds

std::unique_ptr<QCoreApplication> applicationIfMissing() {
    if (QCoreApplication::instance() != nullptr) {
        return nullptr;
    }
    static int argc = 1;
    static char name[] = "quillon";
    static char* argv[] = {name, nullptr};
    return std::make_unique<QCoreApplication>(argc, argv);
}

InstanceCaller::Outcome outcomeOf(const QDBusError& error) {
    using Outcome = InstanceCaller::Outcome;
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected: // there is no bus
    case QDBusError::NoServer:
    case QDBusError::AccessDenied: // the bus lets us see nobody
        return Outcome::notRunning;
    case QDBusError::NoReply: // also of one that ended meanwhile
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return Outcome::noAnswer;
    default:
        return error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner")
                   ? Outcome::notRunning
                   : Outcome::refused;
    }
}

} // namespace

InstanceCaller::InstanceCaller()
    : application_(applicationIfMissing()),
      connection_(hasSessionBus() ? QDBusConnection::connectToBus(
                                        QString::fromStdString(sessionBusAddress()), connectionName)
                                  : QDBusConnection(QString())) {}

InstanceCaller::~InstanceCaller() = default;

void InstanceCaller::disconnect() { QDBusConnection::disconnectFromBus(connectionName); }

InstanceCaller::Answer InstanceCaller::call(const char* interface, const char* method,
                                            const QVariantList& arguments) {
    if (!connection_.isConnected()) {
        return {Outcome::notRunning, {}};
    }
    auto message = QDBusMessage::createMethodCall(InstanceNames::service, InstanceNames::path,
                                                  interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false); // it is this process that would be started
    const QDBusMessage reply = connection_.call(message, QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return {Outcome::done, {}};
    }
    return {outcomeOf(QDBusError(reply)), reply.errorMessage().toStdString()};
}

} // namespace quillon
