#include "Platform/Linux/x11/InputHolder.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include <poll.h>

namespace quillon {

namespace {

using Clock = std::chrono::steady_clock;

/// The pointer is looked up at most this often. Mice report up to a thousand times a second, but
/// nobody reaches a band and turns the wheel within eight milliseconds.
constexpr std::chrono::milliseconds lookInterval{8};

std::string refusalLine(const std::vector<std::uint8_t>& buttons) {
    std::string line = "⚠️ Another program holds wheel button";
    line += buttons.size() == 1 ? "" : "s";
    for (const std::uint8_t button : buttons) {
        line += ' ';
        line += std::to_string(button);
    }
    line += "; trying again when the pointer next comes to the edge";
    return line;
}

} // namespace

/// The holder's thread at work on one connection.
class InputHolder::Session {
  public:
    Session(InputHolder& holder, X11Connection& connection)
        : holder_(holder), connection_(connection), grabs_(connection) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        if (grabs_.areTaken()) {
            grabs_.release();
        }
    }

    /// Returns when told to stop, or when the server is gone.
    void run() {
        for (;;) {
            Orders orders = holder_.takeOrders();
            if (orders.stop) {
                return;
            }
            if (orders.changed) {
                armed_ = std::move(orders.armed);
                geometry_ = std::move(orders.geometry);
                isLookDue_ = true;
            }
            adjustWatch();
            handleEvents();
            if (connection_.isBroken() || (isArmed() && (!watch_ || watch_->isBroken()))) {
                return;
            }
            if (isLookDue_ && Clock::now() >= nextLook_) {
                look();
                continue; // its round trips may have brought events in
            }
            waitForNews();
        }
    }

  private:
    [[nodiscard]] bool isArmed() const { return !armed_->empty() && geometry_ != nullptr; }

    void adjustWatch() {
        if (isArmed() && !watch_) {
            watch_ = PointerWatch::start();
        } else if (!isArmed()) {
            watch_.reset();
        }
        if (!isArmed() && grabs_.areTaken()) {
            grabs_.release();
        }
    }

    void handleEvents() {
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
            // The highest bit marks what another client sent: it is no input and froze nothing.
            if (event->response_type == XCB_BUTTON_PRESS) {
                decide(reinterpret_cast<const xcb_button_press_event_t&>(*event));
            }
        }
    }

    void decide(const xcb_button_press_event_t& press) {
        if (!isArmed()) {
            grabs_.pass(press);
            return;
        }
        const WheelPress wheel{press.detail, geometry_->toPoints(press.root_x, press.root_y)};
        bool timedOut = false;
        const Verdict verdict = holder_.exchange_.ask(wheel, timedOut, holder_.listener_.wakeMain);
        if (verdict == Verdict::consume) {
            grabs_.consume(press);
        } else {
            grabs_.pass(press);
        }
        if (timedOut) {
            // Nobody is there to answer: hold nothing until the taps are heard of again.
            armed_ = std::make_shared<ArmedPlaces>();
            adjustWatch();
        }
    }

    /// Takes or releases the wheel, as the pointer's place asks for.
    void look() {
        isLookDue_ = false;
        nextLook_ = Clock::now() + lookInterval;
        if (!isArmed()) {
            return;
        }
        const XcbOwned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
        if (!pointer) {
            return;
        }
        const Point place = geometry_->toPoints(pointer->root_x, pointer->root_y);
        const bool inBand =
            std::any_of(armed_->begin(), armed_->end(), [&](const ArmedAt& armedAt) {
                return armedAt(place, geometry_->frames());
            });
        if (inBand && !grabs_.areTaken()) {
            reportRefusals(grabs_.take());
        } else if (!inBand && grabs_.areTaken()) {
            grabs_.release();
        }
    }

    void reportRefusals(const std::vector<std::uint8_t>& refused) {
        if (!refused.empty() && !wasRefused_) {
            holder_.listener_.diagnostic(refusalLine(refused));
        }
        wasRefused_ = !refused.empty();
    }

    void waitForNews() {
        std::array<pollfd, 4> sources{{{holder_.ordersChanged_.descriptor(), POLLIN, 0},
                                       {connection_.descriptor(), POLLIN, 0},
                                       {-1, POLLIN, 0},
                                       {-1, POLLIN, 0}}};
        int timeout = -1;
        if (isLookDue_) {
            // Motion has been noticed already; more of it need not wake anybody until the look.
            const auto wait =
                std::chrono::ceil<std::chrono::milliseconds>(nextLook_ - Clock::now());
            timeout = static_cast<int>(std::max<std::int64_t>(wait.count(), 0));
        } else if (watch_) {
            const auto [raw, record] = watch_->descriptors();
            sources[2].fd = raw;
            sources[3].fd = record;
        }
        xcb_flush(connection_.get());
        poll(sources.data(), sources.size(), timeout);
        if (watch_ && watch_->drain()) {
            isLookDue_ = true;
        }
    }

    InputHolder& holder_;
    X11Connection& connection_;
    WheelGrabs grabs_;
    std::unique_ptr<PointerWatch> watch_;
    std::shared_ptr<const ArmedPlaces> armed_ = std::make_shared<ArmedPlaces>();
    X11Displays::GeometryRef geometry_;
    bool isLookDue_ = false;
    bool wasRefused_ = false;
    Clock::time_point nextLook_ = Clock::now();
};

InputHolder::InputHolder(TapExchange& exchange, Listener listener)
    : exchange_(exchange), listener_(std::move(listener)), thread_([this] { run(); }) {}

InputHolder::~InputHolder() {
    {
        const std::scoped_lock lock(mutex_);
        orders_.stop = true;
    }
    ordersChanged_.wake();
    thread_.join();
}

void InputHolder::setArmed(ArmedPlaces places) {
    {
        const std::scoped_lock lock(mutex_);
        orders_.armed = std::make_shared<const ArmedPlaces>(std::move(places));
        orders_.changed = true;
    }
    ordersChanged_.wake();
}

void InputHolder::setGeometry(X11Displays::GeometryRef geometry) {
    {
        const std::scoped_lock lock(mutex_);
        orders_.geometry = std::move(geometry);
        orders_.changed = true;
    }
    ordersChanged_.wake();
}

InputHolder::Orders InputHolder::takeOrders() {
    ordersChanged_.clear();
    const std::scoped_lock lock(mutex_);
    Orders orders = orders_;
    orders_.changed = false;
    return orders;
}

void InputHolder::run() {
    const auto connection = X11Connection::open();
    if (connection) {
        Session(*this, *connection).run();
    }
    const std::scoped_lock lock(mutex_);
    if (!orders_.stop) {
        listener_.lost();
    }
}

} // namespace quillon
