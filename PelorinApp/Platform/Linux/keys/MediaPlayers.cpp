#include "Platform/Linux/keys/MediaPlayers.h"

#include "Platform/Linux/session/BusAddress.h"

#include <algorithm>
#include <filesystem>

#include <poll.h>
#include <pthread.h>

namespace quillon {

namespace {

// The socket's file is there a moment before the bus listens.
constexpr std::chrono::milliseconds betweenTries{100};
constexpr int triesPerChange = 10;

/// Without the identity of today's bus, which the next one does not have.
std::string lastingAddress(const std::string& address) {
    const auto socket = busSocket(address);
    return socket ? busAddress(*socket) : address;
}

} // namespace

MediaPlayers::MediaPlayers(const std::string& address) : address_(lastingAddress(address)) {
    if (!address_.empty()) {
        thread_ = std::thread([this] { run(); });
        pthread_setname_np(thread_.native_handle(), "media players");
    }
}

void MediaPlayers::command(MediaCommand command, Done done) {
    if (address_.empty()) {
        done(false);
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        commands_.emplace_back(command, std::move(done));
    }
    wakeUp_.wake();
}

void MediaPlayers::stop() {
    stops_ = true;
    wakeUp_.wake();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void MediaPlayers::run() {
    connect();
    while (!stops_) {
        takeCommands();
        dropLost();
        waitForSomething();
    }
    session_.reset();
}

void MediaPlayers::takeCommands() {
    std::vector<std::pair<MediaCommand, Done>> commands;
    {
        const std::scoped_lock lock(mutex_);
        commands.swap(commands_);
    }
    for (auto& [command, done] : commands) {
        // Nothing tells when some kinds of bus are back.
        if (!session_) {
            connect();
        }
        Done unlessStopped = [this, done = std::move(done)](bool isTaken) {
            if (!stops_) {
                done(isTaken);
            }
        };
        if (session_) {
            session_->command(command, std::move(unlessStopped));
        } else {
            unlessStopped(false);
        }
    }
}

/// Until the bus lets us in, the folder is watched.
void MediaPlayers::connect() {
    nextTry_.reset();
    const auto socket = busSocket(address_);
    if (!folder_ && socket && !socket->isAbstract) {
        folder_.emplace(std::filesystem::path(socket->path).parent_path());
    }
    session_ = PlayerSession::open(address_);
    if (!session_ && triesLeft_ > 0) {
        --triesLeft_;
        nextTry_ = Clock::now() + betweenTries;
    }
}

void MediaPlayers::dropLost() {
    if (!session_ || !session_->isLost()) {
        return;
    }
    const bool wasGreeted = session_->wasGreeted();
    session_.reset();
    if (wasGreeted) { // one that lets nobody in is left in peace until its folder changes
        connect();
    } else if (triesLeft_ > 0) {
        --triesLeft_;
        nextTry_ = Clock::now() + betweenTries;
    }
}

int MediaPlayers::timeout() const {
    auto until = session_ ? session_->deadline() : nextTry_;
    if (!until) {
        return -1;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

void MediaPlayers::waitForSomething() {
    std::vector<pollfd> polled{{wakeUp_.descriptor(), POLLIN, 0},
                               {folder_ ? folder_->descriptor() : -1, POLLIN, 0}};
    constexpr std::size_t ownDescriptors = 2;
    if (session_) {
        session_->link().addDescriptors(polled);
    }
    if (::poll(polled.data(), polled.size(), timeout()) < 0) {
        return;
    }
    if (polled[0].revents != 0) {
        wakeUp_.clear();
    }
    if (polled[1].revents != 0) {
        folder_->clear();
        triesLeft_ = triesPerChange;
        nextTry_ = Clock::now();
    }
    if (session_) {
        session_->link().handle(std::span(polled).subspan(ownDescriptors));
        session_->expire();
        if (session_->wasGreeted()) {
            folder_.reset();
            triesLeft_ = 0;
        }
    } else if (nextTry_ && Clock::now() >= *nextTry_) {
        connect();
    }
}

} // namespace quillon
