// Makes of the logo's drawing the pictures that a Mac asks for: the program's icon in all sizes, in
// FOLDER/Quillon.iconset, and the menu bar's logo, for plain and for dense screens.
//
//   quillon-pictures DRAWING.svg FOLDER

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <iostream>

namespace {

// In points.
constexpr std::array iconSizes{16, 32, 128, 256, 512};
constexpr int logoSize = 20;

QImage clearImage(int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage drawn(QSvgRenderer& drawing, int pixels) {
    QImage image = clearImage(pixels);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

/// The logo, white on a rounded ground, with the margins that icons have in the Dock and Finder.
QImage icon(QSvgRenderer& drawing, int pixels) {
    const qreal margin = pixels * 0.1;
    const QRectF ground(margin, margin, pixels - 2 * margin, pixels - 2 * margin);

    // The drawing is black: what it covers becomes white.
    QImage logo = clearImage(pixels);
    QPainter onLogo(&logo);
    const qreal inset = ground.width() * 0.12;
    drawing.render(&onLogo, ground.adjusted(inset, inset, -inset, -inset));
    onLogo.setCompositionMode(QPainter::CompositionMode_SourceIn);
    onLogo.fillRect(logo.rect(), Qt::white);
    onLogo.end();

    QImage image = clearImage(pixels);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x2f, 0x4b, 0x7c));
    const qreal radius = ground.width() * 0.225;
    painter.drawRoundedRect(ground, radius, radius);
    painter.drawImage(0, 0, logo);
    return image;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: quillon-pictures DRAWING.svg FOLDER\n";
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::cerr << "quillon-pictures: cannot read " << argv[1] << '\n';
        return 1;
    }
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    const QDir iconset(folder.filePath(QStringLiteral("Quillon.iconset")));
    bool areSaved = iconset.mkpath(QStringLiteral("."));
    for (const int density : {1, 2}) {
        const auto suffix = density == 2 ? QStringLiteral("@2x.png") : QStringLiteral(".png");
        for (const int size : iconSizes) {
            const auto file = QStringLiteral("icon_%1x%1%2").arg(size).arg(suffix);
            areSaved = areSaved && icon(drawing, size * density).save(iconset.filePath(file));
        }
        const auto logo = folder.filePath(QStringLiteral("MenuBarLogo") + suffix);
        areSaved = areSaved && drawn(drawing, logoSize * density).save(logo);
    }
    if (!areSaved) {
        std::cerr << "quillon-pictures: cannot write to " << argv[2] << '\n';
        return 1;
    }
    return 0;
}
