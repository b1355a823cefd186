#include "VolumeBarMenuBarButton.h"

#include "PercentText.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

constexpr double visibleChange = 0.002;
constexpr double labelOpacity = 0.95;

/// Never 100: the text keeps to two digits before the point, or it would not fit.
constexpr double largestShown = 99.9;

constexpr double horizontalMargin = 2;
constexpr double verticalMargin = 4;
constexpr double largestSize = 11;
constexpr double smallestSize = 6.5;
constexpr double sizeStep = 0.5;
constexpr double fractionScale = 0.52;
constexpr double smallestFraction = 5;
constexpr double fractionRaise = 1;

Font monospaced(double size) { return {size, FontWeight::semibold, true}; }

double shownPercent(double level) {
    return level >= 0 ? std::min(level * 100, largestShown) : 0; // also for what is no number
}

} // namespace

VolumeBarMenuBarButton::VolumeBarMenuBarButton() {
    ButtonLook look;
    look.isBordered = false;
    look.bezelStyle = BezelStyle::shadowlessSquare;
    look.showsFocusRing = false;
    setLook(look);
}

void VolumeBarMenuBarButton::setLevel(double level) {
    const double before = level_;
    level_ = level;
    if (!(std::abs(level - before) <= visibleChange)) { // also from what was no number
        setNeedsDisplay();
    }
}

VolumeBarLayout VolumeBarMenuBarButton::layOut(double level, Size size, const Measure& measure) {
    VolumeBarLayout layout;
    const std::string text = percentText(shownPercent(level));
    const std::size_t point = text.find('.');
    layout.integer = text.substr(0, point);
    layout.fraction = point == std::string::npos ? ".0" : text.substr(point);

    const double availableWidth = std::max(size.width - horizontalMargin, 0.0);
    double fontSize = std::min(std::max(size.height - verticalMargin, 0.0), largestSize);
    Size integer;
    Size fraction;
    const auto measureBoth = [&] {
        layout.integerFont = monospaced(fontSize);
        layout.fractionFont = monospaced(std::max(fontSize * fractionScale, smallestFraction));
        integer = measure(layout.integer, layout.integerFont);
        fraction = measure(layout.fraction, layout.fractionFont);
        return integer.width + fraction.width;
    };
    double total = measureBoth();
    while (fontSize > smallestSize && availableWidth < total) {
        fontSize -= sizeStep;
        total = measureBoth();
    }

    layout.integerRect = {std::floor((size.width - total) / 2),
                          std::floor((size.height - integer.height) / 2), std::ceil(integer.width),
                          std::ceil(integer.height)};
    layout.fractionRect = {layout.integerRect.maxX(),
                           std::floor((size.height - fraction.height) / 2) - fractionRaise,
                           std::ceil(fraction.width), std::ceil(fraction.height)};
    return layout;
}

void VolumeBarMenuBarButton::draw(DrawingContext& context) const {
    const Rect own = bounds();
    const VolumeBarLayout layout =
        layOut(level_, {own.width, own.height}, [&](std::string_view text, const Font& font) {
            return context.measure(text, font);
        });
    context.drawLabel(layout.integer, layout.integerRect, layout.integerFont, labelOpacity);
    context.drawLabel(layout.fraction, layout.fractionRect, layout.fractionFont, labelOpacity);
}

} // namespace quillon
