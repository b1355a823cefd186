#pragma once

#include "Platform/RunLoop.h"

#include <QDBusConnection>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace quillon {

/// A connection to the session's bus that is made in the background: a bus may take its time.
class BusConnection {
  public:
    /// `connected` is called on the main thread, once, when there is a connection; never when
    /// there is none, as with an empty address.
    BusConnection(RunLoop& runLoop, const std::string& address, std::function<void()> connected);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    /// Only once it is connected.
    [[nodiscard]] QDBusConnection& connection() { return *connection_; }

  private:
    std::function<void()> connected_;
    std::optional<QDBusConnection> connection_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::jthread connecting_;
};

} // namespace quillon
