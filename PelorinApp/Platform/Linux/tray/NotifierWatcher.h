#pragma once

#include "Platform/Linux/tray/BusConnection.h"
#include "Platform/Linux/tray/TrayContext.h"

#include <QObject>
#include <QString>

#include <functional>

namespace quillon {

/// Whether the session has somebody to tell of status notifier items, now and later. Never waits
/// for the bus. Main thread only.
class NotifierWatcher final : public QObject {
    Q_OBJECT

  public:
    /// `changed` is called when one comes, goes or is replaced; not before the constructor has
    /// returned.
    NotifierWatcher(const TrayContext& context, std::function<void()> changed);

    [[nodiscard]] bool isThere() const { return !owner_.isEmpty(); }

    /// Only while it is there.
    [[nodiscard]] QDBusConnection& bus() { return bus_.connection(); }

  private Q_SLOTS:
    void nameOwnerChanged(const QString& name, const QString& before, const QString& now);
    void disconnected();

  private:
    void begin();
    void setOwner(const QString& owner);

    std::function<void()> changed_;
    QString owner_;
    BusConnection bus_;
};

/// The well-known name and interface of the watcher.
[[nodiscard]] QString notifierWatcherName();

} // namespace quillon
