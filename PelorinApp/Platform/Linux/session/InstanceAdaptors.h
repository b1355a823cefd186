#pragma once

#include "Platform/Linux/session/InstanceHandlers.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <optional>

namespace quillon {

/// The X timestamp within a startup id, which ends in _TIME and that number.
[[nodiscard]] std::optional<std::uint32_t> startupTime(const QString& startupId);

/// What desktops call to bring a running program up instead of starting it again.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    ApplicationAdaptor(QObject* instance,
                       std::function<void(std::optional<std::uint32_t> timestamp)> activate);

  public Q_SLOTS:
    void Activate(const QVariantMap& platformData);

    /// There is nothing that the program opens: the same as Activate.
    void Open(const QStringList& uris, const QVariantMap& platformData);

    /// There are no actions.
    void ActivateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData, const QDBusMessage& message);

  private:
    std::function<void(std::optional<std::uint32_t>)> activate_;
};

/// The tool hub, for people's commands and other programs' scripts. What goes wrong comes back as
/// an error with a text for people. Each call is dealt with in its turn of the event loop; Install
/// is answered when the install has ended.
class ToolsAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.pelorin.PelorinApp.Tools")

  public:
    /// The handlers must outlive it.
    ToolsAdaptor(QObject* instance, const InstanceHandlers& handlers);

  public Q_SLOTS:
    /// A JSON document: {"running", "version", "busy", "tools": [...]}.
    QString Status(const QDBusMessage& message);

    void SetEnabled(const QString& id, bool enabled, const QDBusMessage& message);
    void Install(const QString& id, const QDBusMessage& message);
    void Uninstall(const QString& id, const QDBusMessage& message);

    /// Answered before the program ends.
    void Quit();

  private:
    void perform(ToolVerb verb, const QString& id, const QDBusMessage& message);
    void later(std::function<void()> work);

    const InstanceHandlers& handlers_;
};

/// What developers and demonstrations call.
class DevelopmentAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.pelorin.PelorinApp.Development")

  public:
    DevelopmentAdaptor(QObject* instance, std::function<void(double)> showVolumeLevel);

  public Q_SLOTS:
    /// Refuses what is not from 0 to 100.
    void ShowVolumeLevel(double percent, const QDBusMessage& message);

  private:
    std::function<void(double)> showVolumeLevel_;
};

} // namespace quillon
