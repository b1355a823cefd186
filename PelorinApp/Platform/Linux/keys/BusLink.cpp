#include "Platform/Linux/keys/BusLink.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

std::vector<DBusWatch*>& listIn(void* data) { return *static_cast<std::vector<DBusWatch*>*>(data); }

dbus_bool_t addWatch(DBusWatch* watch, void* data) {
    listIn(data).push_back(watch);
    return 1;
}

void removeWatch(DBusWatch* watch, void* data) { std::erase(listIn(data), watch); }

short pollEvents(unsigned flags) {
    return static_cast<short>(((flags & DBUS_WATCH_READABLE) != 0 ? POLLIN : 0) |
                              ((flags & DBUS_WATCH_WRITABLE) != 0 ? POLLOUT : 0));
}

unsigned watchFlags(short events) {
    return ((events & POLLIN) != 0 ? unsigned{DBUS_WATCH_READABLE} : 0U) |
           ((events & POLLOUT) != 0 ? unsigned{DBUS_WATCH_WRITABLE} : 0U) |
           ((events & POLLERR) != 0 ? unsigned{DBUS_WATCH_ERROR} : 0U) |
           ((events & POLLHUP) != 0 ? unsigned{DBUS_WATCH_HANGUP} : 0U);
}

} // namespace

void BusLink::Close::operator()(DBusConnection* connection) const {
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

std::unique_ptr<BusLink> BusLink::open(const std::string& address, Handler handler) {
    DBusConnection* connection = dbus_connection_open_private(address.c_str(), nullptr);
    return connection == nullptr
               ? nullptr
               : std::unique_ptr<BusLink>(new BusLink(connection, std::move(handler)));
}

BusLink::BusLink(DBusConnection* connection, Handler handler)
    : handler_(std::move(handler)), connection_(connection) {
    dbus_connection_set_exit_on_disconnect(connection, 0);
    dbus_connection_set_watch_functions(
        connection, addWatch, removeWatch, [](DBusWatch*, void*) {}, &watches_, nullptr);
    dbus_connection_add_filter(connection, filter, this, nullptr);
}

BusLink::~BusLink() {
    dbus_connection_remove_filter(connection_.get(), filter, this);
    connection_.reset(); // takes its watches out of the list
}

std::uint32_t BusLink::send(const OwnedMessage& message) {
    dbus_uint32_t serial = 0;
    return dbus_connection_send(connection_.get(), message.get(), &serial) != 0 ? serial : 0;
}

std::vector<DBusWatch*> BusLink::enabledWatches() const {
    std::vector<DBusWatch*> enabled;
    std::copy_if(watches_.begin(), watches_.end(), std::back_inserter(enabled),
                 [](DBusWatch* watch) { return dbus_watch_get_enabled(watch) != 0; });
    return enabled;
}

void BusLink::addDescriptors(std::vector<pollfd>& descriptors) const {
    for (DBusWatch* watch : enabledWatches()) {
        descriptors.push_back(
            {dbus_watch_get_unix_fd(watch), pollEvents(dbus_watch_get_flags(watch)), 0});
    }
}

void BusLink::handle(std::span<const pollfd> descriptors) {
    const auto polled = enabledWatches();
    for (std::size_t i = 0; i < std::min(polled.size(), descriptors.size()); ++i) {
        // What is done for one may be the end of another.
        const bool isThere =
            std::find(watches_.begin(), watches_.end(), polled[i]) != watches_.end();
        if (isThere && descriptors[i].revents != 0) {
            dbus_watch_handle(polled[i], watchFlags(descriptors[i].revents));
        }
    }
    while (dbus_connection_dispatch(connection_.get()) == DBUS_DISPATCH_DATA_REMAINS) {
    }
}

DBusHandlerResult BusLink::filter(DBusConnection* /*connection*/, DBusMessage* message,
                                  void* link) {
    static_cast<BusLink*>(link)->handler_(*message);
    return DBUS_HANDLER_RESULT_NOT_YET_HANDLED; // the library refuses what nobody serves
}

} // namespace quillon
