#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariantList>

#include <memory>
#include <string>

class QCoreApplication;

namespace quillon {

/// Calls the instance of the program that runs in this session, over a connection of its own. Works
/// with and without an application object; one can be made once this object is gone.
///
/// settleSessionBus() must have been called.
class InstanceCaller {
  public:
    InstanceCaller();
    InstanceCaller(const InstanceCaller&) = delete;
    InstanceCaller& operator=(const InstanceCaller&) = delete;
    ~InstanceCaller();

    enum class Outcome { done, notRunning, noAnswer, refused };
    struct Answer {
        Outcome outcome = Outcome::done;
        std::string error; // why it was refused, for the user
    };

    /// Waits for the answer, up to five seconds.
    [[nodiscard]] Answer call(const char* interface, const char* method,
                              const QVariantList& arguments);

    /// For a process that goes on. One that is about to end leaves it undone: the toolkit's thread
    /// would still be at it while what it needs is destroyed.
    void disconnect();

  private:
    std::unique_ptr<QCoreApplication> application_;
    QDBusConnection connection_;
};

} // namespace quillon
