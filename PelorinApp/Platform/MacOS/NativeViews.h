#pragma once

#include "Platform/View.h"

#include <AppKit/AppKit.h>

#include <unordered_map>

namespace quillon {

/// Which object of the system stands for which of our senders at present: views that are shown, and
/// the items of the menu that is. Main thread only.
class NativeViews {
  public:
    void add(const Sender& sender, id native) { natives_[&sender] = native; }
    void remove(const Sender& sender) { natives_.erase(&sender); }

    /// Nil for none, and for what nothing stands for.
    [[nodiscard]] id nativeSender(const Sender* sender) const {
        const auto found = natives_.find(sender);
        return found == natives_.end() ? nil : found->second;
    }

    /// Nil for a view that is not shown.
    [[nodiscard]] NSView* view(const View& view) const {
        return static_cast<NSView*>(nativeSender(&view));
    }

  private:
    std::unordered_map<const Sender*, id> natives_;
};

} // namespace quillon
