#pragma once

#include "Platform/Linux/audio/OutputSink.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <pulse/context.h>
#include <pulse/operation.h>
#include <pulse/subscribe.h>

namespace quillon {

/// The connection to the sound server that this session's variables, files and X server name. It is
/// made when it is first needed, and anew after a loss: it takes 1 or 2 ms, so nothing needs to
/// watch for a server that returns. No server is ever started for it.
///
/// On the loop's thread only. Every answer comes once, and on that thread: also when the connection
/// is lost, or the server has not answered for half a minute.
class PulseServer {
  public:
    using OnSink = std::function<void(const std::optional<OutputSink>&)>;
    using OnDone = std::function<void(bool isDone)>;

    struct Context {
        pa_mainloop_api& api;
        std::function<void(std::function<void()>)> later;     // runs it on the same thread
        std::function<void()> lost;                           // all that is known is void
        std::function<void(std::uint32_t index)> sinkChanged; // or it is gone; while watched
    };

    explicit PulseServer(Context context) : context_(std::move(context)) {}

    /// Answers when there is a connection, or none can be had. Not to be called from an answer.
    void connect(OnDone answer);

    /// For ever; everything that is still to be answered fails.
    void close();

    void askDefaultSink(OnSink answer);
    void askSink(std::uint32_t index, OnSink answer);
    void setVolume(std::uint32_t index, const pa_cvolume& volume, OnDone answer);
    void setMute(std::uint32_t index, bool isMuted, OnDone answer);

    /// Whether every change of a sink is reported. The server wakes this process for each.
    void watchSinks(bool isWatched);

  private:
    using Clock = std::chrono::steady_clock;

    void beginConnection();
    void stateChanged();
    void drop();

    /// There is no default sink, as some servers tell one connection, for good, and no other when a
    /// sink has gone: the next question is asked by a new one.
    void doubt();
    void answerWaiting(bool isConnected);
    [[nodiscard]] pa_context_state_t state() const;

    Context context_;
    pa_context* connection_ = nullptr;
    bool isClosed_ = false;
    bool isWatched_ = false;
    std::optional<Clock::time_point> failed_; // when a connection could not be had
    Clock::time_point connected_;
    std::vector<OnDone> waiting_;
};

} // namespace quillon
