#pragma once

#include "Platform/RunLoop.h"

#include <QPoint>
#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace quillon {

/// The tool tip of something that is no window of the toolkit's. Main thread only; shows nothing in
/// a process without a QApplication.
class HoverToolTip {
  public:
    /// `text` is what it says, `pointer` where the pointer is, in pixels of the root window.
    HoverToolTip(RunLoop& runLoop, std::function<std::string()> text,
                 std::function<std::optional<QPoint>()> pointer);
    HoverToolTip(const HoverToolTip&) = delete;
    HoverToolTip& operator=(const HoverToolTip&) = delete;
    ~HoverToolTip();

    void pointerEntered();

    /// Also to be called when a button is pressed: who clicks has seen enough.
    void dismiss();

    void textChanged();

  private:
    void show();
    [[nodiscard]] bool isShown() const;

    RunLoop& runLoop_;
    std::function<std::string()> text_;
    std::function<std::optional<QPoint>()> pointer_;
    TimerRef waiting_;
    QString shown_;
};

} // namespace quillon
