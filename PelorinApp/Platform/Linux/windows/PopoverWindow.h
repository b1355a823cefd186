#pragma once

#include "Platform/Quick/ScreenView.h"

namespace quillon {

/// The window of a popover: a screen, frameless, with rounded corners.
///
/// What the screen is asked for besides, each of them optional:
/// - `property bool composited`: set before each show. True: what it leaves transparent is seen
///   through. False: the window is cut to `cornerRadius`, and translucent pixels show what lies
///   under them in the window.
/// - `property real cornerRadius`: how round its corners are.
class PopoverWindow final : public ScreenView {
    Q_OBJECT

  public:
    explicit PopoverWindow(const QuickScreen& screen);

    /// Renders a picture of the content while hidden, so that the first show need not wait for
    /// fonts, shapes and memory.
    void warmUp();

    /// To be called before each show.
    void shapeFor(bool composited);

  Q_SIGNALS:
    /// The user wants it closed; it is still shown.
    void closeRequested();

  protected:
    bool event(QEvent* event) override;
    void resized() override;

  private:
    void cutCorners();

    bool composited_ = true;
};

} // namespace quillon
