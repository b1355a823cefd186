#pragma once

#include "Platform/Event.h"
#include "Platform/View.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quillon {

enum class TextAlignment { natural, left, center, right };
enum class ImageScaling { none, proportionallyDown };
enum class ImagePosition { noImage, imageOnly, imageLeft };
enum class BezelStyle { automatic, shadowlessSquare };

/// How a button looks.
struct ButtonLook {
    std::string title;
    std::string attributedTitle; // a title with a style of its own; empty: there is none
    Font titleFont;
    std::optional<std::string> contentTintColor;
    std::optional<Image> image;
    ImageScaling imageScaling = ImageScaling::none;
    ImagePosition imagePosition = ImagePosition::noImage;
    TextAlignment alignment = TextAlignment::natural;
    bool isBordered = true;
    BezelStyle bezelStyle = BezelStyle::automatic;
    bool showsFocusRing = true;
    bool operator==(const ButtonLook&) const = default;
};

/// The part of a button that some systems keep apart.
struct ButtonCell {
    TextAlignment alignment = TextAlignment::natural;
};

/// A push button. A click on it performs its action when the mask of its sending has the event.
/// Whoever shows it is told of every change, so that a button of the system's can stay in step.
class Button : public View {
  public:
    [[nodiscard]] const ButtonLook& look() const { return look_; }
    void setLook(ButtonLook look);

    /// Null on systems whose buttons have none.
    [[nodiscard]] virtual ButtonCell* cell() { return nullptr; }

    [[nodiscard]] const Action& action() const { return action_; }
    void setAction(Action action);

    /// The eventMask bits upon which it sends its action.
    [[nodiscard]] std::uint64_t sendsActionOn() const { return sendsActionOn_; }
    void setSendsActionOn(std::uint64_t mask);

    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);

    [[nodiscard]] bool refusesFirstResponder() const { return refusesFirstResponder_; }
    void setRefusesFirstResponder(bool refuses);

    /// To be called by who shows it: the user did this on it.
    void receive(EventType event);

  private:
    ButtonLook look_;
    Action action_;
    std::uint64_t sendsActionOn_ = eventMask(EventType::leftMouseUp);
    bool enabled_ = true;
    bool refusesFirstResponder_ = false;
};

} // namespace quillon
