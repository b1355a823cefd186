#include "PulseTest.h"

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>

namespace quillon {
namespace {

class PulseFaults : public PulseTest {};

TEST_F(PulseFaults, WithoutAServerEveryCallFailsAtOnceUntilThereIsOne) {
    EXPECT_LT(duration([&] { EXPECT_FALSE(defaultDevice()); }), promptly);
    EXPECT_LT(duration([&] { EXPECT_FALSE(setVolume(2, 0.5F)); }), promptly);
    server_.start();
    const auto waited = untilIt([&] { return setVolume(0.25F); });
    ASSERT_TRUE(waited);
    EXPECT_LT(*waited, std::chrono::seconds(1));
    EXPECT_EQ(server_.volumes()[0], PA_VOLUME_NORM / 4);
}

TEST_F(PulseFaults, AServerThatDiesAndComesBackIsFound) {
    server_.start();
    for (int i = 0; i < 3; ++i) {
        const auto before = defaultDevice();
        ASSERT_TRUE(before);
        server_.kill();
        EXPECT_LT(duration([&] { EXPECT_FALSE(volume(*before)); }), promptly);
        server_.start();
        const auto waited = untilIt([&] { return defaultDevice().has_value(); });
        ASSERT_TRUE(waited);
        EXPECT_LT(*waited, std::chrono::seconds(1));
        EXPECT_FALSE(volume(*before)) << "another server's sink";
        EXPECT_TRUE(setVolume(0.5F));
    }
}

TEST_F(PulseFaults, OfAServerThatHangsOnlyTheFirstCallIsWaitedForUntilItGoesOn) {
    server_.start();
    const auto device = defaultDevice();
    ASSERT_TRUE(device);
    server_.stop();
    EXPECT_LT(duration([&] { EXPECT_FALSE(setVolume(*device, 0.25F)); }), atMost);
    const auto many = duration([&] {
        for (int i = 0; i < 100; ++i) {
            EXPECT_FALSE(setVolume(*device, 0.5F));
        }
    });
    EXPECT_LT(many, promptly);
    server_.resume();
    const auto waited = untilIt([&] { return volume(*device).has_value(); });
    ASSERT_TRUE(waited);
    EXPECT_LT(*waited, std::chrono::seconds(1));
    EXPECT_EQ(volume(*device), 1.0F) << "what has failed is not done later";
}

TEST_F(PulseFaults, AServerThatHangsWhileItIsConnectedToIsNotWaitedForEither) {
    server_.start();
    server_.stop();
    EXPECT_LT(duration([&] { EXPECT_FALSE(defaultDevice()); }), atMost);
    EXPECT_LT(duration([&] { EXPECT_FALSE(defaultDevice()); }), promptly);
    server_.resume();
    const auto waited = untilIt([&] { return defaultDevice().has_value(); });
    ASSERT_TRUE(waited);
    EXPECT_LT(*waited, std::chrono::seconds(1));
}

TEST_F(PulseFaults, AServerThatDiesWhileItHangsIsReplaced) {
    server_.start();
    ASSERT_TRUE(defaultDevice());
    server_.stop();
    EXPECT_FALSE(defaultDevice());
    server_.kill();
    server_.start();
    const auto waited = untilIt([&] { return defaultDevice().has_value(); });
    ASSERT_TRUE(waited);
    EXPECT_LT(*waited, std::chrono::seconds(1));
}

TEST_F(PulseFaults, SeveralThreadsCallAtOnce) {
    server_.start();
    const auto device = defaultDevice();
    ASSERT_TRUE(device);
    std::atomic<int> failures{0};
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                for (int i = 0; i < 200; ++i) {
                    const float wanted = static_cast<float>(i + thread) / 256;
                    const auto current = volume(*device);
                    if (!current || !setVolume(*device, wanted)) {
                        ++failures;
                    }
                }
            });
        }
    }
    EXPECT_EQ(failures, 0);
    EXPECT_TRUE(setVolume(*device, 0.125F));
    EXPECT_EQ(server_.volumes()[0], PA_VOLUME_NORM / 8);
}

/// Threads that call a service of their own all the time, until it is gone.
class Callers {
  public:
    explicit Callers(AudioHardware& audio) {
        for (int thread = 0; thread < 4; ++thread) {
            threads_.emplace_back([this, &audio] {
                while (!end_) {
                    const auto device = audioProperty<AudioObjectId>(audio, audioSystemObject,
                                                                     defaultOutputDeviceAddress);
                    if (device &&
                        setAudioProperty(audio, *device, virtualMainVolumeAddress, 0.5F)) {
                        ++successes_;
                    }
                    ++rounds_;
                }
            });
        }
    }
    [[nodiscard]] int successes() const { return successes_; }
    [[nodiscard]] int rounds() const { return rounds_; }
    void end() { end_ = true; }

  private:
    std::atomic<bool> end_{false};
    std::atomic<int> successes_{0};
    std::atomic<int> rounds_{0};
    std::vector<std::jthread> threads_;
};

TEST_F(PulseFaults, ServersComeAndGoUnderManyCalls) {
    Callers callers(audio_);
    for (int i = 0; i < 5; ++i) {
        const int before = callers.successes();
        server_.start();
        EXPECT_TRUE(untilIt([&] { return callers.successes() > before + 5; }));
        if (i % 2 == 1) {
            server_.stop();
            const int rounds = callers.rounds();
            EXPECT_TRUE(untilIt([&] { return callers.rounds() > rounds + 100; }));
        }
        server_.kill();
    }
    callers.end();
}

/// Destroys a service while a call is under way, which the server does not answer.
void expectEndDuringACall(bool isConnected, SoundServer& server) {
    using Clock = std::chrono::steady_clock;
    auto audio = std::make_unique<PulseAudioHardware>();
    if (isConnected) {
        ASSERT_TRUE(
            audioProperty<AudioObjectId>(*audio, audioSystemObject, defaultOutputDeviceAddress));
    }
    server.stop();
    std::atomic<bool> begun{false};
    Clock::time_point returned;
    std::optional<AudioObjectId> got = 0;
    std::jthread caller([&, service = audio.get()] {
        begun = true;
        got = audioProperty<AudioObjectId>(*service, audioSystemObject, defaultOutputDeviceAddress);
        returned = Clock::now();
    });
    while (!begun) {
        std::this_thread::yield();
    }
    // Until the call waits: nothing outside shows it, so it is given some of its time.
    const auto start = Clock::now();
    while (Clock::now() - start < PulseAudioHardware::patience / 5) {
        std::this_thread::yield();
    }
    audio.reset();
    const auto ended = Clock::now();
    caller.join();
    server.resume();
    EXPECT_FALSE(got);
    EXPECT_LT(returned - start, PulseAudioHardware::patience) << "the call waited for its limit";
    EXPECT_LT(ended - start, PulseAudioHardware::patience) << "the end waited for the call's";
}

TEST_F(PulseFaults, ItEndsDuringACallThatAHungServerDoesNotAnswer) {
    server_.start();
    expectEndDuringACall(true, server_);
}

TEST_F(PulseFaults, ItEndsWhileItConnectsToAHungServer) {
    server_.start();
    expectEndDuringACall(false, server_);
}

TEST_F(PulseFaults, NoFileIsLeftToAProgramThatTakesTheProcessOver) {
    const auto inherited = [] {
        std::vector<std::string> names;
        for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
            const int descriptor = std::stoi(file.path().filename());
            if (descriptor > 2 && (::fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0) {
                std::error_code gone;
                names.push_back(std::filesystem::read_symlink(file.path(), gone));
            }
        }
        return names;
    };
    server_.start();
    const auto before = inherited();
    ASSERT_TRUE(defaultDevice());
    EXPECT_EQ(inherited(), before);
    server_.stop(); // the library closes some of them only when the server has answered
    PulseAudioHardware other;
    EXPECT_FALSE(
        audioProperty<AudioObjectId>(other, audioSystemObject, defaultOutputDeviceAddress));
    EXPECT_EQ(inherited(), before);
}

} // namespace
} // namespace quillon
