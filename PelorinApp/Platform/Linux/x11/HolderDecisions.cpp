// The part of the session that asks the taps, and does what they and the tools say.
#include "Platform/Linux/x11/HolderSession.h"

namespace quillon {

void HolderSession::decideWheel(const xcb_button_press_event_t& press) {
    if (!isArmed() || !isWheelButton(press.detail)) {
        wheel_.pass(press);
        return;
    }
    const Point place = geometry_->toPoints(press.root_x, press.root_y);
    if (ask(notchOfButton(press.detail, place)) == Verdict::consume) {
        wheel_.consume(press);
    } else {
        wheel_.pass(press);
    }
}

void HolderSession::decideLeftPress(const xcb_input_button_press_event_t& press) {
    if (press.detail == leftButton && isArmedForPress()) {
        const Point place = geometry_->toPoints(press.root_x >> 16, press.root_y >> 16);
        if (areArmedAt(armed_->leftPresses, place) && askAbout(press, place) == Verdict::consume) {
            host_.caughtPresses.consume(press.sourceid, press.time);
            leftPress_.consume(press, devices_.ids());
            poster_.swallow(leftButton); // should it have been a held device's
            return;
        }
    }
    leftPress_.pass(press);
}

/// Should we not live to see the answer, the watchdog knows what it is that waits.
Verdict HolderSession::askAbout(const xcb_input_button_press_event_t& press, Point place) {
    waiting_.waitingDevice = press.sourceid;
    waiting_.waitingButton = poster_.numberFor(leftButton);
    tellWatchdog(isHolding());
    const Verdict verdict = ask(LeftPress{place});
    waiting_ = {};
    tellWatchdog(isHolding());
    return verdict;
}

void HolderSession::decideNotch(ScrollNotch notch) {
    // Notches can come a thousand times a second: what the pointer is doing is asked less often.
    const auto now = Clock::now();
    if (now - consumable_.at >= lookInterval || consumable_.posted != poster_.posted()) {
        consumable_ = {consumablePlace(), now, poster_.posted()};
    }
    if (isArmed() && consumable_.place) {
        notch.location = *consumable_.place;
        if (ask(notch) == Verdict::consume) {
            return;
        }
    }
    const std::uint8_t button = buttonOfNotch(notch);
    wheel_.letThrough(button, [&] { poster_.scroll(button); });
}

/// Where the pointer is, if a tap may consume there. As with a plain wheel, nothing is consumed
/// while a program has the pointer for itself.
std::optional<Point> HolderSession::consumablePlace() {
    if (!isArmed()) {
        return std::nullopt;
    }
    const auto pointer = probe_.look(hold_.master());
    if (!pointer || pointer->isButtonDown || !isInBand(*pointer) || hold_.isPointerTakenByOther()) {
        return std::nullopt;
    }
    return geometry_->toPoints(pointer->x, pointer->y);
}

Verdict HolderSession::ask(const TapQuestion& question) {
    bool timedOut = false;
    const Verdict verdict = host_.exchange.ask(question, timedOut, host_.wakeMain,
                                               [this] { tellWatchdog(isHolding()); });
    if (timedOut) {
        disarm();
    }
    return verdict;
}

void HolderSession::post(const PostedButton& posted) {
    if (posted.isDown) {
        ensureGuard(); // it must come up again, whatever happens
    }
    if (poster_.buttonsDown() == 0) {
        poster_.useDevice(hold_.pointers());
    }
    const auto send = [&] { poster_.post(posted.button, posted.isDown); };
    if (posted.button == leftButton) {
        leftPress_.letThrough(send);
    } else {
        send();
    }
    tellWatchdog(isHolding()); // before the server hears of it
}

} // namespace quillon
