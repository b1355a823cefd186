#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QSvgRenderer;

namespace quillon {

/// One of the drawings of Resources/Symbols.h, in one colour, as large as the item. Nothing for a
/// name that is no symbol's.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

  public:
    explicit Symbol(QQuickItem* parent = nullptr);
    ~Symbol() override;

    [[nodiscard]] QString name() const { return name_; }
    [[nodiscard]] QColor color() const { return color_; }
    void setName(const QString& name);
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void nameChanged();
    void colorChanged();

  private:
    void draw();

    QString name_;
    QColor color_ = Qt::black;
    std::unique_ptr<QSvgRenderer> drawing_;
};

} // namespace quillon
