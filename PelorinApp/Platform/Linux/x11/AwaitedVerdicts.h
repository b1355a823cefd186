#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/Linux/x11/CaughtPresses.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace quillon {

/// What monitors have heard of, kept back until it is known that nobody consumes it. Main thread
/// only.
class AwaitedVerdicts {
  public:
    struct Heard {
        MonitoredEvent event;
        std::uint16_t device = 0;
        CaughtPress press; // of a press that the holder could catch
    };

    /// `tell` gets what was not consumed, in order. `caught` outlives this object, which `tell`
    /// must not destroy.
    AwaitedVerdicts(CaughtPresses& caught, std::function<void(const MonitoredEvent&)> tell);

    /// Tells of it at once, unless it may yet be consumed, or something waits that came before it.
    void add(const Heard& heard);

    /// Forgets all that it knows.
    void clear();

  private:
    void ask();
    void settled(std::uint64_t question);
    [[nodiscard]] bool mayBeConsumed(const Heard& heard) const;
    void settle(const Heard& heard);
    void tell(const Heard& heard);

    CaughtPresses& caught_;
    std::function<void(const MonitoredEvent&)> tell_;
    std::deque<Heard> waiting_;              // the first may yet be consumed
    std::size_t asked_ = 0;                  // how many of them the answer will be about
    std::uint64_t question_ = 0;             // the number of the latest
    bool isAsking_ = false;                  // one at a time, however many events come
    std::vector<std::uint16_t> consumed_;    // devices whose latest left press was
    std::shared_ptr<AwaitedVerdicts*> self_; // what questions hold weakly
};

} // namespace quillon
