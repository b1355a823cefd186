#pragma once

#include "Platform/DynamicLibraries.h"
#include "Platform/TouchLibrary.h"

#include <set>
#include <string>

namespace quillon {

/// A touch library whose trackpad a test or trace touches. Frames come on the thread that touches.
///
/// Its entry points are plain functions, so the trackpad that was opened last is the default one.
class SimulatedTouchLibrary final : public DynamicLibraries {
  public:
    SimulatedTouchLibrary() = default;
    SimulatedTouchLibrary(const SimulatedTouchLibrary&) = delete;
    SimulatedTouchLibrary& operator=(const SimulatedTouchLibrary&) = delete;
    ~SimulatedTouchLibrary() override;

    [[nodiscard]] std::unique_ptr<DynamicLibrary> open(std::string_view path) override;

    /// So many fingers rest on the trackpad from now on.
    void touch(int contacts);

    /// Whether somebody listens.
    [[nodiscard]] bool isStarted() const { return started_; }
    [[nodiscard]] ContactFrameCallback callback() const { return callback_; }
    [[nodiscard]] int timesOpened() const { return opened_; }
    [[nodiscard]] int timesClosed() const { return closed_; }

    bool isInstalled = true;
    bool hasDevice = true;
    std::set<std::string, std::less<>> missingSymbols;

  private:
    class Library;

    static TouchDevice createDefault();
    static void registerCallback(TouchDevice device, ContactFrameCallback callback);
    static void unregisterCallback(TouchDevice device, ContactFrameCallback callback);
    static void start(TouchDevice device, int mode);
    static void stop(TouchDevice device);
    void sendFrame();

    int contacts_ = 0;
    int frames_ = 0;
    bool started_ = false;
    int opened_ = 0;
    int closed_ = 0;
    ContactFrameCallback callback_ = nullptr;
};

} // namespace quillon
