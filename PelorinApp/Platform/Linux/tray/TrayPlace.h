#pragma once

#include "Platform/Geometry.h"
#include "Platform/Linux/tray/CurrentEvent.h"
#include "Platform/Linux/tray/PanelPlace.h"

#include <QColor>
#include <QImage>
#include <QSize>

#include <optional>
#include <string>

namespace quillon {

/// The thickness in points of a status bar that nobody has measured yet.
constexpr double usualThickness = 22.0;

/// What the status item shows and does, for the places that it can be in.
class TrayContent {
  public:
    virtual ~TrayContent() = default;

    /// What is shown, over nothing. `scale` is pixels per point of the content; without one the
    /// content is scaled to fill the picture.
    [[nodiscard]] virtual QImage picture(QSize pixels, std::optional<double> scale,
                                         const QColor& label) const = 0;

    [[nodiscard]] virtual std::string toolTip() const = 0;

    /// `place` is in points of the content from the item's top left corner; nothing where the
    /// desktop keeps it to itself. May let go of the item.
    virtual void clicked(const UserAction& action, std::optional<Point> place) = 0;
};

/// A place on the desktop for one status item. Main thread only.
class TrayPlace : public PanelPlace {
  public:
    /// The picture or the tool tip is another one now.
    virtual void contentChanged() = 0;

    /// The item's rectangle in points; nothing while it is not on the screen.
    [[nodiscard]] virtual std::optional<Rect> onScreen() const = 0;

    /// In points of the content, which is as thick as a status bar in however thick an item;
    /// nothing while the item has no size of its own.
    [[nodiscard]] virtual std::optional<Size> size() const = 0;
};

} // namespace quillon
