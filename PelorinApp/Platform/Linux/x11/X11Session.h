#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/x11/X11Connection.h"
#include "Platform/Linux/x11/X11Displays.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quillon {

/// The main thread's connection to the X server: made when there is a server, kept until it goes.
///
/// Trust on X11 is what the server grants this client: the input extension in the version that
/// shows all input (2.1), and synthetic input (XTEST). There is nothing that could prompt the user.
class X11Session final : public Accessibility {
  public:
    /// `lost` is called on the main thread when a server that was there is gone.
    X11Session(Diagnostics& diagnostics, X11Displays& displays, std::function<void()> lost);

    /// Tries to connect when there is no connection yet. What stands in the way is said once per
    /// change, not per question.
    [[nodiscard]] bool isProcessTrusted() override;

    [[nodiscard]] bool isGranted() const { return extensions_.input && extensions_.test; }

    /// What there is of the extensions that the program needs.
    struct Extensions {
        bool input = false; // shows all input
        bool test = false;  // lets programs press keys and buttons
    };
    [[nodiscard]] Extensions extensions() const { return extensions_; }

    /// Null while there is none.
    [[nodiscard]] X11Connection* connection() const { return connection_.get(); }

  private:
    void connect();
    void readEvents();
    void say(const char* text);

    Diagnostics& diagnostics_;
    X11Displays& displays_;
    std::function<void()> lost_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<QSocketNotifier> notifier_;
    Extensions extensions_;
    const char* said_ = nullptr;
};

} // namespace quillon
