#pragma once

#include "Platform/Linux/tray/TrayAtoms.h"
#include "Platform/Linux/tray/TrayManager.h"

#include <QImage>
#include <QSize>

namespace quillon {

/// The window that a tray takes in. The connection must outlive it. Nothing here waits for the
/// server, and errors are ignored: the tray's window, and this one with it, may be gone any time.
class DockWindow {
  public:
    /// In pixels; the tray will give it another size.
    DockWindow(const X11Connection& connection, const TrayAtoms& atoms, const TrayManager& manager,
               QSize size);
    DockWindow(const DockWindow&) = delete;
    DockWindow& operator=(const DockWindow&) = delete;
    ~DockWindow();

    [[nodiscard]] xcb_window_t id() const { return window_; }

    /// Asks the tray to take it in.
    void requestDock();

    /// Tells the tray that it can be this small, which it was made with.
    void setLeastSize(QSize size);

    /// Asks the tray for this size. Trays may ignore it.
    void requestSize(QSize size);

    /// What the server paints it with from now on, whenever it comes to light, without us.
    void setPicture(const QImage& picture);

  private:
    const X11Connection& connection_;
    const TrayAtoms& atoms_;
    TrayManager manager_;
    xcb_colormap_t colormap_;
    xcb_window_t window_;
    QSize leastSize_;
};

} // namespace quillon
