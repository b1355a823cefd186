#pragma once

#include "Platform/Event.h"
#include "Platform/Sender.h"

#include <memory>
#include <optional>

namespace quillon {

/// A regular application shows itself among the running ones; an accessory has only what it puts
/// on the screen itself.
enum class ActivationPolicy { regular, accessory, prohibited };

/// What the system tells the application. Main thread only.
class ApplicationDelegate {
  public:
    virtual ~ApplicationDelegate() = default;

    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationDidBecomeActive() = 0;
    [[nodiscard]] virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;

    /// The user has started the program that is running already.
    virtual void applicationShouldHandleReopen() = 0;

    /// The program is about to end: what is not yet on the disk can still get there.
    virtual void applicationWillTerminate() = 0;
};

/// The process as the system sees it. Main thread only.
class Application {
  public:
    virtual ~Application() = default;

    virtual void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// The event that is being handled; nothing when something else made the code run.
    [[nodiscard]] virtual std::optional<EventType> currentEvent() const = 0;

    /// Ends the program, in good order, once the present call has returned. Sender may be null.
    virtual void terminate(Sender* sender) = 0;
};

} // namespace quillon
