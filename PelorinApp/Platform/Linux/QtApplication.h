#pragma once

#include "Platform/Application.h"
#include "Platform/Linux/tray/CurrentEvent.h"

#include <QObject>

#include <memory>

namespace quillon {

/// The process as Qt runs it. A QGuiApplication must exist first.
class QtApplication final : public Application {
  public:
    /// `currentEvent` must outlive this object.
    explicit QtApplication(const CurrentEvent& currentEvent);

    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;

    /// Every window of the program keeps itself out of taskbars, so there is nothing to be done.
    void setActivationPolicy(ActivationPolicy policy) override;

    [[nodiscard]] std::optional<EventType> currentEvent() const override;
    void terminate(Sender* sender) override;

    /// To be called once, right before the event loop begins.
    void finishLaunching();

    /// Somebody has started the program again.
    void reopen();

    /// To be called when the program is about to end, at least once.
    void willTerminate();

  private:
    void tellIfActive(Qt::ApplicationState state);

    std::weak_ptr<ApplicationDelegate> delegate_;
    const CurrentEvent& currentEvent_;
    QObject receiver_; // last: its connections end first
};

} // namespace quillon
