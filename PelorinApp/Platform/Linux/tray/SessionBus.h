#pragma once

#include "Platform/RunLoop.h"

#include <QDBusConnection>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <thread>

namespace quillon {

/// The address of the session's bus; nothing when there is none, so that none is started.
[[nodiscard]] QString sessionBusAddress();

/// A connection to the session's bus that is made in the background: a bus may take its time.
class SessionBus {
  public:
    /// `connected` is called on the main thread, once, when there is a connection; never when
    /// there is none.
    SessionBus(RunLoop& runLoop, std::function<void()> connected);
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus();

    /// Only once it is connected.
    [[nodiscard]] QDBusConnection& connection() { return *connection_; }

  private:
    std::function<void()> connected_;
    std::optional<QDBusConnection> connection_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::jthread connecting_;
};

} // namespace quillon
