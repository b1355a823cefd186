#pragma once

namespace quillon {

/// A descriptor that wakes a poll. wake() may be called on any thread and allocates nothing.
class WakeUp {
  public:
    WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;
    ~WakeUp();

    void wake() const;
    void clear() const;
    [[nodiscard]] int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

} // namespace quillon
