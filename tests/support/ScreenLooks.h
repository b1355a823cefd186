#pragma once

#include "support/ScreenFixture.h"

#include <QDir>
#include <QPalette>
#include <QTranslator>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillon {

/// A language in which everything takes 40 % more room, as long as the object lives.
class LongLanguage final : public QTranslator {
  public:
    LongLanguage() { QCoreApplication::installTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* sourceText,
                                    const char* disambiguation, int n) const override {
        static_cast<void>(context);
        static_cast<void>(disambiguation);
        static_cast<void>(n);
        const QString text = QString::fromUtf8(sourceText);
        return text + text.left(text.size() * 4 / 10).replace('%', 'x');
    }
};

/// What is seen of a screen: where its letters are, and whether they can be read.
struct ScreenLooks {
    QQuickView& view;
    QQuickItem* within = nullptr; // nothing: all that the view shows

    static void setPalette(bool dark) {
        QPalette palette(dark ? QColor(43, 43, 47) : QColor(239, 239, 239));
        palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        QGuiApplication::setPalette(palette);
    }

    [[nodiscard]] QQuickItem& root() const {
        return within == nullptr ? *view.rootObject() : *within;
    }

    [[nodiscard]] std::vector<QQuickItem*> textItems() const {
        return ScreenFixture::items(root(), [](const QQuickItem& item) {
            return item.inherits("QQuickText") && !item.property("text").toString().isEmpty() &&
                   isWhole(&item);
        });
    }

    [[nodiscard]] static QRectF place(const QQuickItem* item) {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }

    /// Where the letters are; a text may have more room than it needs.
    [[nodiscard]] static QRectF letters(const QQuickItem* text) {
        const double width = text->property("contentWidth").toDouble();
        const int alignment = text->property("effectiveHorizontalAlignment").toInt();
        const double free = text->width() - width;
        const double x = alignment == Qt::AlignRight     ? free
                         : alignment == Qt::AlignHCenter ? free / 2
                                                         : 0;
        return text->mapRectToScene(QRectF(x, 0, width, text->height()));
    }

    /// What others have written is shown as it is.
    void expectNoMarkup() const {
        for (const QQuickItem* text : textItems()) {
            EXPECT_EQ(text->property("textFormat").toInt(), Qt::PlainText)
                << text->property("text").toString().toStdString();
        }
    }

    /// Not scrolled away, nor cut off where what scrolls ends.
    [[nodiscard]] static bool isWhole(const QQuickItem* text) {
        const QRectF area = letters(text);
        for (const QQuickItem* each = text->parentItem(); each != nullptr;
             each = each->parentItem()) {
            if (each->clip() && !place(each).contains(area)) {
                return false;
            }
        }
        return true;
    }

    /// Beside each other or one above the other, and all within the window's width.
    void expectNoOverlap() const {
        const auto all = textItems();
        const double width = view.width();
        for (std::size_t i = 0; i < all.size(); ++i) {
            const QString text = all[i]->property("text").toString();
            const QRectF area = letters(all[i]);
            EXPECT_GE(area.left(), 12) << text.toStdString();
            EXPECT_LE(area.right(), width - 12) << text.toStdString();
            for (std::size_t j = i + 1; j < all.size(); ++j) {
                EXPECT_FALSE(area.intersects(letters(all[j])))
                    << text.toStdString() << " | "
                    << all[j]->property("text").toString().toStdString();
            }
        }
        for (const QQuickItem* item :
             ScreenFixture::items(root(), [](const QQuickItem&) { return true; })) {
            const bool isRing = item->property("target").isValid();
            if (!isRing) {
                EXPECT_GE(place(item).left(), -0.5) << item->metaObject()->className();
                EXPECT_LE(place(item).right(), width + 0.5) << item->metaObject()->className();
            }
        }
    }

    [[nodiscard]] static double luminance(const QColor& color) {
        const auto linear = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    }

    /// As much contrast as people need who see a little less than most, or more where asked for.
    void expectReadable(const QImage& picture, double least = 4.5) const {
        for (const QQuickItem* text : textItems()) {
            const QRectF area = letters(text);
            const QPointF beside(area.left() - 2, area.center().y());
            const QColor ground = picture.pixelColor((beside * view.devicePixelRatio()).toPoint());
            const QColor ink = text->property("color").value<QColor>();
            const double alpha = ink.alphaF();
            const QColor seen =
                QColor::fromRgbF(ink.redF() * alpha + ground.redF() * (1 - alpha),
                                 ink.greenF() * alpha + ground.greenF() * (1 - alpha),
                                 ink.blueF() * alpha + ground.blueF() * (1 - alpha));
            const double one = luminance(seen);
            const double other = luminance(ground);
            const double contrast = (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
            EXPECT_GE(contrast, least) << text->property("text").toString().toStdString();
        }
    }

    /// To be looked at, in the folder that the environment names.
    static void keepPicture(const QImage& picture, const QString& name) {
        const QString folder = qEnvironmentVariable("QUILLON_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QDir(folder).filePath(name + ".png")));
        }
    }
};

} // namespace quillon
