#include "Platform/Linux/tray/HoverToolTip.h"

#include "Platform/Linux/windows/ShellTexts.h"
#include "Platform/Linux/windows/ToolkitScreens.h"

#include <QApplication>
#include <QToolTip>

#include <utility>

namespace quillon {

namespace {

constexpr double hoverSeconds = 0.7;

bool hasToolTips() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

} // namespace

HoverToolTip::HoverToolTip(RunLoop& runLoop, std::function<std::string()> text,
                           std::function<std::optional<QPoint>()> pointer)
    : runLoop_(runLoop), text_(std::move(text)), pointer_(std::move(pointer)) {}

HoverToolTip::~HoverToolTip() { dismiss(); }

void HoverToolTip::pointerEntered() {
    dismiss();
    waiting_ = runLoop_.asyncAfter(hoverSeconds, [this] { show(); });
}

void HoverToolTip::dismiss() {
    if (waiting_) {
        waiting_->cancel();
        waiting_.reset();
    }
    if (isShown()) {
        QToolTip::hideText();
    }
    shown_.clear();
}

void HoverToolTip::textChanged() {
    if (isShown() && translated(text_()) != shown_) {
        show();
    }
}

void HoverToolTip::show() {
    waiting_.reset();
    const auto pointer = pointer_();
    if (!hasToolTips() || !pointer) {
        return;
    }
    shown_ = translated(text_());
    QToolTip::showText(toToolkit({pointer->x(), pointer->y()}),
                       shown_); // hides it when there is no text
}

bool HoverToolTip::isShown() const {
    return !shown_.isEmpty() && hasToolTips() && QToolTip::isVisible() &&
           QToolTip::text() == shown_;
}

} // namespace quillon
