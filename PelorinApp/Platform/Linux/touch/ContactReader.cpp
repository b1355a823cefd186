#include "Platform/Linux/touch/ContactReader.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace quillon {

namespace {

constexpr short broken = POLLERR | POLLHUP | POLLNVAL;

} // namespace

ContactReader::ContactReader(TouchpadDirectory& directory, std::function<void(int contacts)> report)
    : directory_(directory), report_(std::move(report)), isFollowing_(directory.descriptor() >= 0) {
}

void ContactReader::run(int wakeUp, const std::function<bool()>& ends) {
    scan();
    contacts_ = countNow();
    report_(contacts_);
    while (!ends()) {
        listen(wakeUp);
        if (poll(sources_.data(), sources_.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            return;
        }
        for (std::size_t i = 0; i < pads_.size() && !ends(); ++i) {
            read(pads_[i], sources_[i + 2].revents);
        }
        dropGone();
        const short news = sources_[1].revents;
        if (isFollowing_ && news != 0 && directory_.readNews()) {
            scan();
            reportContacts();
        }
        // What was lost is an error that reading clears; this is not.
        isFollowing_ = isFollowing_ && (news & (POLLHUP | POLLNVAL)) == 0;
    }
}

void ContactReader::listen(int wakeUp) {
    sources_.clear();
    sources_.push_back({wakeUp, POLLIN, 0});
    sources_.push_back({isFollowing_ ? directory_.descriptor() : -1, POLLIN, 0});
    for (const Pad& pad : pads_) {
        sources_.push_back({pad.touchpad->descriptor(), POLLIN, 0});
    }
}

/// Opens what is there and not open. What has gone is noticed by reading from it.
void ContactReader::scan() {
    for (const TouchpadNode& node : directory_.list()) {
        if (std::any_of(pads_.begin(), pads_.end(),
                        [&](const Pad& pad) { return pad.id == node.id; })) {
            continue;
        }
        FileDescriptor file = directory_.open(node);
        auto touchpad = file.isOpen() ? EvdevTouchpad::make(std::move(file)) : nullptr;
        if (touchpad == nullptr) {
            continue;
        }
        if (touchpad->contacts() > 0) {
            touched_ = node.id;
        }
        pads_.push_back({node.id, std::move(touchpad)});
    }
}

void ContactReader::read(Pad& pad, short events) {
    if (events == 0) {
        return;
    }
    const bool isThere = pad.touchpad->read([&] {
        touched_ = pad.id;
        reportContacts();
    });
    pad.isGone = !isThere || (events & broken) != 0;
}

void ContactReader::dropGone() {
    if (std::erase_if(pads_, [](const Pad& pad) { return pad.isGone; }) > 0) {
        reportContacts();
    }
}

int ContactReader::countNow() const {
    const auto pad = std::find_if(pads_.begin(), pads_.end(),
                                  [&](const Pad& one) { return one.id == touched_; });
    return pad == pads_.end() ? 0 : pad->touchpad->contacts();
}

void ContactReader::reportContacts() {
    const int now = countNow();
    if (std::exchange(contacts_, now) != now) {
        report_(now);
    }
}

} // namespace quillon
