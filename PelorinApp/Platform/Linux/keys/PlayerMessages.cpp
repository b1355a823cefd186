#include "Platform/Linux/keys/PlayerMessages.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include <dbus/dbus.h>

namespace quillon {

void MessageRelease::operator()(DBusMessage* message) const { dbus_message_unref(message); }

namespace players {

namespace {

constexpr const char* path = "/org/mpris/MediaPlayer2";
constexpr const char* playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr std::string_view prefix = "org.mpris.MediaPlayer2.";
constexpr std::string_view relay = "org.mpris.MediaPlayer2.playerctld";

OwnedMessage call(const char* to, const char* where, const char* interface, const char* method,
                  const char* argument = nullptr) {
    OwnedMessage message(dbus_message_new_method_call(to, where, interface, method));
    dbus_message_set_auto_start(message.get(), 0);
    if (argument != nullptr) {
        dbus_message_append_args(message.get(), DBUS_TYPE_STRING,
                                 static_cast<const void*>(&argument), DBUS_TYPE_INVALID);
    }
    return message;
}

OwnedMessage callBus(const char* method, const char* argument = nullptr) {
    return call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, method, argument);
}

/// Empty when there is something else.
std::string_view text(DBusMessageIter& at) {
    const char* value = "";
    if (const int type = dbus_message_iter_get_arg_type(&at);
        type == DBUS_TYPE_STRING || type == DBUS_TYPE_OBJECT_PATH) {
        dbus_message_iter_get_basic(&at, static_cast<void*>(&value));
    }
    return value;
}

std::optional<bool> truth(DBusMessageIter& at) {
    if (dbus_message_iter_get_arg_type(&at) != DBUS_TYPE_BOOLEAN) {
        return std::nullopt;
    }
    dbus_bool_t value = 0;
    dbus_message_iter_get_basic(&at, &value);
    return value != 0;
}

std::optional<PlaybackStatus> statusOf(std::string_view word) {
    if (word == "Playing") {
        return PlaybackStatus::playing;
    }
    if (word == "Paused") {
        return PlaybackStatus::paused;
    }
    return word == "Stopped" ? std::optional(PlaybackStatus::stopped) : std::nullopt;
}

constexpr std::array<std::string_view, 5> followed{"PlaybackStatus", "CanControl", "CanPlay",
                                                   "CanGoNext", "CanGoPrevious"};

/// Calls `use` at each element of the array there, if it is one.
template <class Use>
void forEach(DBusMessageIter& array, const Use& use) {
    if (dbus_message_iter_get_arg_type(&array) != DBUS_TYPE_ARRAY) {
        return;
    }
    DBusMessageIter element{};
    dbus_message_iter_recurse(&array, &element);
    for (; dbus_message_iter_get_arg_type(&element) != DBUS_TYPE_INVALID;
         dbus_message_iter_next(&element)) {
        use(element);
    }
}

PlayerFacts factsAt(DBusMessageIter& dictionary) {
    PlayerFacts facts;
    forEach(dictionary, [&facts](DBusMessageIter& element) {
        if (dbus_message_iter_get_arg_type(&element) != DBUS_TYPE_DICT_ENTRY) {
            return;
        }
        DBusMessageIter entry{};
        DBusMessageIter value{};
        dbus_message_iter_recurse(&element, &entry);
        const std::string_view key = text(entry);
        if (dbus_message_iter_next(&entry) == 0 ||
            dbus_message_iter_get_arg_type(&entry) != DBUS_TYPE_VARIANT) {
            return;
        }
        dbus_message_iter_recurse(&entry, &value);
        if (key == "PlaybackStatus") {
            facts.status = statusOf(text(value));
        } else if (key == "CanControl") {
            facts.canControl = truth(value);
        } else if (key == "CanPlay") {
            facts.canPlay = truth(value);
        } else if (key == "CanGoNext") {
            facts.canGoNext = truth(value);
        } else if (key == "CanGoPrevious") {
            facts.canGoPrevious = truth(value);
        }
    });
    return facts;
}

std::string sender(DBusMessage& message) {
    const char* name = dbus_message_get_sender(&message);
    return name == nullptr ? "" : name;
}

} // namespace

OwnedMessage hello() { return callBus("Hello"); }

std::vector<OwnedMessage> subscriptions() {
    std::vector<OwnedMessage> messages;
    for (const char* rule :
         {"type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
          "member='NameOwnerChanged',arg0namespace='org.mpris.MediaPlayer2'",
          "type='signal',interface='org.freedesktop.DBus.Properties',member='PropertiesChanged',"
          "path='/org/mpris/MediaPlayer2',arg0='org.mpris.MediaPlayer2.Player'"}) {
        messages.push_back(callBus("AddMatch", rule));
        dbus_message_set_no_reply(messages.back().get(), 1);
    }
    return messages;
}

OwnedMessage listNames() { return callBus("ListNames"); }

OwnedMessage askFacts(const std::string& player) {
    return call(player.c_str(), path, DBUS_INTERFACE_PROPERTIES, "GetAll", playerInterface);
}

OwnedMessage command(const std::string& player, MediaCommand command) {
    const char* method = command == MediaCommand::playPause ? "PlayPause"
                         : command == MediaCommand::next    ? "Next"
                                                            : "Previous";
    return call(player.c_str(), path, playerInterface, method);
}

bool isPlayer(std::string_view name) {
    return name.starts_with(prefix) && name.size() > prefix.size() && name != relay;
}

std::vector<std::string> namesIn(DBusMessage& reply) {
    std::vector<std::string> names;
    DBusMessageIter arguments{};
    if (dbus_message_iter_init(&reply, &arguments) != 0) {
        forEach(arguments, [&names](DBusMessageIter& element) {
            if (const auto name = text(element); isPlayer(name)) {
                names.emplace_back(name);
            }
        });
    }
    std::sort(names.begin(), names.end());
    return names;
}

PlayerFacts factsIn(DBusMessage& reply) {
    DBusMessageIter arguments{};
    return dbus_message_iter_init(&reply, &arguments) != 0 ? factsAt(arguments) : PlayerFacts{};
}

std::optional<Change> changeIn(DBusMessage& message) {
    DBusMessageIter arguments{};
    if (dbus_message_is_signal(&message, DBUS_INTERFACE_PROPERTIES, "PropertiesChanged") == 0 ||
        dbus_message_has_path(&message, path) == 0 ||
        dbus_message_iter_init(&message, &arguments) == 0 || text(arguments) != playerInterface ||
        dbus_message_iter_next(&arguments) == 0) {
        return std::nullopt;
    }
    Change change{.owner = sender(message), .facts = factsAt(arguments)};
    if (dbus_message_iter_next(&arguments) != 0) {
        forEach(arguments, [&change](DBusMessageIter& element) {
            const auto* const end = followed.end();
            change.isIncomplete =
                change.isIncomplete || std::find(followed.begin(), end, text(element)) != end;
        });
    }
    return change;
}

std::optional<Passing> passingIn(DBusMessage& message) {
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    if (dbus_message_is_signal(&message, DBUS_INTERFACE_DBUS, "NameOwnerChanged") == 0 ||
        sender(message) != DBUS_SERVICE_DBUS ||
        dbus_message_get_args(&message, nullptr, DBUS_TYPE_STRING, static_cast<void*>(&name),
                              DBUS_TYPE_STRING, static_cast<void*>(&before), DBUS_TYPE_STRING,
                              static_cast<void*>(&after), DBUS_TYPE_INVALID) == 0 ||
        !isPlayer(name)) {
        return std::nullopt;
    }
    return Passing{name, after};
}

bool isDisconnected(DBusMessage& message) {
    return dbus_message_is_signal(&message, DBUS_INTERFACE_LOCAL, "Disconnected") != 0;
}

bool wasNotHeard(DBusMessage& reply) {
    for (const char* name :
         {DBUS_ERROR_SERVICE_UNKNOWN, DBUS_ERROR_NAME_HAS_NO_OWNER, DBUS_ERROR_UNKNOWN_OBJECT,
          DBUS_ERROR_UNKNOWN_INTERFACE, DBUS_ERROR_UNKNOWN_METHOD, DBUS_ERROR_ACCESS_DENIED,
          DBUS_ERROR_LIMITS_EXCEEDED}) {
        if (dbus_message_is_error(&reply, name) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace players

} // namespace quillon
