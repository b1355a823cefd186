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
    auto raw = X11Connection::open();
    if (!raw) {
        return nullptr;
    }
    auto watch = std::unique_ptr<PointerWatch>(new PointerWatch(std::move(raw)));
    watch->selectRawEvents();
    watch->startRecording();
    return watch;
}

void PointerWatch::selectRawEvents() {
    if (!raw_->hasExtension(&xcb_input_id)) {
        return;
    }
    // From version 2.1 on raw events arrive also while another program has grabbed the pointer.
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        raw_->get(), xcb_input_xi_query_version(raw_->get(), 2, 3), nullptr));
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask =
            XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    } selection;
    xcb_input_xi_select_events(raw_->get(), raw_->root(), 1, &selection.head);
    xcb_flush(raw_->get());
}

void PointerWatch::startRecording() {
    record_ = X11Connection::open();
    if (!record_ || !record_->hasExtension(&xcb_record_id)) {
        record_.reset();
        return;
    }
    xcb_connection_t* connection = record_->get();
    const xcb_record_context_t context = xcb_generate_id(connection);
    xcb_record_range_t range{};
    range.device_events.first = XCB_MOTION_NOTIFY;
    range.device_events.last = XCB_MOTION_NOTIFY;
    const xcb_record_client_spec_t everyClient = XCB_RECORD_CS_ALL_CLIENTS;
    const XcbOwned<xcb_generic_error_t> refused(
        xcb_request_check(connection, xcb_record_create_context_checked(connection, context, 0, 1,
                                                                        1, &everyClient, &range)));
    if (refused) {
        record_.reset();
        return;
    }
    recording_ = xcb_record_enable_context(connection, context).sequence;
    xcb_flush(connection);
}

std::array<int, 2> PointerWatch::descriptors() const {
    return {raw_->descriptor(), record_ ? record_->descriptor() : -1};
}

bool PointerWatch::drain() {
    const bool raw = drainRaw();
    return drainRecord() || raw;
}

bool PointerWatch::drainRaw() {
    bool moved = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(raw_->get())}) {
        if (event->response_type == XCB_GE_GENERIC) {
            moved = true;
            lastMover_ = reinterpret_cast<const xcb_input_raw_motion_event_t&>(*event).sourceid;
        }
    }
    return moved;
}

bool PointerWatch::drainRecord() {
    bool moved = false;
    // Of changes of the keyboard every client is told.
    while (record_ && XcbOwned<xcb_generic_event_t>(xcb_poll_for_event(record_->get()))) {
    }
    while (record_) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(record_->get(), recording_, &reply, &error) == 0) {
            break;
        }
        const XcbOwned<xcb_record_enable_context_reply_t> data(
            static_cast<xcb_record_enable_context_reply_t*>(reply));
        const XcbOwned<xcb_generic_error_t> failure(error);
        if (!data || data->category == endOfData) {
            record_.reset();
        }
        moved = moved || (data && data->category == fromServer);
    }
    return moved;
}

} // namespace quillon
