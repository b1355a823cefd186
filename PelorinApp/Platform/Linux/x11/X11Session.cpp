#include "Platform/Linux/x11/X11Session.h"

#include <QAbstractEventDispatcher>

#include <utility>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace quillon {

namespace {

bool showsInput(const X11Connection& connection) {
    if (!connection.hasExtension(&xcb_input_id)) {
        return false;
    }
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 3), nullptr));
    return version && (version->major_version > 2 ||
                       (version->major_version == 2 && version->minor_version >= 1));
}

} // namespace

X11Session::X11Session(Diagnostics& diagnostics, X11Displays& displays, std::function<void()> lost)
    : diagnostics_(diagnostics), displays_(displays), lost_(std::move(lost)) {}

bool X11Session::isProcessTrusted() {
    if (!connection_) {
        connect();
    }
    return isGranted();
}

void X11Session::connect() {
    connection_ = X11Connection::open();
    if (!connection_) {
        say("⚠️ No X server to be reached; waiting for one");
        return;
    }
    extensions_ = {showsInput(*connection_), connection_->hasExtension(&xcb_test_id)};
    if (!isGranted()) {
        say("⚠️ The X server does not grant input control (XInput 2.1 and XTEST); nothing is "
            "held");
    }
    displays_.follow(*connection_);
    notifier_ = std::make_unique<QSocketNotifier>(connection_->descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
    // Round trips can bring events in behind the notifier's back.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     notifier_.get(), [this] {
                         while (const XcbOwned<xcb_generic_event_t> event{
                             xcb_poll_for_queued_event(connection_->get())}) {
                             displays_.handleEvent(*event);
                         }
                     });
    if (isGranted() && said_ != nullptr) {
        say("✅ The X server grants input control");
    }
}

void X11Session::readEvents() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        displays_.handleEvent(*event);
    }
    if (connection_->isBroken()) {
        notifier_->setEnabled(false);
        extensions_ = {};
        lost_();
    }
}

void X11Session::say(const char* text) {
    if (std::exchange(said_, text) != text) {
        diagnostics_.line(text);
    }
}

} // namespace quillon
