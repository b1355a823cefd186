#include "Platform/Linux/tray/Pixels.h"

#include <QColor>
#include <QtEndian>

#include <algorithm>
#include <vector>

namespace quillon {

namespace {

/// Rec. 709 weights, of the values as they are stored: precise enough to tell light from dark.
double luminance(QRgb pixel) {
    return (0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel)) / 255.0;
}

template <class Value>
Value median(std::vector<Value>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

QByteArray networkOrderPixels(const QImage& picture) {
    const QImage straight = picture.convertToFormat(QImage::Format_ARGB32);
    QByteArray bytes(qsizetype{4} * straight.width() * straight.height(), Qt::Uninitialized);
    char* to = bytes.data();
    for (int y = 0; y < straight.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(straight.constScanLine(y));
        for (int x = 0; x < straight.width(); ++x, to += 4) {
            qToBigEndian<quint32>(line[x], to);
        }
    }
    return bytes;
}

std::optional<double> medianLuminance(const QImage& picture, const QRect& without) {
    std::vector<double> values;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (!without.contains(x, y)) {
                values.push_back(luminance(picture.pixel(x, y)));
            }
        }
    }
    return values.empty() ? std::nullopt : std::optional(median(values));
}

QImage groundOf(const QImage& strip, const QRect& without, bool vertical, int length) {
    const int across = vertical ? strip.width() : strip.height();
    const int along = vertical ? strip.height() : strip.width();
    QImage ground(vertical ? QSize(across, length) : QSize(length, across), QImage::Format_RGB32);
    for (int line = 0; line < across; ++line) {
        std::vector<int> red;
        std::vector<int> green;
        std::vector<int> blue;
        for (int step = 0; step < along; ++step) {
            const QPoint at = vertical ? QPoint(line, step) : QPoint(step, line);
            if (!without.contains(at)) {
                const QRgb pixel = strip.pixel(at);
                red.push_back(qRed(pixel));
                green.push_back(qGreen(pixel));
                blue.push_back(qBlue(pixel));
            }
        }
        const QRgb color =
            red.empty() ? qRgb(0, 0, 0) : qRgb(median(red), median(green), median(blue));
        for (int step = 0; step < length; ++step) {
            ground.setPixel(vertical ? QPoint(line, step) : QPoint(step, line), color);
        }
    }
    return ground;
}

QColor labelColor(double luminance) { return luminance < 0.5 ? Qt::white : Qt::black; }

} // namespace quillon
