#include "Platform/Linux/tray/PrivateBus.h"

#include <csignal>
#include <stdexcept>

namespace quillon {

PrivateBus::PrivateBus() { begin(); }

PrivateBus::~PrivateBus() {
    resume();
    end();
}

void PrivateBus::begin() {
    daemon_.start(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
         QStringLiteral("--address=unix:path=") + folder_.filePath(QStringLiteral("bus"))});
    if (!daemon_.waitForStarted() || !daemon_.waitForReadyRead()) {
        throw std::runtime_error("dbus-daemon did not start");
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

void PrivateBus::end() {
    daemon_.kill();
    daemon_.waitForFinished();
}

void PrivateBus::stop() const { ::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP); }

void PrivateBus::resume() const { ::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT); }

} // namespace quillon
