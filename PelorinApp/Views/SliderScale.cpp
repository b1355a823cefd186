#include "Views/SliderScale.h"

#include <algorithm>
#include <cmath>

namespace quillon {

double SliderScale::valueAt(double x, double thumb, double track) const {
    const double fraction = track > 0 ? std::clamp((x - thumb / 2) / track, 0.0, 1.0) : 0;
    return snapped(lower + fraction * (upper - lower));
}

double SliderScale::snapped(double raw) const {
    double value = raw;
    if (step >= 1 && step == std::floor(step)) {
        value = lower + step * std::round((raw - lower) / step);
    } else if (step > 0) {
        value = step * std::round(raw / step);
    }
    return std::max(lower, std::min(upper, value));
}

QString SliderScale::whole(double value) {
    return QString::number(std::round(value) + 0.0, 'f', 0); // the sum has no -0
}

QString SliderScale::hundredths(double value) { return QString::number(value, 'f', 2); }

} // namespace quillon
