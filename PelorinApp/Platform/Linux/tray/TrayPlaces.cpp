#include "Platform/Linux/tray/TrayPlaces.h"

namespace quillon {

namespace {
constexpr double patienceSeconds = 3.0; // panels take their time at login
} // namespace

TrayPlaces::TrayPlaces(const TrayContext& context, TrayContent& content, double length)
    : context_(context), screen_(context, *this),
      tray_(context.runLoop, screen_, content, length, [this] { choose(); }),
      watcher_(context, [this] { choose(); }),
      notifier_(context.runLoop, watcher_, screen_, content) {
    choose();
}

TrayPlaces::~TrayPlaces() {
    if (telling_) {
        telling_->cancel();
    }
}

void TrayPlaces::setVisible(bool visible) {
    if (isVisible_ != visible) {
        isVisible_ = visible;
        tray_.setVisible(visible);
        choose();
    }
}

void TrayPlaces::contentChanged() {
    tray_.contentChanged();
    notifier_.contentChanged();
}

void TrayPlaces::handleEvent(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7FU) == XCB_PROPERTY_NOTIFY &&
        reinterpret_cast<const xcb_property_notify_event_t&>(event).atom ==
            screen_.atoms().clientList) {
        notifier_.samplePanel(); // a panel may be among the windows that came
    }
    tray_.handleEvent(event);
}

const TrayPlace& TrayPlaces::place() const {
    return tray_.hasTray() ? static_cast<const TrayPlace&>(tray_) : notifier_;
}

void TrayPlaces::choose() {
    notifier_.setOffered(isVisible_ && !tray_.hasTray());
    const bool isThere = tray_.hasTray() || watcher_.isThere();
    if (!isThere) {
        tellSoon();
        return;
    }
    if (telling_) {
        telling_->cancel();
        telling_.reset();
    }
    if (saidNone_) {
        saidNone_ = false;
        context_.diagnostics.line("✅ The tray is there");
    }
}

void TrayPlaces::tellSoon() {
    if (telling_ || saidNone_) {
        return;
    }
    telling_ = context_.runLoop.asyncAfter(patienceSeconds, [this] {
        telling_.reset();
        saidNone_ = true;
        context_.diagnostics.line(
            "⚠️ No tray on this desktop; start Quillon again to open its hub");
    });
}

} // namespace quillon
