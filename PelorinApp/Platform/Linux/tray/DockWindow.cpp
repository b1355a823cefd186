#include "Platform/Linux/tray/DockWindow.h"

#include <array>
#include <string_view>
#include <utility>

namespace quillon {

namespace {

constexpr std::uint32_t requestDockOpcode = 0;
constexpr std::uint32_t embedMapped = 1;

/// The layout of WM_NORMAL_HINTS.
struct SizeHints {
    std::uint32_t flags = 0;
    std::array<std::uint32_t, 4> obsolete{};
    std::uint32_t minWidth = 0;
    std::uint32_t minHeight = 0;
    std::array<std::uint32_t, 8> unused{};
    std::uint32_t baseWidth = 0;
    std::uint32_t baseHeight = 0;
    std::uint32_t gravity = 0;
};
constexpr std::uint32_t programMinSize = 1U << 4U;
constexpr std::uint32_t programBaseSize = 1U << 8U;

void setText(const X11Connection& connection, xcb_window_t window, xcb_atom_t property,
             xcb_atom_t type, std::string_view value) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(value.size()), value.data());
}

} // namespace

DockWindow::DockWindow(const X11Connection& connection, const TrayAtoms& atoms,
                       const TrayManager& manager, QSize size)
    : connection_(connection), atoms_(atoms), manager_(manager),
      colormap_(xcb_generate_id(connection.get())), window_(xcb_generate_id(connection.get())) {
    xcb_connection_t* const x = connection.get();
    xcb_create_colormap(x, XCB_COLORMAP_ALLOC_NONE, colormap_, connection.root(), manager.visual);
    const std::array<std::uint32_t, 4> values{
        0, 0,
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS |
            XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW |
            XCB_EVENT_MASK_LEAVE_WINDOW,
        colormap_};
    xcb_create_window(x, manager.depth, window_, connection.root(), 0, 0,
                      static_cast<std::uint16_t>(size.width()),
                      static_cast<std::uint16_t>(size.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      manager.visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    const std::array<std::uint32_t, 2> info{0, embedMapped};
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, atoms.embedInfo, atoms.embedInfo, 32,
                        info.size(), info.data());
    setText(connection, window_, atoms.windowName, atoms.utf8String, "Quillon");
    setText(connection, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, "Quillon");
    using namespace std::string_view_literals;
    setText(connection, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, "quillon\0Quillon\0"sv);
    setLeastSize(size);
}

DockWindow::~DockWindow() {
    xcb_destroy_window(connection_.get(), window_);
    xcb_free_colormap(connection_.get(), colormap_);
    xcb_flush(connection_.get());
}

void DockWindow::requestDock() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = manager_.owner;
    message.type = atoms_.opcode;
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDockOpcode;
    message.data.data32[2] = window_;
    xcb_send_event(connection_.get(), 0, manager_.owner, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.get());
}

void DockWindow::requestSize(QSize size) {
    const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width()),
                                              static_cast<std::uint32_t>(size.height())};
    xcb_configure_window(connection_.get(), window_,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    xcb_flush(connection_.get());
}

void DockWindow::setLeastSize(QSize size) {
    if (std::exchange(leastSize_, size) == size) {
        return; // trays lay themselves out anew when it is set
    }
    const auto width = static_cast<std::uint32_t>(size.width());
    const auto height = static_cast<std::uint32_t>(size.height());
    const SizeHints hints{.flags = programMinSize | programBaseSize,
                          .minWidth = width,
                          .minHeight = height,
                          .baseWidth = width,
                          .baseHeight = height};
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, sizeof hints / sizeof(std::uint32_t), &hints);
    xcb_flush(connection_.get());
}

void DockWindow::setPicture(const QImage& picture) {
    xcb_connection_t* const x = connection_.get();
    const QImage pixels =
        picture.convertToFormat(manager_.hasAlpha()    ? QImage::Format_ARGB32_Premultiplied
                                : manager_.depth == 16 ? QImage::Format_RGB16
                                                       : QImage::Format_RGB32);
    const auto width = static_cast<std::uint16_t>(pixels.width());
    const auto height = static_cast<std::uint16_t>(pixels.height());
    const xcb_pixmap_t pixmap = xcb_generate_id(x);
    const xcb_gcontext_t context = xcb_generate_id(x);
    xcb_create_pixmap(x, manager_.depth, pixmap, window_, width, height);
    xcb_create_gc(x, context, pixmap, 0, nullptr);
    xcb_put_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0,
                  manager_.depth, static_cast<std::uint32_t>(pixels.sizeInBytes()),
                  pixels.constBits());
    xcb_change_window_attributes(x, window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(x, 0, window_, 0, 0, 0, 0);
    xcb_free_gc(x, context);
    xcb_free_pixmap(x, pixmap);
    xcb_flush(x);
}

} // namespace quillon
