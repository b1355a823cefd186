#include "Platform/Linux/x11/PointerWatch.h"

#include <utility>

#include <xcb/record.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>

namespace quillon {

namespace {

/// Categories of a RECORD reply: what came from a device, and the end of the data.
constexpr std::uint8_t fromServer = 0;
constexpr std::uint8_t endOfData = 5;

} // namespace

std::unique_ptr<PointerWatch> PointerWatch::start() {
    auto connection = X11Connection::open();
    if (!connection) {
        return nullptr;
    }
    auto watch = std::unique_ptr<PointerWatch>(new PointerWatch(std::move(connection)));
    watch->selectRawMotion();
    watch->startRecording(); // last: from then on the server takes no requests here
    xcb_flush(watch->connection_->get());
    return watch;
}

void PointerWatch::selectRawMotion() {
    if (!connection_->hasExtension(&xcb_input_id)) {
        return;
    }
    xcb_connection_t* connection = connection_->get();
    // From version 2.1 on raw events arrive also while another program has grabbed the pointer.
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, 2, 3), nullptr));
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    } selection;
    xcb_input_xi_select_events(connection, connection_->root(), 1, &selection.head);
}

void PointerWatch::startRecording() {
    if (!connection_->hasExtension(&xcb_record_id)) {
        return;
    }
    xcb_connection_t* connection = connection_->get();
    const xcb_record_context_t context = xcb_generate_id(connection);
    xcb_record_range_t range{};
    range.device_events.first = XCB_MOTION_NOTIFY;
    range.device_events.last = XCB_MOTION_NOTIFY;
    const xcb_record_client_spec_t everyClient = XCB_RECORD_CS_ALL_CLIENTS;
    const XcbOwned<xcb_generic_error_t> refused(
        xcb_request_check(connection, xcb_record_create_context_checked(connection, context, 0, 1,
                                                                        1, &everyClient, &range)));
    if (!refused) {
        recording_ = xcb_record_enable_context(connection, context).sequence;
    }
}

bool PointerWatch::drain() {
    // Asking for the one kind reads the other kind in, too: what lies in xcb's queues afterwards
    // would wake nobody.
    bool moved = false;
    for (;;) {
        const bool raw = drainEvents(xcb_poll_for_event);
        const bool recorded = drainRecord();
        const bool queued = drainEvents(xcb_poll_for_queued_event);
        if (!raw && !recorded && !queued) {
            return moved;
        }
        moved = true;
    }
}

bool PointerWatch::drainEvents(xcb_generic_event_t* (*next)(xcb_connection_t*)) {
    bool any = false;
    while (const XcbOwned<xcb_generic_event_t> event{next(connection_->get())}) {
        any = any || event->response_type == XCB_GE_GENERIC;
    }
    return any;
}

bool PointerWatch::drainRecord() {
    bool moved = false;
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (recording_ && xcb_poll_for_reply(connection_->get(), *recording_, &reply, &error) == 1) {
        const XcbOwned<xcb_record_enable_context_reply_t> data(
            static_cast<xcb_record_enable_context_reply_t*>(reply));
        const XcbOwned<xcb_generic_error_t> failure(error);
        if (!data || data->category == endOfData) {
            recording_.reset();
        }
        moved = moved || (data && data->category == fromServer);
    }
    return moved;
}

} // namespace quillon
