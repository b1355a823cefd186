#pragma once

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
