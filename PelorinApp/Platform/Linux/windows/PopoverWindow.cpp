#include "Platform/Linux/windows/PopoverWindow.h"

#include "Platform/Linux/windows/WindowShape.h"

#include <QEvent>
#include <QQuickItem>

namespace quillon {

PopoverWindow::PopoverWindow(const QuickScreen& screen) : ScreenView(screen) {
    setTitle(QStringLiteral("Quillon"));
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::NoDropShadowWindowHint);
}

void PopoverWindow::warmUp() {
    create();
    (void)grabWindow();
}

void PopoverWindow::shapeFor(bool composited) {
    composited_ = composited;
    if (QQuickItem* root = rootObject()) {
        root->setProperty("composited", composited);
    }
    cutCorners();
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        Q_EMIT closeRequested();
        return true;
    }
    return ScreenView::event(event);
}

void PopoverWindow::resized() {
    if (handle() != nullptr) {
        cutCorners();
    }
}

void PopoverWindow::cutCorners() {
    const QQuickItem* root = rootObject();
    const bool cut = !composited_ && root != nullptr;
    quillon::cutCorners(*this, cut ? root->property("cornerRadius").toDouble() : 0);
}

} // namespace quillon
