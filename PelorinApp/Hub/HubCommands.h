#pragma once

#include "Hub/HubToolStore.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// What people and scripts can have the hub do by name.
struct HubCommand {
    enum class Verb { enable, disable, install, uninstall } verb = Verb::enable;
    std::string id;
};

/// Carries commands out on the store and says what came of them. Main thread only.
class HubCommands final : public QObject {
    Q_OBJECT

  public:
    /// What went wrong, for people; nothing when it is done.
    using Outcome = std::optional<std::string>;

    explicit HubCommands(HubToolStore& store);

    /// The hub's state as JSON, in fixed order: {"busy", "tools": [{"id", "name", "subtitle",
    /// "installed", "enabled", "installing", and for an installed one "version", "installedAt",
    /// "downloaded"}]}. The tools are those of the catalog, then installed ones that it leaves out.
    [[nodiscard]] std::string status() const;

    /// `done` is called once, on the main thread, when the command has come to its end; that can be
    /// before this call returns. An install waits for the catalog where that has not come yet.
    void perform(const HubCommand& command, std::function<void(Outcome)> done);

  private:
    void install(const std::string& id, std::function<void(Outcome)> done);
    void installOffered(const std::string& id, std::function<void(Outcome)> done);
    [[nodiscard]] Outcome unknown(std::string_view id) const;

    HubToolStore& store_;
};

} // namespace quillon
