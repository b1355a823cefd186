#include "Platform/Linux/windows/WidgetAlerts.h"

namespace quillon {

void WidgetAlerts::runModal(const Alert& alert) {
    std::erase_if(shown_, [](const auto& window) { return !window->isOpen(); });
    Message message{alert.style, alert.messageText, alert.informativeText, {}, true};
    for (const std::string& button : alert.buttons) {
        message.buttons.push_back({button, {}});
    }
    shown_.push_back(std::make_unique<MessageWindow>(std::move(message), inputTime_));
}

std::vector<MessageWindow*> WidgetAlerts::open() const {
    std::vector<MessageWindow*> windows;
    for (const auto& window : shown_) {
        if (window->isOpen()) {
            windows.push_back(window.get());
        }
    }
    return windows;
}

} // namespace quillon
