#include "Platform/View.h"

#include <utility>

namespace quillon {

View::~View() {
    for (const auto& view : subviews_) {
        view->superview_ = nullptr;
    }
}

void View::setFrame(const Rect& frame) {
    if (std::exchange(frame_, frame) != frame) {
        setNeedsDisplay();
    }
}

void View::setAlphaValue(double alpha) {
    if (std::exchange(alphaValue_, alpha) != alpha) {
        setNeedsDisplay();
    }
}

void View::setToolTip(std::string text) {
    if (text != toolTip_) {
        toolTip_ = std::move(text);
        if (ViewHost* host = outermostHost()) {
            host->toolTipChanged();
        }
    }
}

void View::addSubview(std::shared_ptr<View> view) {
    view->superview_ = this;
    subviews_.push_back(std::move(view));
    setNeedsDisplay();
}

void View::setHost(ViewHost* host) { host_ = host; }

std::optional<Rect> View::onScreen() const {
    double left = 0;
    double top = 0;
    const View* view = this;
    for (; view->superview_ != nullptr; view = view->superview_) {
        left += view->frame_.x;
        top += view->frame_.y;
    }
    const auto root = view->host_ == nullptr ? std::nullopt : view->host_->rootOnScreen();
    if (!root || view == this) {
        return root;
    }
    const Rect own = bounds();
    return Rect{root->minX() + left, root->maxY() - top - own.height, own.width, own.height};
}

void View::setNeedsDisplay() {
    if (ViewHost* host = outermostHost()) {
        host->viewChanged();
    }
}

ViewHost* View::outermostHost() const {
    const View* view = this;
    while (view->superview_ != nullptr) {
        view = view->superview_;
    }
    return view->host_;
}

void View::draw(DrawingContext& /*context*/) const {}

} // namespace quillon
