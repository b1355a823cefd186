#include "Platform/Linux/tray/ViewPainter.h"

#include "Platform/Button.h"
#include "Platform/Linux/tray/LinuxImages.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

class PainterContext final : public DrawingContext {
  public:
    PainterContext(QPainter& painter, double scale, QColor label)
        : painter_(painter), scale_(scale), label_(label) {}

    [[nodiscard]] Size measure(std::string_view text, const Font& font) const override {
        const QFontMetricsF metrics(desktopFont(font, scale_));
        return {metrics.horizontalAdvance(string(text)) / scale_, metrics.height() / scale_};
    }

    void drawLabel(std::string_view text, const Rect& rect, const Font& font,
                   double opacity) override {
        painter_.save();
        painter_.setOpacity(painter_.opacity() * std::clamp(opacity, 0.0, 1.0));
        painter_.setPen(label_);
        painter_.setFont(desktopFont(font, scale_));
        painter_.drawText(pixels(rect),
                          Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine | Qt::TextDontClip,
                          string(text));
        painter_.restore();
    }

    void drawImage(const Image& image, const Rect& rect, const QColor& color) {
        const QSize size = pixels(rect).size().toSize();
        if (size.isEmpty()) {
            return;
        }
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter inside(&picture);
        QSvgRenderer(drawingOf(image)).render(&inside, QRectF({}, size));
        if (image.isTemplate) {
            inside.setCompositionMode(QPainter::CompositionMode_SourceIn);
            inside.fillRect(picture.rect(), color);
        }
        inside.end();
        painter_.drawImage(pixels(rect).topLeft().toPoint(), picture);
    }

    [[nodiscard]] const QColor& label() const { return label_; }

  private:
    static QString string(std::string_view text) {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    [[nodiscard]] QRectF pixels(const Rect& rect) const {
        return {rect.x * scale_, rect.y * scale_, rect.width * scale_, rect.height * scale_};
    }

    QPainter& painter_;
    double scale_;
    QColor label_;
};

Size naturalSize(const Image& image) {
    if (image.size.width > 0 && image.size.height > 0) {
        return image.size;
    }
    const QSize size = QSvgRenderer(drawingOf(image)).defaultSize();
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

/// In the middle, and never larger than there is room.
Rect placeOf(const Image& image, Size room) {
    const Size natural = naturalSize(image);
    const double shrink = std::min({1.0, room.width / std::max(natural.width, 1.0),
                                    room.height / std::max(natural.height, 1.0)});
    const double width = natural.width * shrink;
    const double height = natural.height * shrink;
    return {(room.width - width) / 2, (room.height - height) / 2, width, height};
}

void drawLook(PainterContext& context, const ButtonLook& look, Size size) {
    QColor color = context.label();
    if (look.contentTintColor) {
        const QColor tint(QString::fromStdString(*look.contentTintColor));
        color = tint.isValid() ? tint : color;
    }
    const bool showsImage = look.image && look.imagePosition != ImagePosition::noImage;
    double left = 0;
    if (showsImage) {
        Rect place = placeOf(*look.image, size);
        if (look.imagePosition == ImagePosition::imageLeft) {
            place.x = 0;
            left = place.width;
        }
        context.drawImage(*look.image, place, color);
        if (look.imagePosition == ImagePosition::imageOnly) {
            return;
        }
    }
    const std::string& title = look.attributedTitle.empty() ? look.title : look.attributedTitle;
    if (!title.empty()) {
        const Size text = context.measure(title, look.titleFont);
        const double room = size.width - left - text.width;
        const double indent = look.alignment == TextAlignment::center  ? room / 2
                              : look.alignment == TextAlignment::right ? room
                                                                       : 0;
        context.drawLabel(title,
                          {left + indent, (size.height - text.height) / 2, text.width, text.height},
                          look.titleFont, 1);
    }
}

} // namespace

QFont desktopFont(const Font& font, double scale) {
    QFont result = font.monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                   : QGuiApplication::font();
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size * scale))));
    result.setWeight(font.weight == FontWeight::semibold ? QFont::DemiBold
                     : font.weight == FontWeight::medium ? QFont::Medium
                                                         : QFont::Normal);
    return result;
}

void paintView(QPainter& painter, const View& view, Size size, double scale, const QColor& label) {
    painter.save();
    painter.setOpacity(painter.opacity() * std::clamp(view.alphaValue(), 0.0, 1.0));
    PainterContext context(painter, scale, label);
    if (const auto* button = dynamic_cast<const Button*>(&view)) {
        drawLook(context, button->look(), size);
    }
    view.draw(context);
    for (const auto& subview : view.subviews()) {
        const Rect frame = subview->frame();
        painter.save();
        painter.translate(std::round(frame.x * scale), std::round(frame.y * scale));
        paintView(painter, *subview, {frame.width, frame.height}, scale, label);
        painter.restore();
    }
    painter.restore();
}

} // namespace quillon
