#include "Platform/Linux/windows/PopoverWindow.h"

#include "Platform/Linux/windows/WindowShape.h"

#include <QKeyEvent>
#include <QMetaMethod>
#include <QQuickItem>

namespace quillon {

PopoverWindow::PopoverWindow(const QuickScreen& screen) {
    setTitle(QStringLiteral("Quillon"));
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::NoDropShadowWindowHint);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeRootObjectToView);
    setInitialProperties(screen.properties);
    setSource(screen.url);
    if (QQuickItem* root = rootObject()) {
        root->setFocus(true);
        connect(root, &QQuickItem::implicitWidthChanged, this, &PopoverWindow::takeSize);
        connect(root, &QQuickItem::implicitHeightChanged, this, &PopoverWindow::takeSize);
    }
    takeSize();
}

void PopoverWindow::warmUp() {
    create();
    (void)grabWindow();
}

void PopoverWindow::fitInto(QSize room) {
    room_ = room;
    takeSize();
}

void PopoverWindow::shapeFor(bool composited) {
    composited_ = composited;
    if (QQuickItem* root = rootObject()) {
        root->setProperty("composited", composited);
    }
    cutCorners();
}

bool PopoverWindow::hasAttachedSheet() const {
    return rootObject() != nullptr && rootObject()->property("sheetAttached").toBool();
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        Q_EMIT closeRequested();
        return true;
    }
    return QQuickView::event(event);
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    QQuickView::keyPressEvent(event);
    if (event->isAccepted() || event->key() != Qt::Key_Escape || event->isAutoRepeat()) {
        return;
    }
    event->accept();
    if (!goBack()) {
        Q_EMIT escaped();
    }
}

bool PopoverWindow::goBack() const {
    QQuickItem* root = rootObject();
    if (root == nullptr) {
        return false;
    }
    const QMetaObject& type = *root->metaObject();
    const int index = type.indexOfMethod("goBack()");
    if (index < 0) {
        return false;
    }
    bool wentBack = false;
    const QMetaMethod method = type.method(index);
    if (method.returnMetaType() == QMetaType::fromType<bool>()) {
        method.invoke(root, Qt::DirectConnection, Q_RETURN_ARG(bool, wentBack));
    } else {
        QVariant answer;
        method.invoke(root, Qt::DirectConnection, Q_RETURN_ARG(QVariant, answer));
        wentBack = answer.toBool();
    }
    return wentBack;
}

void PopoverWindow::takeSize() {
    const QQuickItem* root = rootObject();
    const QSize wanted =
        root == nullptr ? QSize() : QSizeF(root->implicitWidth(), root->implicitHeight()).toSize();
    const QSize possible = wanted.boundedTo(room_);
    if (possible.isEmpty() || possible == size()) {
        return;
    }
    resize(possible);
    if (handle() != nullptr) {
        cutCorners();
    }
    Q_EMIT sizeChanged();
}

void PopoverWindow::cutCorners() {
    const QQuickItem* root = rootObject();
    const bool cut = !composited_ && root != nullptr;
    quillon::cutCorners(*this, cut ? root->property("cornerRadius").toDouble() : 0);
}

} // namespace quillon
