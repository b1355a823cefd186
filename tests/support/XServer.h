#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

namespace quillon {

/// A virtual X server that lives as long as this object; $DISPLAY names it meanwhile.
class XServer {
  public:
    explicit XServer(const std::vector<std::string>& extraArguments = {});
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    void kill();

  private:
    pid_t process_ = -1;
};

/// Another program on that server: a window that takes scrolls, and injected input.
class XClient {
  public:
    XClient();

    void movePointer(int x, int y) const;
    void pressWheel(std::uint8_t button) const;

    /// XCB_BUTTON_PRESS or XCB_BUTTON_RELEASE.
    void fakeButton(std::uint8_t type, std::uint8_t button) const;

    /// Whether this client could have the pointer for itself at this moment.
    [[nodiscard]] bool canGrabPointer() const;

    /// All its keys down, then up.
    void pressPanicChord() const;

    /// Whether a grab of it could be taken by this client at this moment.
    [[nodiscard]] bool canGrabPanicChord() const;

    /// Presses that this client's window has received so far.
    int wheelPresses();

    /// The presses and releases that it has received so far, such as "press 1".
    const std::vector<std::string>& buttons();

    /// The modifiers and buttons that were down before the latest of them, as in core events.
    [[nodiscard]] unsigned latestState() const { return latestState_; }

    /// The buttons that are down now, as in core events.
    [[nodiscard]] unsigned buttonsDown() const;

    /// Whether a grab of the left button, of the input extension's kind, could be taken by this
    /// client at this moment.
    [[nodiscard]] bool canGrabLeft() const;

    /// Takes it and keeps it.
    void grabLeft() const;

    /// Whether wheel grabs like ours could be taken by this client at this moment.
    [[nodiscard]] bool canGrabWheel() const;

    /// Takes them and keeps them.
    void grabWheel() const;

    [[nodiscard]] X11Connection& connection() const { return *connection_; }

  private:
    std::unique_ptr<X11Connection> connection_;
    std::vector<std::string> buttons_;
    unsigned latestState_ = 0;
};

/// Processes this thread's events until the condition holds; false after a limit that no passing
/// test reaches.
bool waitUntil(const std::function<bool()>& condition);

} // namespace quillon
