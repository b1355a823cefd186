#pragma once

#include "FakeEvdev.h"
#include "Platform/Linux/session/WakeUp.h"
#include "Platform/Linux/touch/DefaultTouchDevice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// A device that finds fake touchpads, and what it calls back with. One at a time.
class TouchBench : public testing::Test {
  public:
    TouchBench() { current = this; }
    ~TouchBench() override {
        device.stop();
        current = nullptr;
    }

    void plug(const std::string& id, FakeEvdev& pad, bool mayBeOpened = true) {
        {
            const std::lock_guard lock(mutex_);
            pads_[id] = {&pad, mayBeOpened};
        }
        news->wake();
    }

    void unplug(const std::string& id) {
        {
            const std::lock_guard lock(mutex_);
            pads_.at(id).pad->unplug();
            pads_.erase(id);
        }
        news->wake();
    }

    /// These frames and no others, since the last time it was asked.
    void expectFrames(const std::vector<int>& wanted) {
        std::unique_lock lock(mutex_);
        came_.wait_for(lock, limit, [&] { return frames_.size() >= wanted.size(); });
        EXPECT_EQ(frames_, wanted);
        frames_.clear();
    }

    void awaitNewsRead(int times) {
        std::unique_lock lock(mutex_);
        EXPECT_TRUE(came_.wait_for(lock, limit, [&] { return newsRead >= times; }));
    }

    /// Until the device has read all that was sent before, and news.
    void awaitNews() {
        const int before = newsRead;
        news->wake();
        awaitNewsRead(before + 1);
    }

    /// What the callback does besides noting the frame. Set before the device is started.
    std::function<void(int contacts)> whenCalled;
    bool hasDirectory = true;
    std::optional<WakeUp> news{std::in_place}; // nothing: touchpads that come go unnoticed
    std::atomic<int> newsRead = 0;
    std::atomic<int> newsDescriptor = -1; // instead of that of `news`

    DefaultTouchDevice device{&makeDirectory};
    static constexpr std::chrono::seconds limit{10};

    static int noteFrame(TouchDevice device, void* /*contacts*/, std::int32_t count,
                         double timestamp, std::int32_t frame) {
        EXPECT_EQ(device, &current->device);
        EXPECT_GT(timestamp, 0);
        EXPECT_EQ(frame, ++current->numbered_);
        {
            const std::lock_guard lock(current->mutex_);
            current->frames_.push_back(count);
        }
        current->came_.notify_all();
        if (current->whenCalled) {
            current->whenCalled(count);
        }
        return 0;
    }

    void start() {
        device.setCallback(&noteFrame);
        device.start();
    }

  private:
    struct Plugged {
        FakeEvdev* pad;
        bool mayBeOpened;
    };

    class Directory final : public TouchpadDirectory {
      public:
        [[nodiscard]] int descriptor() const override {
            if (current->newsDescriptor >= 0) {
                return current->newsDescriptor;
            }
            return current->news ? current->news->descriptor() : -1;
        }
        bool readNews() override {
            {
                const std::lock_guard lock(current->mutex_);
                current->news->clear();
                ++current->newsRead;
            }
            current->came_.notify_all();
            return true;
        }
        [[nodiscard]] std::vector<TouchpadNode> list() override {
            const std::lock_guard lock(current->mutex_);
            std::vector<TouchpadNode> nodes;
            for (const auto& [id, pad] : current->pads_) {
                nodes.push_back({id, "event0"});
            }
            return nodes;
        }
        [[nodiscard]] FileDescriptor open(const TouchpadNode& node) override {
            const std::lock_guard lock(current->mutex_);
            const auto found = current->pads_.find(node.id);
            return found != current->pads_.end() && found->second.mayBeOpened
                       ? found->second.pad->open()
                       : FileDescriptor();
        }
    };

    static std::unique_ptr<TouchpadDirectory> makeDirectory() {
        return current->hasDirectory ? std::make_unique<Directory>() : nullptr;
    }

    static inline TouchBench* current = nullptr;
    std::mutex mutex_;
    std::condition_variable came_;
    std::vector<int> frames_;
    std::map<std::string, Plugged> pads_;
    int numbered_ = 0; // the frames, by the device
};

} // namespace quillon
