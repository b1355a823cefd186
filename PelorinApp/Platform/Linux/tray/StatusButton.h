#pragma once

#include "Platform/Button.h"

#include <functional>
#include <utility>

namespace quillon {

/// The button of a status item: as large as the item is.
class StatusButton final : public Button {
  public:
    explicit StatusButton(std::function<Size()> size) : size_(std::move(size)) {}

    [[nodiscard]] Rect bounds() const override {
        const Size size = size_();
        return {0, 0, size.width, size.height};
    }
    [[nodiscard]] ButtonCell* cell() override { return &cell_; }

    /// The item is gone, but whoever holds the button may still ask.
    void detach(Size last) {
        size_ = [last] { return last; };
        setHost(nullptr);
    }

  private:
    std::function<Size()> size_;
    ButtonCell cell_;
};

} // namespace quillon
