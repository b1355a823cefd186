#pragma once

#include "Platform/Platform.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// What is settled before the program starts.
struct Circumstances {
    bool isTrusted = true;
    bool hasSound = false; // an output device

    /// What the information dictionary of the program holds beside its identifier: texts by key,
    /// and the key of a number.
    std::map<std::string, std::string> information;
    std::string numberKey;
};

/// What not every desktop can be brought to.
enum class Act {
    tapRightPresses,
    tapListenOnly,
    restart,
    redirect,
    failScripts,
};

/// What a server does when it is asked.
struct Serving {
    int status = 200;
    std::string body;
    std::string location; // to which it refers; empty: it does not
    bool isSilent = false;
};

/// A desktop as its user and other programs have it, with the platform under test on it.
///
/// Each platform has one; the tests know none of them. What the tests do here others do: the user,
/// other programs, servers, the system.
class World {
  public:
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    virtual ~World() = default;

    [[nodiscard]] virtual Platform& platform() = 0;

    /// Lets the program run until it is so; false after a limit that no passing test reaches.
    [[nodiscard]] virtual bool runUntil(const std::function<bool()>& condition) = 0;

    /// Why this cannot be done here; nothing when it can.
    [[nodiscard]] virtual std::optional<std::string> refusal(Act /*act*/) const {
        return std::nullopt;
    }

    // The user's hand. Places in points, origin at the main screen's bottom left.
    virtual void movePointer(Point place) = 0;
    virtual void press(MouseButton button) = 0;
    virtual void release(MouseButton button) = 0;

    /// By one line of a plain wheel, up or down.
    virtual void scroll(int lines) = 0;

    /// Until what the user does meets the taps as they are now. `mask` is what they tap.
    [[nodiscard]] virtual bool awaitTaps(std::uint64_t /*mask*/) { return true; }

    /// What has come to the program under the pointer so far: "press 0" and "release 0" with the
    /// number of the button, "scroll 1" with the lines.
    [[nodiscard]] virtual std::vector<std::string> received() = 0;

    [[nodiscard]] virtual Rect mainScreen() = 0;

    /// The right half of the screen becomes the main screen, the left half one of its own.
    virtual void splitScreen() = 0;

    /// A program opens a window, which is in front of all others and gets what is typed.
    virtual void openWindow(ProcessId process, const std::string& name) = 0;
    virtual void endProgram(ProcessId process) = 0;

    // The output device, as the user sees and moves its control.
    [[nodiscard]] virtual double outputVolume() = 0;
    virtual void setOutputVolume(double volume) = 0;
    [[nodiscard]] virtual bool isOutputMuted() = 0;
    virtual void setOutputMuted(bool muted) = 0;

    /// The settings as the program finds them when it is started again.
    [[nodiscard]] virtual UserDefaultsStores& restartedDefaults() = 0;

    /// A server for one address, which is answered.
    [[nodiscard]] virtual std::string serve(const Serving& serving) = 0;

    /// An address where nobody answers.
    [[nodiscard]] virtual std::string deadAddress() = 0;

    /// A folder of the user's, which is there.
    [[nodiscard]] virtual std::filesystem::path folder() = 0;
    virtual void putFile(const std::filesystem::path& path, const std::string& content) = 0;
    virtual void putLink(const std::filesystem::path& path,
                         const std::filesystem::path& target) = 0;
    /// Nothing when there is no regular file.
    [[nodiscard]] virtual std::optional<std::string>
    fileContent(const std::filesystem::path& path) = 0;

    /// A source that the system's scripting does not understand, for as long as there is no other.
    [[nodiscard]] virtual std::string brokenScript() = 0;

    /// How many desktops the user has moved to the right, through scripts.
    [[nodiscard]] virtual int desktopsMovedRight() = 0;

    /// From now on scripts fail.
    virtual void failScripts() = 0;

    /// A click in the middle of the status item that the program has made, as it is shown now.
    virtual void clickStatusItem(MouseButton button) = 0;

    /// Whether the status item is where the user can click on it.
    [[nodiscard]] virtual bool isStatusItemShown() = 0;

    /// The user will take the first item of the menu that pops up next.
    virtual void willTakeFirstItem() = 0;
};

/// The world that the test program is linked with.
[[nodiscard]] std::unique_ptr<World> makeWorld(const Circumstances& circumstances);

} // namespace quillon
