#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>

#include <optional>

namespace quillon {

/// The picture's pixels as alpha, red, green, blue bytes, colours not multiplied by alpha.
[[nodiscard]] QByteArray networkOrderPixels(const QImage& picture);

/// How bright a picture is, 0 (black) to 1 (white): the median of its pixels, so that what little
/// is drawn on a plain ground does not count. Pixels within `without` are left out; nothing when
/// none are left.
[[nodiscard]] std::optional<double> medianLuminance(const QImage& picture, const QRect& without);

/// The ground of a panel under an item, guessed from a strip of the panel: panels are shaded
/// across at most, so each line along the panel has one colour, the median of its pixels that
/// `without` leaves. The result has the strip's extent across, and `length` pixels along.
[[nodiscard]] QImage groundOf(const QImage& strip, const QRect& without, bool vertical, int length);

/// What labels are drawn in on a ground of this brightness.
[[nodiscard]] QColor labelColor(double luminance);

} // namespace quillon
