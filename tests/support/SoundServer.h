#pragma once

#include "support/ChildProgram.h"
#include "support/TemporaryFolder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A place for PulseAudio servers of a test's own, where this process looks for one as long as this
/// object lives. None runs before start(). What is asked about it is asked through pactl.
class SoundServer {
  public:
    SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer();

    /// Until it answers. It has these sinks, the first of them the default one.
    void start(const std::vector<std::string>& sinks = {"speakers"});

    void kill();
    void stop() const { daemon_->signal(SIGSTOP); }
    void resume() const { daemon_->signal(SIGCONT); }

    /// The words of a pactl command; answers what it prints. Throws when it fails.
    static std::string pactl(const std::string& words);

    /// Of a sink's channels, such as 65536.
    static std::vector<std::uint32_t> volumes(const std::string& sink = "speakers");
    static bool isMuted(const std::string& sink = "speakers");

  private:
    TemporaryFolder folder_;
    std::unique_ptr<ChildProgram> daemon_;
};

} // namespace quillon
