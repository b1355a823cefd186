#include "Platform/Linux/tray/LinuxImages.h"

#include <QFile>

#include <array>

namespace quillon {

namespace {

struct Symbol {
    std::string_view name;
    const char* drawing;
};
constexpr std::array symbols{Symbol{"wrench.and.screwdriver", "toolbox"}};

} // namespace

std::optional<Image> LinuxImages::named(std::string_view name) const {
    Image image{.name = std::string(name)};
    return drawingOf(image).isEmpty() ? std::nullopt : std::optional(std::move(image));
}

std::optional<Image> LinuxImages::systemSymbol(std::string_view name,
                                               std::string_view accessibilityDescription) const {
    Image image{.name = std::string(name),
                .accessibilityDescription = std::string(accessibilityDescription),
                .isSymbol = true};
    return drawingOf(image).isEmpty() ? std::nullopt : std::optional(std::move(image));
}

QString drawingOf(const Image& image) {
    QString path;
    if (image.isSymbol) {
        for (const Symbol& symbol : symbols) {
            if (symbol.name == image.name) {
                path =
                    QStringLiteral(":/quillon/symbols/%1.svg").arg(QLatin1String(symbol.drawing));
            }
        }
    } else {
        path = QStringLiteral(":/quillon/%1.svg").arg(QString::fromStdString(image.name));
    }
    return QFile::exists(path) ? path : QString();
}

} // namespace quillon
