#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

#include <functional>
#include <vector>

namespace quillon {

/// A picture as it goes over the bus.
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes; // networkOrderPixels
};
using NotifierPixmaps = QList<NotifierPixmap>;

struct NotifierToolTip {
    QString title;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip);

/// What the host of status notifier items asks for, and what it reports.
class NotifierHandler {
  public:
    virtual ~NotifierHandler() = default;
    [[nodiscard]] virtual NotifierPixmaps pixmaps() const = 0;
    [[nodiscard]] virtual QString toolTip() const = 0;

    /// At a place of the screen, if the host knows it.
    virtual void activated(int x, int y) = 0;
    virtual void contextMenuRequested(int x, int y) = 0;
};

/// The item on the bus. It offers no menu of its own, so that hosts hand the right button on.
class NotifierAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(quillon::NotifierPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(quillon::NotifierToolTip ToolTip READ toolTip)

  public:
    /// `object` is what is registered on the bus, and owns this.
    NotifierAdaptor(QObject* object, NotifierHandler& handler);

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const { return QStringLiteral("quillon"); }
    [[nodiscard]] QString title() const { return QStringLiteral("Quillon"); }
    [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QString iconName() const { return {}; }
    [[nodiscard]] NotifierPixmaps iconPixmap() const { return handler_.pixmaps(); }
    [[nodiscard]] NotifierToolTip toolTip() const { return {handler_.toolTip()}; }

  public Q_SLOTS:
    // Their names and signatures are the interface's.
    void Activate(int x, int y) { handler_.activated(x, y); }
    void ContextMenu(int x, int y) { handler_.contextMenuRequested(x, y); }
    void SecondaryActivate(int /*x*/, int /*y*/) {}
    void Scroll(int /*delta*/, const QString& /*orientation*/) {}

  Q_SIGNALS:
    void NewIcon();
    void NewToolTip();

  private:
    NotifierHandler& handler_;
};

} // namespace quillon

Q_DECLARE_METATYPE(quillon::NotifierPixmap)
Q_DECLARE_METATYPE(quillon::NotifierPixmaps)
Q_DECLARE_METATYPE(quillon::NotifierToolTip)
