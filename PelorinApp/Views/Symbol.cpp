#include "Views/Symbol.h"

#include "Resources/Symbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace quillon {

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) { setImplicitSize(16, 16); }

Symbol::~Symbol() = default;

void Symbol::setName(const QString& name) {
    if (name_ != name) {
        name_ = name;
        draw();
        Q_EMIT nameChanged();
    }
}

void Symbol::setColor(const QColor& color) {
    if (color_ != color) {
        color_ = color;
        draw();
        Q_EMIT colorChanged();
    }
}

void Symbol::draw() {
    drawing_.reset();
    const QString path = symbolDrawing(name_.toStdString());
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::ReadOnly)) {
        const QByteArray image =
            file.readAll().replace("currentColor", color_.name(QColor::HexRgb).toLatin1());
        drawing_ = std::make_unique<QSvgRenderer>(image);
    }
    update();
}

void Symbol::paint(QPainter* painter) {
    if (drawing_) {
        painter->setOpacity(color_.alphaF());
        drawing_->render(painter, boundingRect());
    }
}

} // namespace quillon
