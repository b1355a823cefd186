#include "Platform/Linux/tray/NotifierAdaptor.h"

#include <QDBusMetaType>

namespace quillon {

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
    argument.beginStructure();
    // The name of an icon, its pictures, the title, and more text under it.
    argument << QString() << NotifierPixmaps() << toolTip.title << QString();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
    QString icon;
    NotifierPixmaps pictures;
    QString more;
    argument.beginStructure();
    argument >> icon >> pictures >> toolTip.title >> more;
    argument.endStructure();
    return argument;
}

NotifierAdaptor::NotifierAdaptor(QObject* object, NotifierHandler& handler)
    : QDBusAbstractAdaptor(object), handler_(handler) {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

} // namespace quillon
