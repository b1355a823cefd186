#pragma once

#include "Platform/Button.h"

#include <functional>
#include <string>
#include <string_view>

namespace quillon {

/// Where the two parts of the level's text go, in points, origin at the button's top left corner.
struct VolumeBarLayout {
    std::string integer;
    std::string fraction;
    Font integerFont;
    Font fractionFont;
    Rect integerRect;
    Rect fractionRect;
};

/// Shows the output volume in the status bar: percent with one decimal, the decimal small and
/// raised, so that the number fits into the width of an icon.
class VolumeBarMenuBarButton final : public Button {
  public:
    VolumeBarMenuBarButton();

    /// The volume as a fraction, 0…1.
    [[nodiscard]] double level() const { return level_; }

    /// Redraws only for a change that can be seen, a fifth of a percent.
    void setLevel(double level);

    void draw(DrawingContext& context) const override;

    using Measure = std::function<Size(std::string_view text, const Font& font)>;
    [[nodiscard]] static VolumeBarLayout layOut(double level, Size size, const Measure& measure);

  private:
    double level_ = 0;
};

} // namespace quillon
