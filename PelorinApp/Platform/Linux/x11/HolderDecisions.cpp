// The part of the session that asks the taps, and does what they and the tools say.
#include "Platform/Linux/x11/HolderSession.h"

#include <utility>

namespace quillon {

void HolderSession::decideWheel(const xcb_button_press_event_t& press) {
    if (!isWheelButton(press.detail)) {
        wheel_.pass(press);
        return;
    }
    const auto caught = turned_.caught(press.detail);
    if (caught == TurnedNotches::Caught::tooEarly) {
        return;
    }
    if (!isArmed() || caught == TurnedNotches::Caught::ours) {
        wheel_.pass(press);
        return;
    }
    ScrollNotch notch =
        notchOfButton(press.detail, geometry_->toPoints(press.root_x, press.root_y));
    notch.isReversed = isPlainWheelReversed();
    const Verdict verdict = ask(notch);
    if (verdict == Verdict::pass) {
        wheel_.pass(press);
        return;
    }
    host_.caughtPresses.consume({CaughtPress::Kind::wheel, press.detail, press.time});
    wheel_.consume(press);
    turned_.consumed(press.detail);
    if (verdict == Verdict::passTurned) {
        turned_.turnTo(buttonOfNotch(turned(notch)));
    }
}

/// As far as is known of the wheel that was turned last.
bool HolderSession::isPlainWheelReversed() const {
    switch (host_.reversed.plain()) {
    case ReversedDevices::Plain::none:
        break;
    case ReversedDevices::Plain::some:
        return host_.reversed.contains(lastPressed(connection_, hold_.master()));
    case ReversedDevices::Plain::all:
        return true;
    }
    return false;
}

void HolderSession::wheelReleased(const xcb_button_release_event_t& release) {
    turned_.released(release.detail, wheel_.areTaken(),
                     [this](std::uint8_t button) { poster_.scroll(button); });
}

/// No grab of ours is there any more that would catch it.
void HolderSession::postTurned() {
    turned_.postDue(false, [this](std::uint8_t button) { poster_.scroll(button); });
}

/// Before an event is dealt with, never amidst: what is held may change.
void HolderSession::followReversal() {
    if (isArmed() &&
        std::exchange(reversalSeen_, host_.reversed.changes()) != host_.reversed.changes()) {
        hold_.pointersHaveChanged();
        poster_.readWheel(hold_.pointers());
    }
}

void HolderSession::decideLeftPress(const xcb_input_button_press_event_t& press) {
    if (press.detail == leftButton && isArmedForPress()) {
        const Point place = geometry_->toPoints(press.root_x >> 16, press.root_y >> 16);
        if (areArmedAt(armed_->leftPresses, place) && askAbout(press, place) == Verdict::consume) {
            host_.caughtPresses.consume({CaughtPress::Kind::left, press.sourceid, press.time});
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
        switch (ask(notch)) {
        case Verdict::consume:
            return;
        case Verdict::passTurned:
            notch = turned(notch);
            break;
        case Verdict::pass:
            break;
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
