#pragma once

#include "Platform/Linux/touch/EvdevTouchpad.h"
#include "Platform/Linux/touch/TouchpadDirectory.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <poll.h>

namespace quillon {

/// Follows all touchpads, those that come later too, and says how many fingers are down on the one
/// that was touched last. Lives on one thread; sleeps until something happens.
class ContactReader {
  public:
    /// `report` is called with the number at the beginning, so that fingers that rest there are
    /// known and ones that were lifted before are forgotten, and whenever it changes. Fingers that
    /// move are not worth a call: who asks wants to know how many there are, and touchpads send a
    /// hundred frames a second.
    ContactReader(TouchpadDirectory& directory, std::function<void(int contacts)> report);

    /// Returns when `ends` says so, which is asked after each time that `wakeUp` has become
    /// readable, or when waiting fails. Nothing is reported in the end.
    void run(int wakeUp, const std::function<bool()>& ends);

  private:
    struct Pad {
        std::string id;
        std::unique_ptr<EvdevTouchpad> touchpad;
        bool isGone = false;
    };

    void scan();
    void read(Pad& pad, short events);
    void dropGone();
    [[nodiscard]] int countNow() const;
    void reportContacts();
    void listen(int wakeUp);

    TouchpadDirectory& directory_;
    std::function<void(int)> report_;
    bool isFollowing_; // touchpads that come
    std::vector<Pad> pads_;
    std::string touched_;         // the one touched last, by its id
    int contacts_ = 0;            // of the last report
    std::vector<pollfd> sources_; // the wake-up, the directory, then the touchpads
};

} // namespace quillon
