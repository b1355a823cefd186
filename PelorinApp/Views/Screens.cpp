#include "Views/Screens.h"

#include <QFile>
#include <QString>

#include <QtGlobal>

// The resources of a static library are known only once they have been asked for, which no
// namespace may hold.
static void initResources() { Q_INIT_RESOURCE(quillon_fonts); }

namespace quillon {

QUrl screenUrl(std::string_view name) {
    initResources();
    const QString file = QStringLiteral(":/qt/qml/Quillon/Views/%1.qml")
                             .arg(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
    return QFile::exists(file) ? QUrl(QStringLiteral("qrc") + file) : QUrl();
}

} // namespace quillon
