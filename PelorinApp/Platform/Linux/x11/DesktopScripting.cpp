#include "Platform/Linux/x11/DesktopScripting.h"

#include <array>
#include <utility>

namespace quillon {

namespace {

constexpr std::array<std::pair<std::string_view, DesktopDirection>, 2> knownScripts{{
    {R"(tell application "System Events" to key code 123 using {control down})",
     DesktopDirection::left},
    {R"(tell application "System Events" to key code 124 using {control down})",
     DesktopDirection::right},
}};

class DesktopScript final : public Script {
  public:
    DesktopScript(DesktopSwitch& desktops, DesktopDirection direction)
        : desktops_(desktops), direction_(direction) {}
    std::optional<std::string> execute() override { return desktops_.move(direction_); }

  private:
    DesktopSwitch& desktops_;
    DesktopDirection direction_;
};

} // namespace

std::unique_ptr<Script> DesktopScripting::compile(std::string_view source) {
    for (const auto& [known, direction] : knownScripts) {
        if (source == known) {
            return std::make_unique<DesktopScript>(desktops_, direction);
        }
    }
    return nullptr;
}

} // namespace quillon
