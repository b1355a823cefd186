#include "Platform/Linux/windows/DesktopPalette.h"

#include <QGuiApplication>
#include <QPalette>

namespace quillon {

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() <
           palette.color(QPalette::WindowText).lightnessF();
}

QPalette plain(bool dark) {
    QPalette palette(dark ? QColor(58, 58, 62) : QColor(239, 239, 239),
                     dark ? QColor(40, 40, 44) : QColor(239, 239, 239));
    palette.setColor(QPalette::Base, dark ? QColor(30, 30, 33) : QColor(255, 255, 255));
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette contrasting(bool dark) {
    const QColor ground = dark ? Qt::black : Qt::white;
    const QColor ink = dark ? Qt::white : Qt::black;
    QPalette palette(ink, ground, ink, ink, ink, ink, ink, ground, ground);
    palette.setColor(QPalette::Highlight, dark ? QColor(255, 216, 0) : QColor(0, 40, 150));
    palette.setColor(QPalette::HighlightedText, ground);
    return palette;
}

} // namespace

void applyDesktopPalette(const DesktopLook& look) {
    QGuiApplication::setPalette(QPalette()); // what the toolkit found out
    if (look.options.shouldIncreaseContrast) {
        QGuiApplication::setPalette(contrasting(look.isDark.value_or(false)));
    } else if (look.isDark && *look.isDark != isDark(QGuiApplication::palette())) {
        QGuiApplication::setPalette(plain(*look.isDark));
    }
}

} // namespace quillon
