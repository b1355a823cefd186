#pragma once

#include "Platform/Quick/QuickScreen.h"

#include <QQuickView>

#include <limits>

namespace quillon {

/// Shows a screen in what is to be a popover.
///
/// The screen is a Quick item. What it is asked for, each of them optional:
/// - `implicitWidth`, `implicitHeight`: its size, to which the view is kept.
/// - `property bool sheetAttached`: true while it shows a question that is to be answered first.
/// - `function goBack(): bool`: the user wants to leave what is open within it (Escape, which no
///   focused item took). True when there was something to leave.
class ScreenView : public QQuickView {
    Q_OBJECT

  public:
    explicit ScreenView(const QuickScreen& screen);

    /// Gives the screen its size, or this where it asks for more. In the toolkit's units.
    void fitInto(QSize room);

    [[nodiscard]] bool hasAttachedSheet() const;

  Q_SIGNALS:
    /// Escape, and the screen had nothing to go back from.
    void escaped();

    void sizeChanged();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

    /// It has another size now; sizeChanged() comes after.
    virtual void resized() {}

  private:
    [[nodiscard]] bool goBack() const;
    void takeSize();

    QSize room_{std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
};

} // namespace quillon
