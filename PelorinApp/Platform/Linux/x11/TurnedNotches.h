#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace quillon {

/// Notches of plain wheels that go on the other way: the press that was caught is consumed, and
/// another button is posted once its grab has ended, with its release. What is posted is caught in
/// its turn, and is to pass.
class TurnedNotches {
  public:
    /// A press of this button was consumed: until its release the pointer is grabbed.
    void consumed(std::uint8_t button) { grabbing_ = button; }

    /// This button is to be posted instead.
    void turnTo(std::uint8_t button) { ++due_.at(index(button)); }

    /// Calls `post(button)` for what is due, if the button that was released ends the grab.
    /// `areCaught` says whether presses of such buttons come here.
    template <class Post>
    void released(std::uint8_t button, bool areCaught, const Post& post) {
        if (button == grabbing_) {
            postDue(areCaught, post);
        }
    }

    /// The same, whatever grabs the pointer.
    template <class Post>
    void postDue(bool areCaught, const Post& post) {
        grabbing_ = 0;
        for (std::size_t each = 0; each < due_.size(); ++each) {
            for (int count = std::exchange(due_[each], 0); count > 0; --count) {
                expected_[each] += areCaught ? 1 : 0;
                post(static_cast<std::uint8_t>(first + each));
            }
        }
    }

    /// What was posted and has not come by now went elsewhere.
    void forgetPosted() { expected_ = {}; }

    enum class Caught {
        others,
        ours,
        tooEarly, // ours, but within another's grab, which lets nothing pass: posted anew after it
    };
    Caught caught(std::uint8_t button) {
        if (expected_.at(index(button)) == 0) {
            return Caught::others;
        }
        --expected_.at(index(button));
        if (grabbing_ == 0) {
            return Caught::ours;
        }
        turnTo(button);
        return Caught::tooEarly;
    }

  private:
    static constexpr std::uint8_t first = 4; // wheel buttons are 4 to 7

    static constexpr std::size_t index(std::uint8_t button) { return button - first; }

    std::uint8_t grabbing_ = 0; // 0 is none
    std::array<int, 4> due_{};
    std::array<int, 4> expected_{};
};

} // namespace quillon
