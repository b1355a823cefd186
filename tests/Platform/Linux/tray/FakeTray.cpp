#include "Platform/Linux/tray/FakeTray.h"

#include "Platform/Linux/tray/PanelWindows.h"

#include <array>
#include <stdexcept>

namespace quillon {

xcb_visualid_t alphaVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        if (depth.data->depth == 32) {
            return xcb_depth_visuals_iterator(depth.data).data->visual_id;
        }
    }
    throw std::runtime_error("no visual with alpha");
}

FakeTray::FakeTray(const Settings& settings)
    : settings_(settings), panel_(xcb_generate_id(connection_->get())),
      owner_(xcb_generate_id(connection_->get())) {
    xcb_connection_t* const x = connection_->get();
    const auto& place = settings.panel;
    const std::array<std::uint32_t, 2> look{settings.ground, 1};
    xcb_create_window(
        x, XCB_COPY_FROM_PARENT, panel_, connection_->root(), static_cast<std::int16_t>(place.x),
        static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
        static_cast<std::uint16_t>(place.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, look.data());
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, panel_, atoms_.windowType, XCB_ATOM_ATOM, 32, 1,
                        &atoms_.dockType);
    xcb_map_window(x, panel_);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, owner_, connection_->root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (settings.hasAlpha) {
        const xcb_visualid_t visual = alphaVisual(connection_->screen());
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, owner_, atoms_.visual, XCB_ATOM_VISUALID, 32,
                            1, &visual);
    }
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, owner_, atoms_.orientation, XCB_ATOM_CARDINAL, 32,
                        1, &settings.orientation);
    if (!settings.colors.empty()) {
        setColors(settings.colors);
    }
    xcb_set_selection_owner(x, owner_, atoms_.selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = connection_->root();
    message.type = atoms_.manager;
    message.data.data32[1] = atoms_.selection;
    message.data.data32[2] = owner_;
    xcb_send_event(x, 0, connection_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    connection_->sync();
}

FakeTray::~FakeTray() {
    if (item_ != XCB_NONE) {
        xcb_reparent_window(connection_->get(), item_, connection_->root(), 0, 0);
    }
    xcb_destroy_window(connection_->get(), panel_);
    xcb_destroy_window(connection_->get(), owner_);
    connection_->sync();
}

bool FakeTray::hasItem() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        handle(*event);
    }
    return item_ != XCB_NONE;
}

void FakeTray::dockItem() {
    while (item_ == XCB_NONE) {
        const XcbOwned<xcb_generic_event_t> event(xcb_wait_for_event(connection_->get()));
        if (!event) {
            throw std::runtime_error("the X server is gone");
        }
        handle(*event);
    }
}

void FakeTray::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7FU) != XCB_CLIENT_MESSAGE) {
        return;
    }
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == atoms_.opcode && message.data.data32[1] == 0) {
        item_ = message.data.data32[2];
        ++taken_;
        xcb_reparent_window(connection_->get(), item_, panel_, 0, 0);
        moveItem(settings_.item);
        xcb_map_window(connection_->get(), item_);
        connection_->sync();
    }
}

void FakeTray::throwOut(bool destroyed) const {
    if (destroyed) {
        xcb_destroy_window(connection_->get(), item_);
    } else {
        xcb_reparent_window(connection_->get(), item_, connection_->root(), 0, 0);
    }
    connection_->sync();
}

void FakeTray::giveUp() const {
    xcb_set_selection_owner(connection_->get(), XCB_NONE, atoms_.selection, XCB_CURRENT_TIME);
    throwOut(false);
}

void FakeTray::moveItem(const PixelRect& place) {
    const std::array<std::uint32_t, 4> values{
        static_cast<std::uint32_t>(place.x), static_cast<std::uint32_t>(place.y),
        static_cast<std::uint32_t>(place.width), static_cast<std::uint32_t>(place.height)};
    xcb_configure_window(connection_->get(), item_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    connection_->sync();
}

void FakeTray::setGround(std::uint32_t ground) const {
    xcb_change_window_attributes(connection_->get(), panel_, XCB_CW_BACK_PIXEL, &ground);
    xcb_clear_area(connection_->get(), 0, panel_, 0, 0, 0, 0);
    connection_->sync();
}

void FakeTray::setColors(const std::vector<std::uint32_t>& colors) {
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, owner_, atoms_.colors,
                        XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(colors.size()),
                        colors.data());
    connection_->sync();
}

QImage FakeTray::itemPixels() const {
    const auto place = placeOf(*connection_, item_);
    if (!place) {
        return {};
    }
    const auto width = static_cast<std::uint16_t>(place->width);
    const auto height = static_cast<std::uint16_t>(place->height);
    const XcbOwned<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection_->get(),
                            xcb_get_image(connection_->get(), XCB_IMAGE_FORMAT_Z_PIXMAP, item_, 0,
                                          0, width, height, ~0U),
                            nullptr));
    if (!reply) {
        return {};
    }
    return QImage(xcb_get_image_data(reply.get()), width, height, 4 * width,
                  reply->depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32)
        .copy();
}

bool FakeTray::exists(xcb_window_t window) const {
    return placeOf(*connection_, window).has_value();
}

} // namespace quillon
