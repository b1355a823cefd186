#include "Platform/Linux/touch/DefaultTouchDevice.h"

#include "Platform/Linux/touch/ContactReader.h"

#include <algorithm>
#include <chrono>
#include <exception>

#include <pthread.h>
#include <signal.h>

namespace quillon {

namespace {

/// While it lives, threads that are started get no signals: they are for the program's own.
class NoSignals {
  public:
    NoSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;
    ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_{};
};

double uptime() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

bool DefaultTouchDevice::isUsable() const noexcept try {
    const auto directory = makeDirectory_();
    if (directory == nullptr) {
        return false;
    }
    const auto nodes = directory->list();
    return nodes.empty() ? directory->descriptor() >= 0
                         : std::any_of(nodes.begin(), nodes.end(), [&](const TouchpadNode& node) {
                               return directory->open(node).isOpen();
                           });
} catch (const std::exception&) {
    return false;
}

void DefaultTouchDevice::start() noexcept try {
    if (isOnOwnThread()) {
        isStarted_ = true; // before it has noticed that it was stopped
    }
    if (isStarted_) {
        return;
    }
    join();
    wakeUp_.emplace();
    isStarted_ = true;
    const NoSignals duringStart;
    thread_ = std::thread([this] { run(); });
} catch (const std::exception&) {
    isStarted_ = false; // without descriptors or threads to be had there are no contacts
    wakeUp_.reset();
}

void DefaultTouchDevice::stop() noexcept {
    isStarted_ = false;
    if (!isOnOwnThread()) {
        join();
    }
}

void DefaultTouchDevice::join() {
    if (thread_.joinable()) {
        isJoined_ = true;
        wakeUp_->wake();
        thread_.join();
        isJoined_ = false;
    }
    isStarted_ = false; // whatever a callback has wanted meanwhile
    wakeUp_.reset();
}

void DefaultTouchDevice::run() noexcept {
    threadId_ = std::this_thread::get_id();
    try {
        if (const auto directory = makeDirectory_()) {
            ContactReader reader(*directory, [this](int contacts) { send(contacts); });
            reader.run(wakeUp_->descriptor(), [this] { return !mayReport(); });
        }
    } catch (const std::exception&) {
        // Out of memory. What was told last holds no longer:
    }
    if (contacts_ != 0) {
        send(0);
    }
    isStarted_ = false;
    threadId_ = std::thread::id();
}

void DefaultTouchDevice::send(int contacts) {
    const ContactFrameCallback callback = callback_;
    if (mayReport() && callback != nullptr) {
        contacts_ = contacts;
        callback(this, nullptr, contacts, uptime(), ++frames_);
    }
}

} // namespace quillon
