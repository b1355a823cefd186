#pragma once

#include "Tools/Edges/EdgeScrollManager.h"

#include <memory>
#include <string_view>

namespace quillon {

/// The desktop switcher: scrolling at an armed edge moves to the previous desktop (positive
/// notches) or the next one (negative notches).
///
/// A fresh installation is enabled with no edge armed: it does nothing until the user arms one.
class Tool4EdgesManager final : public EdgeScrollManager {
    Q_OBJECT
    Q_PROPERTY(double scrollSensitivity READ scrollSensitivity WRITE setScrollSensitivity NOTIFY
                   scrollSensitivityChanged)

  public:
    static constexpr std::string_view toolId = "tool.desktopSwitcher";

    /// The instance of the process, made on first use on the current platform.
    static Tool4EdgesManager& shared();
    static std::shared_ptr<Tool4EdgesManager> create(Platform& platform) {
        return makeManager<Tool4EdgesManager>(platform);
    }

    explicit Tool4EdgesManager(Platform& platform);
    ~Tool4EdgesManager() override { teardown(); }

    [[nodiscard]] double scrollSensitivity() const { return notchesPerAction(); }

    /// Notches per switch; anything but a whole number of 1…10 is first made one.
    void setScrollSensitivity(double notches);

    /// Queue the switch in the background and return at once.
    void switchToPreviousDesktop();
    void switchToNextDesktop();

  Q_SIGNALS:
    void scrollSensitivityChanged();

  protected:
    void positiveAction() override { switchToPreviousDesktop(); }
    void negativeAction() override { switchToNextDesktop(); }

  private:
    void queueAppleScript(std::string_view source);
    static void runAppleScript(std::string_view source, ScriptingService& scripting,
                               Diagnostics& diagnostics);
};

} // namespace quillon
