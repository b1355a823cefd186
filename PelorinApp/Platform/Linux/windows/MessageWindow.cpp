#include "Platform/Linux/windows/MessageWindow.h"

#include "Platform/Linux/windows/ShellTexts.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

constexpr int cascade = 28;
constexpr int narrowestText = 280;

QMessageBox::Icon icon(AlertStyle style) {
    switch (style) {
    case AlertStyle::informational:
        return QMessageBox::Information;
    case AlertStyle::warning:
        return QMessageBox::Warning;
    case AlertStyle::critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

bool isTaken(QPoint corner) {
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&](const QWidget* window) {
        return window->isVisible() && window->inherits("QMessageBox") &&
               (window->pos() - corner).manhattanLength() < cascade;
    });
}

/// A little above the middle of the pointer's screen, off other messages.
QPoint freePlace(QSize size) {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen == nullptr) {
        return {};
    }
    const QRect area = screen->availableGeometry();
    QPoint corner(area.x() + (area.width() - size.width()) / 2,
                  area.y() + (area.height() - size.height()) * 2 / 5);
    const QPoint last = area.bottomRight() - QPoint(size.width(), size.height());
    while (isTaken(corner) && corner.x() < last.x() && corner.y() < last.y()) {
        corner += QPoint(cascade, cascade);
    }
    return corner;
}

} // namespace

MessageWindow::MessageWindow(Message message, std::function<std::uint32_t()> inputTime)
    : manager_(std::move(inputTime)),
      box_(new QMessageBox(icon(message.style), QStringLiteral("Quillon"),
                           translated(message.messageText))) {
    box_->setTextFormat(Qt::PlainText);
    box_->setInformativeText(translated(message.informativeText));
    box_->setWindowModality(message.isModal ? Qt::ApplicationModal : Qt::NonModal);
    // The popover is above ordinary windows, and a message must not open behind it.
    box_->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    emphasizeMessage();
    if (message.buttons.empty()) {
        message.buttons.push_back({"OK", {}});
    }
    addButtons(message.buttons);

    box_->ensurePolished();
    box_->adjustSize();
    box_->move(freePlace(box_->size()));
    box_->winId(); // makes the window
    manager_.markAccessory(*box_->windowHandle());
    manager_.show(*box_->windowHandle(), [this] { box_->show(); });
    manager_.confirmAccessory(*box_->windowHandle());
}

MessageWindow::~MessageWindow() {
    box_->disconnect();
    box_->hide();
    box_->deleteLater();
}

void MessageWindow::emphasizeMessage() {
    if (auto* label = box_->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        label->setMinimumWidth(narrowestText);
    }
}

void MessageWindow::addButtons(const std::vector<MessageButton>& buttons) {
    std::vector<std::pair<const QAbstractButton*, std::function<void()>>> actions;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const bool isLast = i + 1 == buttons.size();
        // An ampersand would underline what follows it.
        QPushButton* button = box_->addButton(
            translated(buttons[i].text).replace(QLatin1Char('&'), QLatin1String("&&")),
            isLast && i > 0 ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        if (i == 0) {
            box_->setDefaultButton(button);
        }
        if (isLast) {
            box_->setEscapeButton(button);
        }
        actions.emplace_back(button, buttons[i].pressed);
    }
    QObject::connect(box_, &QMessageBox::finished, box_, [box = box_, actions] {
        const auto clicked = std::find_if(actions.begin(), actions.end(), [&](const auto& one) {
            return one.first == box->clickedButton();
        });
        // A copy: what it does may destroy this function.
        const auto pressed = clicked == actions.end() ? actions.back().second : clicked->second;
        if (pressed) {
            pressed();
        }
    });
}

void MessageWindow::raise() {
    box_->raise();
    manager_.activate(*box_->windowHandle());
}

} // namespace quillon
