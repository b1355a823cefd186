#pragma once

#include "Platform/EventMonitors.h"

namespace quillon {

/// Global monitors of the window toolkit. The system reports to them what is posted as well, so
/// events that bear the mark of this program are passed over.
class MacEventMonitors final : public EventMonitors {
  public:
    EventMonitorRef addGlobalMonitor(std::uint64_t mask, Handler handler,
                                     std::string_view owner) override;

    /// The system takes no monitor away: the handler is never called.
    void setInvalidationHandler(EventMonitor& monitor, std::function<void()> handler) override;
    void setArmed(EventMonitor& monitor, bool armed) override;
};

} // namespace quillon
