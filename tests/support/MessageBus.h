#pragma once

#include "support/ChildProgram.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace quillon {

/// A session bus at this socket, which lives as long as this object.
class MessageBus {
  public:
    explicit MessageBus(const std::string& socket)
        : address_("unix:path=" + socket), daemon_(start()) {}

    [[nodiscard]] const std::string& address() const { return address_; }

    void kill() { daemon_->end(); }
    void restart() { daemon_ = start(); }
    void stop() const { daemon_->signal(SIGSTOP); }
    void resume() const { daemon_->signal(SIGCONT); }

  private:
    [[nodiscard]] std::unique_ptr<ChildProgram> start() const {
        auto daemon = std::make_unique<ChildProgram>(
            "dbus-daemon", QStringList{"--session", "--nofork", "--nopidfile", "--print-address=1",
                                       "--address=" + QString::fromStdString(address_)});
        if (!daemon->nextLine().startsWith(QString::fromStdString(address_))) {
            throw std::runtime_error("dbus-daemon did not start: " + daemon->errors());
        }
        return daemon;
    }

    std::string address_;
    std::unique_ptr<ChildProgram> daemon_;
};

} // namespace quillon
