#pragma once

#include "Platform/Menu.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QTimer>

#include <memory>

namespace quillon {

/// A menu as the toolkit shows it. The chosen item's action is performed after it has closed.
class MenuWidget final : public QMenu {
    Q_OBJECT

  public:
    explicit MenuWidget(const Menu& menu);

    /// Shows it with its upper left corner there, in the toolkit's coordinates. While a mouse
    /// button is held down on another client's window, that client has the pointer, and a menu
    /// could neither be chosen from nor dismissed: it waits for the button then.
    void openAt(QPoint corner);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void add(const std::shared_ptr<MenuItem>& item);
    void openWhenPointerIsFree();

    QPoint corner_;
    QTimer retry_;
    QElapsedTimer waiting_;
};

} // namespace quillon
