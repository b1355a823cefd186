#include "Platform/Quick/ScreenView.h"

#include <QKeyEvent>
#include <QMetaMethod>
#include <QQuickItem>

namespace quillon {

ScreenView::ScreenView(const QuickScreen& screen) {
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeRootObjectToView);
    setInitialProperties(screen.properties);
    setSource(screen.url);
    if (QQuickItem* root = rootObject()) {
        root->setFocus(true);
        connect(root, &QQuickItem::implicitWidthChanged, this, &ScreenView::takeSize);
        connect(root, &QQuickItem::implicitHeightChanged, this, &ScreenView::takeSize);
    }
    takeSize();
}

void ScreenView::fitInto(QSize room) {
    room_ = room;
    takeSize();
}

bool ScreenView::hasAttachedSheet() const {
    return rootObject() != nullptr && rootObject()->property("sheetAttached").toBool();
}

void ScreenView::keyPressEvent(QKeyEvent* event) {
    QQuickView::keyPressEvent(event);
    if (event->isAccepted() || event->key() != Qt::Key_Escape || event->isAutoRepeat()) {
        return;
    }
    event->accept();
    if (!goBack()) {
        Q_EMIT escaped();
    }
}

bool ScreenView::goBack() const {
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

void ScreenView::takeSize() {
    const QQuickItem* root = rootObject();
    const QSize wanted =
        root == nullptr ? QSize() : QSizeF(root->implicitWidth(), root->implicitHeight()).toSize();
    const QSize possible = wanted.boundedTo(room_);
    if (possible.isEmpty() || possible == size()) {
        return;
    }
    resize(possible);
    resized();
    Q_EMIT sizeChanged();
}

} // namespace quillon
