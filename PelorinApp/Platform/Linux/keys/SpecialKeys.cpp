#include "Platform/Linux/keys/SpecialKeys.h"

#include <poll.h>

namespace quillon {

namespace {

constexpr int betweenLooks = 5; // milliseconds

MediaCommand commandOf(SpecialKey key) {
    return key == SpecialKey::next       ? MediaCommand::next
           : key == SpecialKey::previous ? MediaCommand::previous
                                         : MediaCommand::playPause;
}

/// False at once when the program is to end.
bool pause(const WakeUp& end) {
    pollfd polled{end.descriptor(), POLLIN, 0};
    return ::poll(&polled, 1, betweenLooks) == 0;
}

} // namespace

SpecialKeys::SpecialKeys(RunLoop& runLoop, const std::string& busAddress)
    : runLoop_(runLoop), self_(std::make_shared<SpecialKeys*>(this)), players_(busAddress),
      injector_([this] { return pause(end_); }) {}

SpecialKeys::~SpecialKeys() {
    if (giveBack_) {
        giveBack_->cancel();
    }
    end_.wake();
    players_.stop();
    keys_.sync([this] { injector_.giveBack(); });
}

void SpecialKeys::stroke(SpecialKey key) {
    keys_.async([this, key] { strokeNow(key); });
}

void SpecialKeys::strokeNow(SpecialKey key) {
    if (!isMediaKey(key) || injector_.isGrabbed(keysymOf(key))) {
        inject(key);
        return;
    }
    players_.command(commandOf(key), [this, key](bool isTaken) {
        if (!isTaken) {
            keys_.async([this, key] { inject(key); });
        }
    });
}

void SpecialKeys::inject(SpecialKey key) {
    (void)injector_.stroke(keysymOf(key));
    if (injector_.hasBorrowed()) {
        runLoop_.async([weak = std::weak_ptr(self_)] {
            if (const auto self = weak.lock()) {
                (*self)->keepBorrowed();
            }
        });
    }
}

/// For a while from now on.
void SpecialKeys::keepBorrowed() {
    if (giveBack_) {
        giveBack_->cancel();
    }
    giveBack_ = runLoop_.asyncAfter(std::chrono::duration<double>(borrowedFor).count(), [this] {
        giveBack_.reset();
        keys_.async([this] { injector_.giveBack(); });
    });
}

} // namespace quillon
