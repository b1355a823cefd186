#pragma once

#include "Platform/Sender.h"

#include <Foundation/Foundation.h>

#include <functional>
#include <map>
#include <string>

namespace quillon {

/// What the system's controls and menu items send their actions to: an object whose selectors are
/// the actions' own names. Main thread only. Once it is gone, what is still sent has no effect.
class ActionTarget {
  public:
    ActionTarget();
    ActionTarget(const ActionTarget&) = delete;
    ActionTarget& operator=(const ActionTarget&) = delete;
    ~ActionTarget();

    /// The selector of this action, whose arrival performs it from now on for this sender, which
    /// outlives it or this object. Null for an action without a name.
    SEL selectorOf(const Action& action, Sender& sender);

    [[nodiscard]] id object() const { return object_; }

    /// To be called by the object.
    void received(SEL selector);

  private:
    id object_;
    std::map<std::string, std::function<void()>, std::less<>> performed_; // by selector
};

} // namespace quillon
