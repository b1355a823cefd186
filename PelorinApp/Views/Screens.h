#pragma once

#include <QLocale>
#include <QTranslator>
#include <QUrl>

#include <memory>
#include <string_view>

namespace quillon {

/// Where the screen of this name is, compiled into the program; not valid when there is none.
[[nodiscard]] QUrl screenUrl(std::string_view name);

/// As long as it lives, texts are those of the user's language, and lines run as its script does;
/// null where there is no translation. A QGuiApplication must exist, and no screen yet.
[[nodiscard]] std::unique_ptr<QTranslator> installTranslation(const QLocale& locale);

} // namespace quillon
