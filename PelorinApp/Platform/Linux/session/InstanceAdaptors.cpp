#include "Platform/Linux/session/InstanceAdaptors.h"

#include "Platform/Linux/session/InstanceNames.h"

#include <QDBusConnection>
#include <QDBusError>

#include <utility>

namespace quillon {

namespace {

constexpr double wholeVolume = 100;
constexpr const char* hubHasNotStarted = "Quillon has not started its tools";

void send(const QDBusMessage& reply) { QDBusConnection(InstanceNames::connection).send(reply); }

void refuse(const QDBusMessage& message, const QString& reason) {
    message.setDelayedReply(true); // or the usual one would go out, too
    send(message.createErrorReply(QDBusError::InvalidArgs, reason));
}

} // namespace

std::optional<std::uint32_t> startupTime(const QString& startupId) {
    const QString mark = QStringLiteral("_TIME");
    const auto place = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const std::uint32_t time = place < 0 ? 0 : startupId.mid(place + mark.size()).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

ApplicationAdaptor::ApplicationAdaptor(QObject* instance,
                                       std::function<void(std::optional<std::uint32_t>)> activate)
    : QDBusAbstractAdaptor(instance), activate_(std::move(activate)) {}

void ApplicationAdaptor::Activate(const QVariantMap& platformData) {
    for (const char* key : {"desktop-startup-id", "activation-token"}) {
        if (const auto time = startupTime(platformData.value(key).toString())) {
            activate_(time);
            return;
        }
    }
    activate_(std::nullopt);
}

void ApplicationAdaptor::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                        const QVariantMap& /*platformData*/,
                                        const QDBusMessage& message) {
    refuse(message, QStringLiteral("there is no action '%1'").arg(name));
}

ToolsAdaptor::ToolsAdaptor(QObject* instance, const InstanceHandlers& handlers)
    : QDBusAbstractAdaptor(instance), handlers_(handlers) {}

QString ToolsAdaptor::Status(const QDBusMessage& message) {
    message.setDelayedReply(true);
    later([this, message] {
        const auto status = handlers_.toolStatus();
        send(status ? message.createReply(QString::fromStdString(*status))
                    : message.createErrorReply(QDBusError::Failed, QString(hubHasNotStarted)));
    });
    return {};
}

void ToolsAdaptor::SetEnabled(const QString& id, bool enabled, const QDBusMessage& message) {
    perform(enabled ? ToolVerb::enable : ToolVerb::disable, id, message);
}

void ToolsAdaptor::Install(const QString& id, const QDBusMessage& message) {
    perform(ToolVerb::install, id, message);
}

void ToolsAdaptor::Uninstall(const QString& id, const QDBusMessage& message) {
    perform(ToolVerb::uninstall, id, message);
}

void ToolsAdaptor::Quit() {
    later([this] { handlers_.quit(); });
}

void ToolsAdaptor::perform(ToolVerb verb, const QString& id, const QDBusMessage& message) {
    message.setDelayedReply(true);
    later([this, verb, id = id.toStdString(), message] {
        handlers_.performOnTool(verb, id, [message](const std::optional<std::string>& failure) {
            send(failure ? message.createErrorReply(QDBusError::Failed,
                                                    QString::fromStdString(*failure))
                         : message.createReply());
        });
    });
}

void ToolsAdaptor::later(std::function<void()> work) {
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

DevelopmentAdaptor::DevelopmentAdaptor(QObject* instance,
                                       std::function<void(double)> showVolumeLevel)
    : QDBusAbstractAdaptor(instance), showVolumeLevel_(std::move(showVolumeLevel)) {}

void DevelopmentAdaptor::ShowVolumeLevel(double percent, const QDBusMessage& message) {
    if (percent >= 0 && percent <= wholeVolume) {
        showVolumeLevel_(percent);
    } else {
        refuse(message, QStringLiteral("a volume is from 0 to 100 percent"));
    }
}

} // namespace quillon
