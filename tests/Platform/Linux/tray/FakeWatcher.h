#pragma once

#include "Platform/Linux/tray/NotifierAdaptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace quillon {

/// A desktop that shows status notifier items, on a bus connection of its own.
class FakeWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

  public:
    explicit FakeWatcher(const QString& address);
    ~FakeWatcher() override;

    /// The items that are there now.
    [[nodiscard]] QStringList items() const;

    /// Calls the last item; its answer comes when the item's thread gets to it.
    QDBusPendingCall call(const QString& method, const QVariantList& arguments);
    QDBusPendingCall readProperties();

    QStringList registered;
    int newIcons = 0;
    int newToolTips = 0;

  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service);
    void countIcon() { ++newIcons; }
    void countToolTip() { ++newToolTips; }

  private:
    QDBusConnection bus_;
};

} // namespace quillon
