#include "Platform/Linux/keys/PlayerSession.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

bool contains(const std::vector<std::string>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

std::unique_ptr<PlayerSession> PlayerSession::open(const std::string& address) {
    std::unique_ptr<PlayerSession> session(new PlayerSession);
    session->link_ = BusLink::open(
        address, [raw = session.get()](DBusMessage& message) { raw->receive(message); });
    if (!session->link_) {
        return nullptr;
    }
    session->start();
    return session;
}

PlayerSession::~PlayerSession() {
    while (!orders_.empty()) {
        finish(orders_.front().sent != 0);
    }
}

/// All at once: the bus deals with them in order, so that no player slips in between.
void PlayerSession::start() {
    greeting_ = link_->send(players::hello());
    for (const OwnedMessage& subscription : players::subscriptions()) {
        link_->send(subscription);
    }
    listing_ = link_->send(players::listNames());
}

void PlayerSession::command(MediaCommand command, Done done) {
    orders_.push_back({.command = command, .done = std::move(done), .until = {}, .known = {}});
    if (orders_.size() == 1) {
        begin();
        proceed();
    }
}

/// By asking the bus who is there, which it answers when it has told of everything before.
void PlayerSession::begin() {
    orders_.front().until = Clock::now() + patience;
    isListed_ = false; // whatever the answer to an earlier question would be
    listing_ = link_->send(players::listNames());
}

std::optional<PlayerSession::Clock::time_point> PlayerSession::deadline() const {
    if (orders_.empty()) {
        return std::nullopt;
    }
    if (!isListed_ || orders_.front().sent != 0) {
        return orders_.front().until;
    }
    std::optional<Clock::time_point> first;
    for (const Question& question : questions_) {
        if (!question.isOverdue && (!first || question.until < *first)) {
            first = question.until;
        }
    }
    return first;
}

void PlayerSession::receive(DBusMessage& message) {
    if (players::isDisconnected(message)) {
        isLost_ = true;
        return;
    }
    if (const std::uint32_t serial = dbus_message_get_reply_serial(&message); serial != 0) {
        receiveReply(message, serial);
    } else if (const auto passing = players::passingIn(message)) {
        forget(passing->name);
        if (!passing->owner.empty()) {
            follow(passing->name, passing->owner);
        }
    } else if (const auto change = players::changeIn(message)) {
        players_.forOwner(change->owner, [this, &change](MediaPlayer& player) {
            players_.update(player, change->facts);
            if (change->isIncomplete) {
                (void)ask(player.name);
            }
        });
    } else {
        return;
    }
    proceed();
}

void PlayerSession::receiveReply(DBusMessage& reply, std::uint32_t serial) {
    const bool isError = dbus_message_get_type(&reply) == DBUS_MESSAGE_TYPE_ERROR;
    if (serial == greeting_) {
        isGreeted_ = !isError;
    } else if (serial == listing_) {
        isListed_ = true;
        for (const std::string& name : players::namesIn(reply)) {
            if (players_.find(name) == nullptr) {
                follow(name, {});
            }
        }
    } else if (!orders_.empty() && serial == orders_.front().sent) {
        receiveOutcome(reply);
    } else {
        const auto question =
            std::find_if(questions_.begin(), questions_.end(),
                         [serial](const Question& each) { return each.serial == serial; });
        if (question != questions_.end()) {
            const std::string player = question->player;
            questions_.erase(question);
            receiveFacts(reply, player);
        }
    }
}

void PlayerSession::receiveFacts(DBusMessage& reply, const std::string& name) {
    MediaPlayer* player = players_.find(name);
    if (player == nullptr) {
        return;
    }
    if (const char* owner = dbus_message_get_sender(&reply); owner != nullptr && *owner == ':') {
        player->owner = owner;
    }
    const bool isError = dbus_message_get_type(&reply) == DBUS_MESSAGE_TYPE_ERROR;
    if (!isError) {
        players_.update(*player, players::factsIn(reply));
    }
    if (!orders_.empty()) {
        auto& list = isError ? orders_.front().passedOver : orders_.front().known;
        list.push_back(name);
    }
}

void PlayerSession::receiveOutcome(DBusMessage& reply) {
    if (!players::wasNotHeard(reply)) {
        finish(true);
        return;
    }
    Order& order = orders_.front();
    order.sent = 0;
    order.passedOver.push_back(commanded_);
}

void PlayerSession::follow(const std::string& player, const std::string& owner) {
    players_.add(player, owner);
    (void)ask(player);
}

void PlayerSession::forget(const std::string& player) {
    players_.remove(player);
    std::erase_if(questions_, [&](const Question& each) { return each.player == player; });
}

bool PlayerSession::ask(const std::string& player) {
    const bool isAsked =
        std::any_of(questions_.begin(), questions_.end(),
                    [&player](const Question& each) { return each.player == player; });
    if (isAsked) {
        return true;
    }
    const auto serial = link_->send(players::askFacts(player));
    if (serial != 0) {
        questions_.push_back({player, Clock::now() + patience, serial});
    }
    return serial != 0;
}

bool PlayerSession::mayStillAnswer(std::string_view player) const {
    return std::any_of(questions_.begin(), questions_.end(), [player](const Question& each) {
        return each.player == player && !each.isOverdue;
    });
}

void PlayerSession::proceed() {
    const auto now = Clock::now();
    for (Question& question : questions_) {
        question.isOverdue = question.until <= now;
    }
    while (!orders_.empty() && advance()) {
    }
}

/// One step with the first order; false when there is something to be waited for.
bool PlayerSession::advance() {
    Order& order = orders_.front();
    if (order.sent != 0 || !isListed_) {
        if (Clock::now() < order.until) {
            return false;
        }
        finish(order.sent != 0);
        return true;
    }
    const auto& all = players_.all();
    const bool isIncomplete = std::any_of(all.begin(), all.end(), [this](const MediaPlayer& each) {
        return !each.facts.status && mayStillAnswer(each.name);
    });
    if (isIncomplete) {
        return false;
    }
    for (const Question& question : questions_) {
        if (question.isOverdue) { // the player hangs, under each of its names
            const MediaPlayer* player = players_.find(question.player);
            order.passedOver.push_back(question.player);
            order.passedOver.push_back(player->owner.empty() ? player->name : player->owner);
        }
    }
    MediaPlayer* target = players_.target(order.command, [&order](const MediaPlayer& player) {
        return !contains(order.passedOver, player.name) &&
               !contains(order.passedOver, player.owner);
    });
    if (target == nullptr) {
        finish(false);
        return true;
    }
    if (!contains(order.known, target->name)) {
        if (!ask(target->name)) {
            order.passedOver.push_back(target->name);
        }
        return !mayStillAnswer(target->name);
    }
    order.sent = link_->send(players::command(target->name, order.command));
    order.until = Clock::now() + patience;
    commanded_ = target->name;
    players_.markUsed(*target);
    if (order.sent == 0) {
        finish(false);
        return true;
    }
    return false;
}

void PlayerSession::finish(bool isTaken) {
    const Done done = std::move(orders_.front().done);
    orders_.pop_front();
    if (!orders_.empty()) {
        begin();
    }
    done(isTaken);
}

} // namespace quillon
