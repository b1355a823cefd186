#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quillon {

/// What a slider may be set to, and how it is written.
class SliderScale : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double lower MEMBER lower NOTIFY changed)
    Q_PROPERTY(double upper MEMBER upper NOTIFY changed)
    Q_PROPERTY(double step MEMBER step NOTIFY changed)

  public:
    using QObject::QObject;

    double lower = 0;
    double upper = 1;
    double step = 0; // 0: any value between the ends

    /// The value under the pointer at `x` of the control; the thumb's centre runs along the track.
    Q_INVOKABLE [[nodiscard]] double valueAt(double x, double thumb, double track) const;

    /// The nearest value that there is. Whole steps are counted from the lower end, fractions of
    /// one from zero.
    Q_INVOKABLE [[nodiscard]] double snapped(double raw) const;

    // In plain digits, whatever the language; halves are rounded away from zero.
    Q_INVOKABLE [[nodiscard]] static QString whole(double value);
    Q_INVOKABLE [[nodiscard]] static QString hundredths(double value);

  Q_SIGNALS:
    void changed();
};

} // namespace quillon
