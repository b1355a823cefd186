#include "Platform/Linux/windows/ScreenWindow.h"

#include <QQuickItem>

#include <utility>

namespace quillon {

ScreenWindow::ScreenWindow(std::string_view screen, QuickScreens screens,
                           std::function<std::uint32_t()> inputTime)
    : screen_(screen), screens_(std::move(screens)), manager_(std::move(inputTime)) {}

void ScreenWindow::show() {
    if (view_) {
        view_->raise();
        manager_.activate(*view_);
        return;
    }
    make();
    view_->create();
    manager_.markAccessory(*view_);
    manager_.show(*view_);
    manager_.confirmAccessory(*view_);
}

void ScreenWindow::make() {
    const QuickScreen screen = screens_(screen_);
    view_ = std::make_unique<QQuickView>();
    // The popover is above ordinary windows, and this must not open behind it.
    view_->setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                    Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setInitialProperties(screen.properties);
    view_->setSource(screen.url);
    if (QQuickItem* root = view_->rootObject()) {
        const auto follow = [this] { takeSize(); };
        QObject::connect(root, &QQuickItem::implicitWidthChanged, &followers_, follow);
        QObject::connect(root, &QQuickItem::implicitHeightChanged, &followers_, follow);
        takeSize();
        view_->setTitle(root->property("title").toString());
        root->setFocus(true);
    }
    QObject::connect(view_.get(), &QWindow::visibleChanged, &followers_, [this](bool isVisible) {
        if (!isVisible) {
            letGo();
        }
    });
}

/// It is deleted once it has come back from its own events.
void ScreenWindow::letGo() {
    if (QQuickView* const view = view_.release()) {
        view->deleteLater();
    }
}

void ScreenWindow::takeSize() {
    if (!view_) {
        return; // it goes, and what is in it
    }
    const QQuickItem& root = *view_->rootObject();
    const QSize size = QSizeF(root.implicitWidth(), root.implicitHeight()).toSize();
    view_->setMinimumSize(size);
    view_->setMaximumSize(size);
    view_->resize(size);
}

} // namespace quillon
