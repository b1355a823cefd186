#include "Platform/Linux/reversal/ScrollReversal.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

namespace {

/// A connection that is closed again so soon is not made anew at once.
constexpr std::chrono::seconds shortLife{1};

} // namespace

ScrollReversal::~ScrollReversal() {
    if (connection_ && !connection_->isBroken()) {
        wanted_ = {};
        settleDevices();
    }
    disconnect();
}

void ScrollReversal::follow(ConstantRewrite wanted) {
    const bool isNew = asked_ != wanted;
    const bool isMissing = isAnythingWanted() && !connection_;
    if (!isNew && !isMissing) {
        return;
    }
    asked_ = wanted;
    wanted_ = wanted;
    settle();
}

void ScrollReversal::settle() {
    if (!connection_ && !connect()) {
        return;
    }
    settleDevices();
    readEvents(); // the round trips may have brought some in
}

bool ScrollReversal::connect() {
    connection_ = X11Connection::open();
    const auto firstEvent = connection_ ? connection_->firstEvent(&xcb_input_id) : std::nullopt;
    if (!firstEvent) {
        connection_.reset();
        return false;
    }
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_->get(), xcb_input_xi_query_version(connection_->get(), 2, 3), nullptr));
    if (!version || version->major_version < 2) {
        connection_.reset();
        return false;
    }
    connectedAt_ = Clock::now();
    atoms_.emplace(*connection_);
    mappingEvent_ = static_cast<std::uint8_t>(*firstEvent + XCB_INPUT_DEVICE_MAPPING_NOTIFY);
    if (isAnythingWanted()) {
        listen();
    }
    return true;
}

void ScrollReversal::disconnect() {
    if (notifier_) {
        notifier_->setEnabled(false);
    }
    if (isReading_ && notifier_) {
        notifier_.release()->deleteLater(); // it may be what called us
    }
    notifier_.reset();
    devices_.clear();
    slaves_.clear();
    connection_.reset();
}

/// The devices stay as they are. Somebody may have had the connection closed: then they are taken
/// care of by another one.
void ScrollReversal::connectionLost() {
    const bool tryAgain = Clock::now() - connectedAt_ >= shortLife;
    disconnect();
    if (tryAgain) {
        settle();
    }
}

/// Events of devices with axes go by what these are.
bool ScrollReversal::isToBeReversed(const PointerSlave& device) const {
    return device.isTouchpad ? wanted_.reversesContinuous : wanted_.reversesLines;
}

bool ScrollReversal::isAnythingLeft() const {
    return isAnythingWanted() ||
           std::any_of(devices_.begin(), devices_.end(),
                       [](const auto& each) { return each.second.isUnsettled(); });
}

void ScrollReversal::settleDevices() {
    haveDevicesChanged_ = false;
    slaves_ = queryPointerSlaves(*connection_);
    std::erase_if(devices_, [this](const auto& each) {
        return std::none_of(slaves_.begin(), slaves_.end(),
                            [&](const auto& slave) { return slave.id == each.first; });
    });
    for (const PointerSlave& slave : slaves_) {
        settleDevice(slave);
    }
    publish();
    if (connection_->isBroken()) {
        return; // the notifier tells of it, or the next change
    }
    if (isAnythingLeft()) {
        listen();
    } else {
        connection_->sync();
        disconnect();
    }
}

/// Null for one that is to be left as it is, and always was.
DeviceReversal* ScrollReversal::reversalOf(const PointerSlave& device) {
    if (const auto found = devices_.find(device.id); found != devices_.end()) {
        return &found->second;
    }
    if (!isToBeReversed(device) && !deviceNumbers(*connection_, device.id, atoms_->before)) {
        return nullptr;
    }
    const auto setting = DirectionSetting::of(*connection_, *atoms_, device);
    if (!setting) {
        sayUnchangeable(device);
        return nullptr;
    }
    listen();
    if (setting->isButtonMap()) {
        listenToMap(device.id);
    }
    return &devices_.try_emplace(device.id, *connection_, *atoms_, device, *setting).first->second;
}

void ScrollReversal::sayUnchangeable(const PointerSlave& device) {
    if (device.hasAxes &&
        std::find(unchangeable_.begin(), unchangeable_.end(), device.name) == unchangeable_.end()) {
        unchangeable_.push_back(device.name);
        diagnostics_.line(
            "⚠️ " + device.name +
            " cannot be made to scroll the other way: its driver has no such setting");
    }
}

void ScrollReversal::settleDevice(const PointerSlave& device) {
    DeviceReversal* reversal = reversalOf(device);
    if (reversal == nullptr) {
        return;
    }
    const bool wasBusy = reversal->isBusy();
    reversal->setEnabled(device.isEnabled);
    reversal->settle(isToBeReversed(device), diagnostics_);
    if (reversal->isBusy() && !wasBusy) {
        listenToReleases(device.id, true);
        reversal->settle(isToBeReversed(device), diagnostics_); // it may just have gone up
    }
    if (wasBusy && !reversal->isBusy()) {
        listenToReleases(device.id, false);
    }
}

void ScrollReversal::publish() {
    std::array<bool, ReversedDevices::mostDevices> areReversed{};
    bool areAll = true;
    bool isAny = false;
    for (const PointerSlave& slave : slaves_) {
        const auto found = devices_.find(slave.id);
        const bool isReversed = found != devices_.end() && found->second.isReversed();
        if (slave.id < areReversed.size()) {
            areReversed[slave.id] = isReversed;
        }
        if (slave.isPlainWheel && slave.isEnabled) {
            areAll = areAll && isReversed;
            isAny = isAny || isReversed;
        }
    }
    using enum ReversedDevices::Plain;
    reversed_.set(areReversed, !isAny ? none : areAll ? all : some);
    reversed_.noteChange();
}

} // namespace quillon
