#include "Platform/Linux/windows/UpdateMessages.h"

#include <utility>

namespace quillon {

void UpdateMessages::show(const std::string& title, const std::string& text,
                          std::vector<UpdateButton> buttons) {
    Message message;
    message.messageText = title;
    message.informativeText = text;
    for (UpdateButton& button : buttons) {
        message.buttons.push_back({std::move(button.title), std::move(button.perform)});
    }
    window_ = std::make_unique<MessageWindow>(std::move(message), inputTime_);
}

} // namespace quillon
