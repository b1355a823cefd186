#pragma once

#include "Platform/Linux/windows/QuickScreen.h"

#include <QQuickView>

#include <limits>

namespace quillon {

/// The window of a popover: a screen, frameless, with rounded corners.
///
/// The screen is a Quick item. What it is asked for, each of them optional:
/// - `implicitWidth`, `implicitHeight`: its size, to which the window is kept.
/// - `property bool composited`: set before each show. True: what it leaves transparent is seen
///   through. False: the window is cut to `cornerRadius`, and translucent pixels show what lies
///   under them in the window.
/// - `property real cornerRadius`: how round its corners are.
/// - `property bool sheetAttached`: true while it shows a question that is to be answered first.
/// - `function goBack(): bool`: the user wants to leave what is open within it (Escape, which no
///   focused item took). True when there was something to leave.
class PopoverWindow final : public QQuickView {
    Q_OBJECT

  public:
    explicit PopoverWindow(const QuickScreen& screen);

    /// Renders a picture of the content while hidden, so that the first show need not wait for
    /// fonts, shapes and memory.
    void warmUp();

    /// Gives the screen its size, or this where it asks for more. In the toolkit's units.
    void fitInto(QSize room);

    /// To be called before each show.
    void shapeFor(bool composited);

    [[nodiscard]] bool hasAttachedSheet() const;

  Q_SIGNALS:
    /// The user wants it closed; it is still shown.
    void closeRequested();

    /// Escape, and the screen had nothing to go back from.
    void escaped();

    void sizeChanged();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] bool goBack() const;
    void takeSize();
    void cutCorners();

    QSize room_{std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
    bool composited_ = true;
};

} // namespace quillon
