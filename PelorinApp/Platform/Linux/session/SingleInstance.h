#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/session/InstanceHandlers.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace quillon {

/// Sees to it that the program runs once in a session: the instance that runs has a name on the
/// session bus, under which later starts find it. Main thread only.
///
/// Without a bus the program runs all the same, and nothing finds it. When the bus goes away, the
/// name is claimed again on a bus that listens in the same place of the file system; the folder is
/// watched for it, so that nothing is asked meanwhile.
///
/// settleSessionBus() must have been called.
class SingleInstance final : public QObject {
    Q_OBJECT

  public:
    using Handlers = InstanceHandlers;

    SingleInstance(Handlers handlers, Diagnostics& diagnostics);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance() override;

    /// Brings up the instance that runs. Answers the status with which to end: 0, or 1 with a line
    /// on `errors` when it does not answer in five seconds. Nothing when none runs. Needs no
    /// application object.
    [[nodiscard]] static std::optional<int> activateRunning(std::ostream& errors);

    /// Takes the name. False when another start has it: this one should activate that and end.
    [[nodiscard]] bool claim();

  Q_SIGNALS:
    void activated(std::optional<std::uint32_t> timestamp);
    void levelAskedFor(double percent);
    void lost();

  private Q_SLOTS:
    void busLost();

  private:
    enum class Claimed { yes, byAnother, noBus };

    Claimed connectAndClaim();
    void waitForBus();
    void tryAgain();

    Handlers handlers_;
    Diagnostics& diagnostics_;
    QFileSystemWatcher folderWatcher_;
    QTimer retry_;
    int triesLeft_ = 0;
};

} // namespace quillon
