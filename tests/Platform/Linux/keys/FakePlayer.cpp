#include "FakePlayer.h"

#include <stdexcept>
#include <utility>

namespace quillon {

namespace {

constexpr const char* path = "/org/mpris/MediaPlayer2";
constexpr const char* interface = "org.mpris.MediaPlayer2.Player";

void appendFact(DBusMessageIter& dictionary, const char* key, int type, const char* signature,
                const void* value) {
    DBusMessageIter entry{};
    DBusMessageIter variant{};
    dbus_message_iter_open_container(&dictionary, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
    dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, static_cast<const void*>(&key));
    dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, signature, &variant);
    dbus_message_iter_append_basic(&variant, type, value);
    dbus_message_iter_close_container(&entry, &variant);
    dbus_message_iter_close_container(&dictionary, &entry);
}

} // namespace

FakePlayer::FakePlayer(const std::string& address, const std::string& name,
                       const std::string& status, Abilities abilities)
    : connection_(dbus_connection_open_private(address.c_str(), nullptr)), abilities_(abilities),
      status_(status) {
    if (connection_ == nullptr || dbus_bus_register(connection_, nullptr) == 0) {
        throw std::runtime_error("no bus for a player");
    }
    dbus_connection_set_exit_on_disconnect(connection_, 0);
    dbus_connection_add_filter(connection_, filter, this, nullptr);
    alsoNamed(name);
    thread_ = std::thread([this] { run(); });
}

FakePlayer::~FakePlayer() {
    {
        const std::scoped_lock lock(mutex_);
        ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
    dbus_connection_remove_filter(connection_, filter, this);
    dbus_connection_close(connection_);
    dbus_connection_unref(connection_);
}

void FakePlayer::alsoNamed(const std::string& name) {
    if (dbus_bus_request_name(connection_, ("org.mpris.MediaPlayer2." + name).c_str(), 0,
                              nullptr) != DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER) {
        throw std::runtime_error("no name for a player");
    }
}

std::vector<std::string> FakePlayer::commands() {
    const std::scoped_lock lock(mutex_);
    return commands_;
}

void FakePlayer::setStatus(const std::string& status, bool quietly) {
    const char* word = status.c_str();
    {
        const std::scoped_lock lock(mutex_);
        status_ = status;
    }
    if (quietly) {
        return;
    }
    DBusMessage* signal =
        dbus_message_new_signal(path, DBUS_INTERFACE_PROPERTIES, "PropertiesChanged");
    DBusMessageIter arguments{};
    DBusMessageIter array{};
    dbus_message_iter_init_append(signal, &arguments);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING,
                                   static_cast<const void*>(&interface));
    dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &array);
    appendFact(array, "PlaybackStatus", DBUS_TYPE_STRING, "s", static_cast<const void*>(&word));
    dbus_message_iter_close_container(&arguments, &array);
    dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "s", &array);
    dbus_message_iter_close_container(&arguments, &array);
    dbus_connection_send(connection_, signal, nullptr);
    dbus_message_unref(signal);
    // When the bus has answered this it has passed on the signal.
    dbus_bus_name_has_owner(connection_, DBUS_SERVICE_DBUS, nullptr);
}

void FakePlayer::setHanging(bool hangs) {
    std::unique_lock lock(mutex_);
    hangs_ = hangs;
    changed_.notify_all();
    changed_.wait(lock, [this, hangs] { return isAtWork_ != hangs; });
}

void FakePlayer::run() {
    constexpr int betweenLooks = 2; // milliseconds, whether it is to hang or to end
    while (!ends_) {
        std::unique_lock lock(mutex_);
        isAtWork_ = !hangs_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return !hangs_ || ends_; });
        isAtWork_ = true;
        changed_.notify_all();
        lock.unlock();
        if (dbus_connection_read_write_dispatch(connection_, betweenLooks) == 0) {
            hangs_ = true; // the bus is gone
        }
    }
}

DBusHandlerResult FakePlayer::filter(DBusConnection* /*connection*/, DBusMessage* message,
                                     void* player) {
    if (dbus_message_get_type(message) != DBUS_MESSAGE_TYPE_METHOD_CALL) {
        return DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
    }
    static_cast<FakePlayer*>(player)->answer(message);
    return DBUS_HANDLER_RESULT_HANDLED;
}

void FakePlayer::answer(DBusMessage* message) {
    const std::scoped_lock lock(mutex_);
    DBusMessage* reply = nullptr;
    if (dbus_message_is_method_call(message, DBUS_INTERFACE_PROPERTIES, "GetAll") != 0) {
        ++questions_;
        reply = dbus_message_new_method_return(message);
        DBusMessageIter arguments{};
        DBusMessageIter dictionary{};
        dbus_message_iter_init_append(reply, &arguments);
        dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &dictionary);
        appendFacts(dictionary);
        dbus_message_iter_close_container(&arguments, &dictionary);
    } else if (refuses_) {
        reply = dbus_message_new_error(message, DBUS_ERROR_UNKNOWN_METHOD, "not here");
    } else {
        commands_.emplace_back(dbus_message_get_member(message));
        if (hangsAtCommand_) {
            hangs_ = true;
            return;
        }
        reply = dbus_message_new_method_return(message);
    }
    dbus_connection_send(connection_, reply, nullptr);
    dbus_message_unref(reply);
}

void FakePlayer::appendFacts(DBusMessageIter& dictionary) {
    const char* word = status_.c_str();
    appendFact(dictionary, "PlaybackStatus", DBUS_TYPE_STRING, "s",
               static_cast<const void*>(&word));
    for (const auto& [name, can] :
         {std::pair("CanControl", abilities_.control), std::pair("CanPlay", abilities_.play),
          std::pair("CanGoNext", abilities_.next),
          std::pair("CanGoPrevious", abilities_.previous)}) {
        const dbus_bool_t value = can ? 1 : 0;
        appendFact(dictionary, name, DBUS_TYPE_BOOLEAN, "b", &value);
    }
}

} // namespace quillon
