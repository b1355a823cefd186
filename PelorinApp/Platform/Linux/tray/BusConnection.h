#pragma once

#include "Platform/RunLoop.h"

#include <QDBusConnection>
#include <QFileSystemWatcher>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace quillon {

/// A connection to the session's bus that is made in the background: a bus may take its time.
/// Once lost it is made again when a bus listens at the same place of the file system; its folder
/// is watched for that, so that nothing is asked meanwhile. Main thread only.
class BusConnection {
  public:
    /// `connected` is called on the main thread each time that there is a new connection; never
    /// when there is none, as with an empty address. The run loop must outlive this object.
    BusConnection(RunLoop& runLoop, const std::string& address, std::function<void()> connected);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    /// Only once it is connected, and until the turn after it was lost.
    [[nodiscard]] QDBusConnection& connection() { return *connection_; }

    /// To be called when the connection says that it is.
    void lost();

  private:
    void connect();
    void finish(const QDBusConnection& made);
    void waitForBus();
    void tryAgain();
    void drop();

    RunLoop& runLoop_;
    std::string address_;
    std::function<void()> connected_;
    std::optional<QDBusConnection> connection_;
    std::unique_ptr<QFileSystemWatcher> folder_; // of the socket, while there is no bus
    bool isConnecting_ = false;
    int triesLeft_ = 0;
    TimerRef retry_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::jthread connecting_;
};

} // namespace quillon
