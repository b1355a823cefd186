#include "Views/Screens.h"

#include <QFile>
#include <QGuiApplication>
#include <QString>

#include <QtGlobal>

// The resources of a static library are known only once they have been asked for, which no
// namespace may hold.
static void initResources() {
    Q_INIT_RESOURCE(quillon_fonts);
    Q_INIT_RESOURCE(quillon_translations);
}

// Nor are the types that the screens use; Qt makes this of the module's name.
void qml_register_types_Quillon_Views();

namespace quillon {

namespace {

/// Once: whatever is registered is kept for good.
void initScreens() {
    [[maybe_unused]] static const bool isDone = [] {
        initResources();
        qml_register_types_Quillon_Views();
        return true;
    }();
}

} // namespace

QUrl screenUrl(std::string_view name) {
    initScreens();
    const QString file = QStringLiteral(":/qt/qml/Quillon/Views/%1.qml")
                             .arg(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
    return QFile::exists(file) ? QUrl(QStringLiteral("qrc") + file) : QUrl();
}

std::unique_ptr<QTranslator> installTranslation(const QLocale& locale) {
    initScreens();
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, QStringLiteral("quillon"), QStringLiteral("_"),
                          QStringLiteral(":/i18n"))) {
        return nullptr;
    }
    QGuiApplication::setLayoutDirection(locale.textDirection());
    QCoreApplication::installTranslator(translator.get());
    return translator;
}

} // namespace quillon
