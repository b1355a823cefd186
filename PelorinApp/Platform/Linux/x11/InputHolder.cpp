#include "Platform/Linux/x11/InputHolder.h"

#include <utility>

#include <poll.h>

namespace quillon {

namespace {

/// A connection that is closed again so soon is not made anew at once.
constexpr std::chrono::seconds shortLife{1};

} // namespace

InputHolder::InputHolder(TapExchange& exchange, PostedEvents& postedEvents,
                         CaughtPresses& caughtPresses, const ReversedDevices& reversed,
                         std::filesystem::path watchdog, Listener listener)
    : exchange_(exchange), postedEvents_(postedEvents), caughtPresses_(caughtPresses),
      reversed_(reversed), watchdog_(std::move(watchdog)), listener_(std::move(listener)),
      thread_([this] { run(); }) {}

InputHolder::~InputHolder() {
    order([](HolderOrders& orders) { orders.stop = true; });
    thread_.join();
    for (const auto& done : orders_.settled) {
        done();
    }
}

template <class Change>
void InputHolder::order(const Change& change) {
    {
        const std::scoped_lock lock(mutex_);
        change(orders_);
        orders_.changed = true;
    }
    ordersChanged_.wake();
}

void InputHolder::setTaps(bool exist, ArmedTaps armed) {
    auto places = std::make_shared<const ArmedTaps>(std::move(armed));
    order([&](HolderOrders& orders) {
        orders.hasTaps = exist;
        orders.armed = std::move(places);
    });
}

void InputHolder::setGeometry(X11Displays::GeometryRef geometry) {
    order([&](HolderOrders& orders) { orders.geometry = std::move(geometry); });
}

void InputHolder::post(PostedButton posted) {
    {
        const std::scoped_lock lock(mutex_);
        orders_.posts.push_back(posted); // no change of what is armed
    }
    ordersChanged_.wake();
}

void InputHolder::settle(std::function<void()> done) {
    {
        const std::scoped_lock lock(mutex_);
        orders_.settled.push_back(std::move(done));
    }
    ordersChanged_.wake();
}

void InputHolder::resume() {
    order([](HolderOrders& orders) { orders.isPanicked = false; });
}

HolderOrders InputHolder::takeOrders() {
    ordersChanged_.clear();
    const std::scoped_lock lock(mutex_);
    HolderOrders orders = orders_;
    orders_.changed = false;
    orders_.posts.clear();
    orders_.settled.clear();
    return orders;
}

void InputHolder::run() {
    const HolderHost host{
        .exchange = exchange_,
        .postedEvents = postedEvents_,
        .caughtPresses = caughtPresses_,
        .reversed = reversed_,
        .watchdog = watchdog_,
        .ordersDescriptor = ordersChanged_.descriptor(),
        .takeOrders = [this] { return takeOrders(); },
        .wakeMain = listener_.wakeMain,
        .diagnostic = listener_.diagnostic,
        .panic = [this] { panicked(); },
    };
    enum { working, closed, blind } last = working;
    for (;;) {
        const auto connection = X11Connection::open();
        if (!connection) {
            break;
        }
        if (last == closed) {
            // The watchdog does this to a program that was stopped; another program may, too.
            listener_.diagnostic(
                "⚠️ The X server closed the connection that holds input, and all "
                "was let go of; edge gestures work again");
        }
        if (last != working) {
            order([](HolderOrders&) {}); // the next session has yet to hear of them
        }
        const auto start = std::chrono::steady_clock::now();
        if (HolderSession(*connection, host).run()) {
            return;
        }
        if (connection->isBroken()) {
            last = closed;
        } else if (std::exchange(last, blind) != blind) {
            listener_.diagnostic("⚠️ The X server does not let the pointer be followed; trying "
                                 "again");
        }
        if (std::chrono::steady_clock::now() - start < shortLife && !pause()) {
            return;
        }
    }
    const std::scoped_lock lock(mutex_);
    if (!orders_.stop) {
        listener_.lost();
    }
}

void InputHolder::panicked() {
    {
        const std::scoped_lock lock(mutex_);
        orders_.isPanicked = true;
    }
    listener_.panic();
}

/// False when told to stop meanwhile.
bool InputHolder::pause() {
    const auto end = std::chrono::steady_clock::now() + shortLife;
    for (;;) {
        {
            const std::scoped_lock lock(mutex_);
            if (orders_.stop) {
                return false;
            }
        }
        const auto rest =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (rest.count() <= 0) {
            return true;
        }
        pollfd source{ordersChanged_.descriptor(), POLLIN, 0};
        poll(&source, 1, static_cast<int>(rest.count()));
        ordersChanged_.clear();
    }
}

} // namespace quillon
