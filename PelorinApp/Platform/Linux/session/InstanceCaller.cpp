#include "Platform/Linux/session/InstanceCaller.h"

#include "Platform/Linux/session/InstanceNames.h"
#include "Platform/Linux/session/SessionBus.h"

#include <initializer_list>

#include <dbus/dbus.h>

namespace quillon {

namespace {

using Outcome = InstanceCaller::Outcome;

constexpr int patience = 5000; // milliseconds

struct Release {
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using OwnedMessage = std::unique_ptr<DBusMessage, Release>;

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

InstanceCaller::Answer
InstanceCaller::activate(const std::map<std::string, std::string>& platformData) {
    const OwnedMessage message = callTo(InstanceNames::application, "Activate");
    DBusMessageIter arguments{};
    DBusMessageIter dictionary{};
    dbus_message_iter_init_append(message.get(), &arguments);
    dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &dictionary);
    for (const auto& [key, value] : platformData) {
        if (dbus_validate_utf8(value.c_str(), nullptr) != 0) {
            appendText(dictionary, key.c_str(), value.c_str());
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

InstanceCaller::Answer InstanceCaller::call(DBusMessage* message) {
    if (!connection_) {
        return {Outcome::notRunning, {}};
    }
    Error error;
    const OwnedMessage reply(dbus_connection_send_with_reply_and_block(connection_.get(), message,
                                                                       patience, error.get()));
    return reply ? Answer{Outcome::done, {}} : Answer{outcomeOf(error), error.text()};
}

} // namespace quillon
