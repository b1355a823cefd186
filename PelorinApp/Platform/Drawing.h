#pragma once

#include "Platform/Geometry.h"

#include <string>
#include <string_view>

namespace quillon {

enum class FontWeight { regular, medium, semibold };

/// A font of the system. Sizes are in points.
struct Font {
    double size = 13;
    FontWeight weight = FontWeight::regular;
    bool monospaced = false;
    bool operator==(const Font&) const = default;
};

/// A picture by name. What it looks like, the platform knows.
struct Image {
    std::string name;
    std::string accessibilityDescription;
    Size size;               // points; 0 × 0 until it is set
    bool isSymbol = false;   // one of the system's own, not an asset of the application
    bool isTemplate = false; // drawn in the colour of the text around it
    bool operator==(const Image&) const = default;
};

/// What a view draws itself with, while it draws. Coordinates are the view's own, in points, the
/// origin at its top left corner.
class DrawingContext {
  public:
    virtual ~DrawingContext() = default;

    [[nodiscard]] virtual Size measure(std::string_view text, const Font& font) const = 0;

    /// In the colour that the system gives to labels at this place, at this opacity (0…1).
    virtual void drawLabel(std::string_view text, const Rect& rect, const Font& font,
                           double opacity) = 0;
};

} // namespace quillon
