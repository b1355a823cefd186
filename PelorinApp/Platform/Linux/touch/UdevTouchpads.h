#pragma once

#include "Platform/Linux/touch/TouchpadDirectory.h"

#include <memory>

struct udev;
struct udev_device;
struct udev_enumerate;
struct udev_monitor;

namespace quillon {

/// The touchpads that the device manager knows, and those that it tells of from now on.
class UdevTouchpads final : public TouchpadDirectory {
  public:
    /// Null when the device manager cannot be asked.
    static std::unique_ptr<TouchpadDirectory> make();

    [[nodiscard]] int descriptor() const override;
    bool readNews() override;
    [[nodiscard]] std::vector<TouchpadNode> list() override;
    [[nodiscard]] FileDescriptor open(const TouchpadNode& node) override;

  private:
    struct Release {
        void operator()(udev* it) const;
        void operator()(udev_device* it) const;
        void operator()(udev_enumerate* it) const;
        void operator()(udev_monitor* it) const;
    };

    UdevTouchpads() = default;
    void follow();

    std::unique_ptr<udev, Release> udev_;
    std::unique_ptr<udev_monitor, Release> monitor_;
};

} // namespace quillon
