#include "Platform/Linux/x11/PointerWatch.h"

#include <utility>

#include <xcb/xcbext.h>

namespace quillon {

namespace {

/// Categories of a RECORD reply: what came from a device, and the end of the data.
constexpr std::uint8_t fromServer = 0;
constexpr std::uint8_t endOfData = 5;

/// The context that reports pointer motion, made on the connection that will read it.
bool createMotionContext(const X11Connection& connection, xcb_record_context_t context) {
    xcb_record_range_t range{};
    range.device_events.first = XCB_MOTION_NOTIFY;
    range.device_events.last = XCB_MOTION_NOTIFY;
    const xcb_record_client_spec_t everyClient = XCB_RECORD_CS_ALL_CLIENTS;
    const XcbOwned<xcb_generic_error_t> refused(xcb_request_check(
        connection.get(), xcb_record_create_context_checked(connection.get(), context, 0, 1, 1,
                                                            &everyClient, &range)));
    return refused == nullptr;
}

} // namespace

std::unique_ptr<PointerWatch> PointerWatch::start() {
    auto connection = X11Connection::open();
    if (!connection || !connection->hasExtension(&xcb_record_id)) {
        return nullptr;
    }
    const xcb_record_context_t context = xcb_generate_id(connection->get());
    if (!createMotionContext(*connection, context)) {
        return nullptr;
    }
    const auto enabled = xcb_record_enable_context(connection->get(), context);
    xcb_flush(connection->get());
    return std::unique_ptr<PointerWatch>(new PointerWatch(std::move(connection), enabled.sequence));
}

bool PointerWatch::drain() {
    bool moved = false;
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (!ended_ && xcb_poll_for_reply(connection_->get(), sequence_, &reply, &error) == 1) {
        const XcbOwned<xcb_record_enable_context_reply_t> data(
            static_cast<xcb_record_enable_context_reply_t*>(reply));
        const XcbOwned<xcb_generic_error_t> failure(error);
        ended_ = !data || data->category == endOfData;
        moved = moved || (data && data->category == fromServer);
    }
    return moved;
}

} // namespace quillon
