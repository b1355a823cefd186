#pragma once

#include "Platform/Alerts.h"
#include "Platform/Application.h"
#include "Platform/Images.h"
#include "Platform/LoginItem.h"
#include "Platform/Menu.h"
#include "Platform/Simulated/ActionSink.h"
#include "Platform/Updater.h"
#include "Platform/Workspace.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

// The plain services of a simulated desktop that the shell uses. Each reports what it is told, and
// answers what a test has put into it.

class SimulatedApplication final : public Application {
  public:
    explicit SimulatedApplication(ActionSink sink) : sink_(std::move(sink)) {}
    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    [[nodiscard]] std::optional<EventType> currentEvent() const override { return event; }
    void terminate(Sender* sender) override;

    std::weak_ptr<ApplicationDelegate> delegate;
    std::optional<EventType> event;

  private:
    ActionSink sink_;
};

class SimulatedImages final : public Images {
  public:
    [[nodiscard]] std::optional<Image> named(std::string_view name) const override;
    [[nodiscard]] std::optional<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) const override;

    bool hasAssets = true;
    bool hasSymbols = true;
};

class SimulatedMenus final : public Menus {
  public:
    explicit SimulatedMenus(ActionSink sink) : sink_(std::move(sink)) {}
    void popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType event,
                          const View& view) override;
    void popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) override;

    std::shared_ptr<Menu> shown; // the latest

  private:
    ActionSink sink_;
};

class SimulatedAlerts final : public Alerts {
  public:
    void runModal(const Alert& alert) override { shown.push_back(alert); }

    std::vector<Alert> shown;
};

class SimulatedLoginItem final : public LoginItem {
  public:
    [[nodiscard]] bool isSupported() const override { return supported; }
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    [[nodiscard]] std::optional<std::string> registerService() override { return change(true); }
    [[nodiscard]] std::optional<std::string> unregisterService() override { return change(false); }

    bool supported = true;
    bool enabled = false;
    std::optional<std::string> failure; // what each change fails with

  private:
    std::optional<std::string> change(bool enable);
};

class SimulatedUpdaters final : public Updaters {
  public:
    explicit SimulatedUpdaters(ActionSink sink) : sink_(std::move(sink)) {}
    std::unique_ptr<UpdaterController>
    makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> updaterDelegate) override;

    std::weak_ptr<UpdaterDelegate> delegate;

  private:
    class Controller;
    ActionSink sink_;
};

class SimulatedWorkspace final : public Workspace {
  public:
    explicit SimulatedWorkspace(ActionSink sink) : sink_(std::move(sink)) {}
    void open(std::string_view url) override { sink_("open", std::string(url)); }
    [[nodiscard]] DisplayOptions displayOptions() const override { return options_; }
    void setDisplayOptionsHandler(std::function<void()> changed) override {
        changed_ = std::move(changed);
    }

    /// What the user has chosen now.
    void choose(DisplayOptions options) {
        options_ = options;
        if (changed_) {
            changed_();
        }
    }

  private:
    ActionSink sink_;
    DisplayOptions options_;
    std::function<void()> changed_;
};

} // namespace quillon
