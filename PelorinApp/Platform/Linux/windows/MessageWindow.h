#pragma once

#include "Platform/Alerts.h"
#include "Platform/Linux/windows/EwmhClient.h"

#include <QMessageBox>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillon {

struct MessageButton {
    std::string text;
    std::function<void()> pressed; // may be empty
};

struct Message {
    AlertStyle style = AlertStyle::informational;
    std::string messageText;
    std::string informativeText;
    std::vector<MessageButton> buttons; // the first is the default; none means "OK"
    bool isModal = false;               // nothing else of the program can be used meanwhile
};

/// A window with a message and buttons, shown from when it is made until a button is pressed, or
/// until it goes. Main thread only; a QApplication must exist.
///
/// Escape and the window manager's close request count as the last button. What a button does is
/// done once the window is closed; it may destroy this object.
class MessageWindow {
  public:
    MessageWindow(Message message, std::function<std::uint32_t()> inputTime);
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    ~MessageWindow();

    [[nodiscard]] bool isOpen() const { return box_->isVisible(); }

    /// Brings it before other windows.
    void raise();

    [[nodiscard]] QMessageBox& box() { return *box_; }

  private:
    void emphasizeMessage();
    void addButtons(const std::vector<MessageButton>& buttons);

    EwmhClient manager_;
    QMessageBox* box_; // deletes itself when it has come back from its own events
};

} // namespace quillon
