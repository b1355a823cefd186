#pragma once

#include "Platform/Linux/keys/PlayerMessages.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <dbus/dbus.h>
#include <poll.h>

namespace quillon {

/// A connection to a message bus that never waits for it: whoever owns it polls. One thread only.
class BusLink {
  public:
    /// Gets everything that comes, also the library's word that the connection is lost, which is
    /// the last. Must not destroy the link.
    using Handler = std::function<void(DBusMessage&)>;

    /// Null when nobody listens there. The bus does not know the connection before it is greeted.
    static std::unique_ptr<BusLink> open(const std::string& address, Handler handler);
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;
    ~BusLink();

    /// The serial that the answer will name; 0 when it cannot be sent.
    std::uint32_t send(const OwnedMessage& message);

    /// Appends what is to be polled, the same each time until handle() was called.
    void addDescriptors(std::vector<pollfd>& descriptors) const;

    /// Does what is to be done, after a poll of those descriptors.
    void handle(std::span<const pollfd> descriptors);

  private:
    BusLink(DBusConnection* connection, Handler handler);

    static DBusHandlerResult filter(DBusConnection* connection, DBusMessage* message, void* link);
    [[nodiscard]] std::vector<DBusWatch*> enabledWatches() const;

    struct Close {
        void operator()(DBusConnection* connection) const;
    };
    Handler handler_;
    std::vector<DBusWatch*> watches_;
    std::unique_ptr<DBusConnection, Close> connection_;
};

} // namespace quillon
