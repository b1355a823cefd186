#include "Platform/Linux/session/InstanceCaller.h"

#include "Platform/Linux/session/InstanceNames.h"
#include "Platform/Linux/session/SessionBus.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <initializer_list>
#include <utility>

#include <dbus/dbus.h>

namespace quillon {

namespace {

using Outcome = InstanceCaller::Outcome;

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int patience = 5000; // milliseconds
constexpr milliseconds patienceWithEnd{5000};

/// How long an instance may be silent while something is installed until it is asked whether it is
/// still there.
constexpr milliseconds longestSilence{3000};

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* ownerChanges =
    "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
    "member='NameOwnerChanged',arg0='com.pelorin.PelorinApp'";

struct Release {
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using OwnedMessage = std::unique_ptr<DBusMessage, Release>;

struct Forget {
    void operator()(DBusPendingCall* call) const {
        dbus_pending_call_cancel(call);
        dbus_pending_call_unref(call);
    }
};
using OwnedCall = std::unique_ptr<DBusPendingCall, Forget>;

class Error {
  public:
    Error() { dbus_error_init(&error_); }
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;
    ~Error() { dbus_error_free(&error_); }

    [[nodiscard]] DBusError* get() { return &error_; }
    [[nodiscard]] std::string text() const {
        return error_.message == nullptr ? "" : error_.message;
    }
    [[nodiscard]] bool is(std::initializer_list<const char*> names) const {
        for (const char* name : names) {
            if (dbus_error_has_name(&error_, name) != 0) {
                return true;
            }
        }
        return false;
    }

  private:
    DBusError error_{};
};

Outcome outcomeOf(const Error& error) {
    // Nobody has the name, the bus is gone, or it lets us see nobody.
    if (error.is({DBUS_ERROR_SERVICE_UNKNOWN, DBUS_ERROR_NAME_HAS_NO_OWNER, DBUS_ERROR_DISCONNECTED,
                  DBUS_ERROR_ACCESS_DENIED})) {
        return Outcome::notRunning;
    }
    // Also of an instance that ended meanwhile.
    if (error.is({DBUS_ERROR_NO_REPLY, DBUS_ERROR_TIMEOUT, DBUS_ERROR_TIMED_OUT})) {
        return Outcome::noAnswer;
    }
    return Outcome::refused;
}

/// What is answered is a text or nothing.
InstanceCaller::Answer answerOf(DBusMessage* reply) {
    const char* text = "";
    dbus_message_get_args(reply, nullptr, DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    return {Outcome::done, text};
}

OwnedMessage callTo(const char* interface, const char* method) {
    OwnedMessage message(dbus_message_new_method_call(InstanceNames::service, InstanceNames::path,
                                                      interface, method));
    dbus_message_set_auto_start(message.get(), 0); // it is this process that would be started
    return message;
}

void appendText(DBusMessageIter& dictionary, const char* key, const char* value) {
    DBusMessageIter entry{};
    DBusMessageIter variant{};
    dbus_message_iter_open_container(&dictionary, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
    dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, static_cast<const void*>(&key));
    dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, "s", &variant);
    dbus_message_iter_append_basic(&variant, DBUS_TYPE_STRING, static_cast<const void*>(&value));
    dbus_message_iter_close_container(&entry, &variant);
    dbus_message_iter_close_container(&dictionary, &entry);
}

} // namespace

void InstanceCaller::Close::operator()(DBusConnection* connection) const {
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

InstanceCaller::InstanceCaller() {
    if (!hasSessionBus()) {
        return;
    }
    Error error;
    connection_.reset(dbus_connection_open_private(sessionBusAddress().c_str(), error.get()));
    if (!connection_) {
        return;
    }
    dbus_connection_set_exit_on_disconnect(connection_.get(), 0);
    if (dbus_bus_register(connection_.get(), error.get()) == 0) {
        connection_.reset();
    }
}

InstanceCaller::Answer InstanceCaller::activate() {
    const OwnedMessage message = callTo(InstanceNames::application, "Activate");
    DBusMessageIter arguments{};
    DBusMessageIter dictionary{};
    dbus_message_iter_init_append(message.get(), &arguments);
    dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &dictionary);
    for (const auto& [key, variable] :
         std::array{std::pair("desktop-startup-id", "DESKTOP_STARTUP_ID"),
                    std::pair("activation-token", "XDG_ACTIVATION_TOKEN")}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0' && dbus_validate_utf8(value, nullptr) != 0) {
            appendText(dictionary, key, value);
        }
    }
    dbus_message_iter_close_container(&arguments, &dictionary);
    return call(message.get());
}

InstanceCaller::Answer InstanceCaller::showVolumeLevel(double percent) {
    const OwnedMessage message = callTo(InstanceNames::development, "ShowVolumeLevel");
    DBusMessageIter arguments{};
    dbus_message_iter_init_append(message.get(), &arguments);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_DOUBLE, &percent);
    return call(message.get());
}

InstanceCaller::Answer InstanceCaller::toolStatus() {
    return call(callTo(InstanceNames::tools, "Status").get());
}

InstanceCaller::Answer InstanceCaller::performOnTool(ToolVerb verb, const std::string& id) {
    const char* text = id.c_str();
    if (dbus_validate_utf8(text, nullptr) == 0) {
        return {Outcome::refused, "no tool has an id that is not UTF-8"};
    }
    const bool isSwitch = verb == ToolVerb::enable || verb == ToolVerb::disable;
    const OwnedMessage message =
        callTo(InstanceNames::tools, isSwitch                    ? "SetEnabled"
                                     : verb == ToolVerb::install ? "Install"
                                                                 : "Uninstall");
    DBusMessageIter arguments{};
    dbus_message_iter_init_append(message.get(), &arguments);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, static_cast<const void*>(&text));
    if (isSwitch) {
        const dbus_bool_t on = verb == ToolVerb::enable ? 1 : 0;
        dbus_message_iter_append_basic(&arguments, DBUS_TYPE_BOOLEAN, &on);
    }
    auto answer = verb == ToolVerb::install ? callAndAwait(message.get()) : call(message.get());
    return answer.outcome == Outcome::noAnswer && !hasOwner()
               ? Answer{Outcome::refused, "Quillon ended before it had answered"}
               : answer;
}

InstanceCaller::Answer InstanceCaller::quit() {
    if (!connection_) {
        return {Outcome::notRunning, {}};
    }
    dbus_bus_add_match(connection_.get(), ownerChanges, nullptr); // without a wait for the answer
    auto answer = call(callTo(InstanceNames::tools, "Quit").get());
    if (answer.outcome == Outcome::notRunning || answer.outcome == Outcome::refused) {
        return answer;
    }
    // One that ends may not get round to answering.
    const auto deadline = answer.outcome == Outcome::noAnswer
                              ? steady_clock::now()
                              : steady_clock::now() + patienceWithEnd;
    while (hasOwner()) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now()).count();
        if (left <= 0 ||
            dbus_connection_read_write_dispatch(connection_.get(), static_cast<int>(left)) == 0) {
            return {Outcome::noAnswer, {}};
        }
    }
    return {Outcome::done, {}};
}

bool InstanceCaller::hasOwner() {
    if (!connection_) {
        return false;
    }
    const OwnedMessage message(
        dbus_message_new_method_call(busName, "/org/freedesktop/DBus", busName, "NameHasOwner"));
    const char* name = InstanceNames::service;
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID);
    const OwnedMessage reply(dbus_connection_send_with_reply_and_block(
        connection_.get(), message.get(), patience, nullptr));
    dbus_bool_t has = 1;
    return !reply ||
           dbus_message_get_args(reply.get(), nullptr, DBUS_TYPE_BOOLEAN, &has,
                                 DBUS_TYPE_INVALID) == 0 ||
           has != 0;
}

InstanceCaller::Answer InstanceCaller::call(DBusMessage* message) {
    if (!connection_) {
        return {Outcome::notRunning, {}};
    }
    Error error;
    const OwnedMessage reply(dbus_connection_send_with_reply_and_block(connection_.get(), message,
                                                                       patience, error.get()));
    return reply ? answerOf(reply.get()) : Answer{outcomeOf(error), error.text()};
}

InstanceCaller::Answer InstanceCaller::callAndAwait(DBusMessage* message) {
    if (auto answer = toolStatus(); answer.outcome != Outcome::done) {
        return answer;
    }
    DBusPendingCall* sent = nullptr;
    dbus_connection_send_with_reply(connection_.get(), message, &sent, DBUS_TIMEOUT_INFINITE);
    if (sent == nullptr) {
        return {Outcome::noAnswer, {}}; // the bus has gone
    }
    const OwnedCall pending(sent);
    auto heardOf = steady_clock::now();
    while (dbus_pending_call_get_completed(pending.get()) == 0) {
        const auto silence = steady_clock::now() - heardOf;
        if (silence >= longestSilence) {
            if (auto answer = toolStatus(); answer.outcome != Outcome::done) {
                return answer;
            }
            heardOf = steady_clock::now();
            continue;
        }
        const auto left = std::chrono::ceil<milliseconds>(longestSilence - silence).count();
        if (dbus_connection_read_write_dispatch(connection_.get(), static_cast<int>(left)) == 0) {
            return {Outcome::noAnswer, {}};
        }
    }
    const OwnedMessage reply(dbus_pending_call_steal_reply(pending.get()));
    Error error;
    return dbus_set_error_from_message(error.get(), reply.get()) == 0
               ? answerOf(reply.get())
               : Answer{outcomeOf(error), error.text()};
}

} // namespace quillon
