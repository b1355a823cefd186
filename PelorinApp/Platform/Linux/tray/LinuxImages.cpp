#include "Platform/Linux/tray/LinuxImages.h"

#include "Resources/Symbols.h"

#include <QFile>

namespace quillon {

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
    const QString path =
        image.isSymbol ? symbolDrawing(image.name)
                       : QStringLiteral(":/quillon/%1.svg").arg(QString::fromStdString(image.name));
    return QFile::exists(path) ? path : QString();
}

} // namespace quillon
