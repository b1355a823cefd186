#pragma once

#include "Platform/Linux/x11/X11Connection.h"
#include "Platform/Linux/x11/X11Displays.h"
#include "Platform/View.h"
#include "support/MessageBus.h"
#include "support/TemporaryFolder.h"
#include "support/XProgram.h"
#include "support/XServer.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

inline constexpr xcb_keysym_t returnKey = 0xFF0D;
inline constexpr xcb_keysym_t escapeKey = 0xFF1B;

/// Something on the screen that a popover or menu belongs to.
struct AnchorView final : View, ViewHost {
    std::optional<Rect> place;

    explicit AnchorView(std::optional<Rect> where = std::nullopt) : place(where) { setHost(this); }
    void viewChanged() override {}
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return place; }
};

/// A desktop of its own, seen by another program: an X server, and the toolkit on it.
struct WindowsFixture {
    /// `resources` are the X resources that the desktop has set; `managerProgram` is a window
    /// manager's, empty for none; `command` is run before the toolkit comes.
    explicit WindowsFixture(const std::string& resources = {},
                            const std::string& managerProgram = {},
                            const std::string& command = "true");

    [[nodiscard]] xcb_atom_t atom(std::string_view name) const { return other->atom(name); }
    [[nodiscard]] bool isMapped(xcb_window_t window) const;

    /// In pixels of the root.
    [[nodiscard]] PixelRect frame(xcb_window_t window) const;

    [[nodiscard]] xcb_window_t focus() const;
    [[nodiscard]] bool hasState(xcb_window_t window, std::string_view state) const;

    /// As many as there are in its bounding shape.
    [[nodiscard]] int shapeRectangles(xcb_window_t window) const;

    void press(xcb_keysym_t key, xcb_keysym_t modifier = 0) const;
    void movePointer(int x, int y) const;
    void button(std::uint8_t type, std::uint8_t number = 1) const;
    void click(int x, int y) const;

    /// A window of the other program, managed, with the keyboard.
    [[nodiscard]] xcb_window_t openOtherWindow(const std::string& title = "other") const;

    XServer server;
    std::unique_ptr<X11Connection> other = X11Connection::open();
    std::unique_ptr<XProgram> manager;
    std::unique_ptr<QApplication> application;
    X11Displays displays;

  private:
    [[nodiscard]] bool managerAnswers() const;
    [[nodiscard]] xcb_window_t makeWindow(const std::string& title) const;
    void key(std::uint8_t type, xcb_keysym_t symbol) const;

    TemporaryFolder folder_;
    std::optional<MessageBus> bus_; // for a window manager that wants one
    std::unique_ptr<X11Connection> following_;
    int argc_ = 1;
    std::string name_ = "windows";
    std::vector<char*> argv_{name_.data(), nullptr};
};

} // namespace quillon
