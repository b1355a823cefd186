#include "Platform/Linux/windows/MenuWidget.h"

#include "Platform/Linux/windows/ShellTexts.h"

#include "Platform/Linux/x11/X11Connection.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>

#include <chrono>

namespace quillon {

namespace {

constexpr std::chrono::milliseconds retryInterval{10};
constexpr std::chrono::milliseconds longestWait{3000};

/// Whether the toolkit will get the pointer for a menu; it does not say so itself.
bool isPointerFree() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return true;
    }
    xcb_connection_t* connection = x11->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const XcbOwned<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        connection,
        xcb_grab_pointer(connection, 0, root, XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    const bool taken = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    if (taken) {
        xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    }
    return taken;
}

/// An ampersand would underline what follows it.
QString plain(QString title) { return title.replace(QLatin1Char('&'), QLatin1String("&&")); }

void perform(const std::shared_ptr<MenuItem>& item) {
    const auto action = item->action.perform; // a copy: what it does may replace it
    if (action) {
        action(item.get());
    }
}

} // namespace

MenuWidget::MenuWidget(const Menu& menu) {
    for (const auto& item : menu.items) {
        add(item);
    }
    retry_.setInterval(retryInterval);
    connect(&retry_, &QTimer::timeout, this, &MenuWidget::openWhenPointerIsFree);
}

void MenuWidget::add(const std::shared_ptr<MenuItem>& item) {
    if (item->isSeparator) {
        addSeparator();
        return;
    }
    QAction* action = addAction(plain(translated(item->title)));
    action->setEnabled(item->isEnabled);
    action->setCheckable(item->hasCheckMark);
    action->setChecked(item->hasCheckMark);
    if (!item->keyEquivalent.empty()) {
        action->setShortcut(
            QStringLiteral("Ctrl+%1").arg(QString::fromStdString(item->keyEquivalent).toUpper()));
        // Its key counts while the menu is open only, see keyPressEvent.
        action->setShortcutContext(Qt::WidgetShortcut);
    }
    // By the queue, so that the menu is closed and has given back pointer and keyboard; not by the
    // menu, which may be replaced by then.
    connect(
        action, &QAction::triggered, qApp, [item] { perform(item); }, Qt::QueuedConnection);
}

void MenuWidget::openAt(QPoint corner) {
    corner_ = corner;
    waiting_.start();
    openWhenPointerIsFree();
}

void MenuWidget::openWhenPointerIsFree() {
    if (!isPointerFree() && !waiting_.hasExpired(longestWait.count())) {
        retry_.start();
        return;
    }
    retry_.stop();
    popup(corner_);
}

void MenuWidget::keyPressEvent(QKeyEvent* event) {
    const QKeySequence pressed(event->modifiers().toInt() | event->key());
    for (QAction* action : actions()) {
        if (!action->shortcut().isEmpty() && action->shortcut() == pressed) {
            if (action->isEnabled()) {
                close();
                action->trigger();
            }
            return;
        }
    }
    QMenu::keyPressEvent(event);
}

} // namespace quillon
