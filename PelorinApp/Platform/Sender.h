#pragma once

#include <functional>
#include <string>

namespace quillon {

/// What an action is sent by: a control or a menu item.
class Sender {
  public:
    Sender() = default;
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;
    virtual ~Sender() = default;
};

/// What a control or menu item does when it is used. The name is the selector under which systems
/// that look actions up by name find it; the function is what it stands for. Functions that outlive
/// their target hold it weakly. Called on the main thread; the sender may be null.
struct Action {
    std::string name;
    std::function<void(Sender* sender)> perform;
};

} // namespace quillon
