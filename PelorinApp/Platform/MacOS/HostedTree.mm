#include "Platform/MacOS/HostedTree.h"

#include "Platform/MacOS/HostedView.h"
#include "Platform/MacOS/NativeLooks.h"
#include "Platform/MacOS/NativeText.h"

#include <utility>

namespace quillon {

namespace {

/// Whether it is another value now.
template <class Value>
bool take(std::optional<Value>& known, const Value& value) {
    return std::exchange(known, value) != value;
}

} // namespace

HostedTree::HostedTree(std::shared_ptr<View> root, NativeViews& views)
    : views_(views), root_(hosted(std::move(root))) {
    begin();
}

HostedTree::HostedTree(std::shared_ptr<Button> root, NSButton* native, NativeViews& views)
    : views_(views) {
    root_.button = std::make_unique<NativeButton>(*root, native);
    root_.view = std::move(root);
    root_.native = native;
    root_.isHosted = false;
    begin();
}

HostedTree::~HostedTree() {
    root_.view->setHost(nullptr);
    letGo(root_);
}

void HostedTree::begin() {
    views_.add(*root_.view, root_.native);
    root_.view->setHost(this);
    update(root_);
}

HostedTree::Node HostedTree::hosted(std::shared_ptr<View> view) {
    Node node;
    if (auto* const button = dynamic_cast<Button*>(view.get())) {
        QuillonHostedButton* const native =
            [[QuillonHostedButton alloc] initWithFrame:nativeRect(view->frame())];
        [native setShownView:view.get()];
        node.native = native;
        node.button = std::make_unique<NativeButton>(*button, native);
    } else {
        QuillonHostedView* const native =
            [[QuillonHostedView alloc] initWithFrame:nativeRect(view->frame())];
        [native setShownView:view.get()];
        node.native = native;
    }
    node.view = std::move(view);
    return node;
}

/// Each change is told as it happens. One that is none of what the system keeps is one of what the
/// views draw.
void HostedTree::viewChanged() {
    if (!update(root_)) {
        drawAgain(root_);
    }
}

void HostedTree::drawAgain(const Node& node) {
    [node.native setNeedsDisplay:YES];
    for (const auto& one : node.within) {
        drawAgain(*one);
    }
}

bool HostedTree::update(Node& node) {
    bool changed = updateWithin(node);
    if (node.isHosted && take(node.frame, node.view->frame())) {
        [node.native setFrame:nativeRect(node.view->frame())];
        changed = true;
    }
    // What the system has made it may also have changed: that is set again each time.
    const bool hasOtherAlpha = take(node.alpha, node.view->alphaValue());
    if (hasOtherAlpha || !node.isHosted) {
        [node.native setAlphaValue:node.view->alphaValue()];
    }
    const bool hasOtherToolTip = take(node.toolTip, node.view->toolTip());
    if (hasOtherToolTip || !node.isHosted) {
        [node.native
            setToolTip:node.view->toolTip().empty() ? nil : nativeText(node.view->toolTip())];
    }
    return (node.button && node.button->update()) || hasOtherAlpha || hasOtherToolTip || changed;
}

bool HostedTree::updateWithin(Node& node) {
    bool changed = false;
    const auto& views = node.view->subviews();
    while (node.within.size() < views.size()) {
        node.within.push_back(std::make_unique<Node>(hosted(views[node.within.size()])));
        Node& added = *node.within.back();
        views_.add(*added.view, added.native);
        [node.native addSubview:added.native];
    }
    for (const auto& one : node.within) {
        changed = update(*one) || changed;
    }
    return changed;
}

void HostedTree::letGo(Node& node) {
    views_.remove(*node.view);
    if (node.isHosted) {
        // Somebody of the system's may hold it for longer.
        if (node.button) {
            [static_cast<QuillonHostedButton*>(node.native) setShownView:nullptr];
        } else {
            [static_cast<QuillonHostedView*>(node.native) setShownView:nullptr];
        }
    }
    for (const auto& one : node.within) {
        letGo(*one);
    }
}

std::optional<Rect> HostedTree::rootOnScreen() const {
    NSWindow* const window = [root_.native window];
    if (window == nil) {
        return std::nullopt;
    }
    return rectOf([window convertRectToScreen:[root_.native convertRect:[root_.native bounds]
                                                                 toView:nil]]);
}

} // namespace quillon
