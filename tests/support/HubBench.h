#pragma once

#include "Hub/HubToolStore.h"
#include "Hub/OwnToolManagers.h"
#include "Hub/ToolMigrationService.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <QSignalSpy>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

inline constexpr const char* packageUrl = "https://example.org/media.bin";

/// A simulated desktop with the hub's store on it, whose modules write down how they are switched.
class HubBench {
  public:
    static constexpr const char* folder = "/home/user/.local/share/com.pelorin.PelorinApp";
    static constexpr const char* catalogUrl = "http://localhost:8787/tools/catalog";

    void create() {
        store.reset();
        store = HubToolStore::create(services, [this](IsToolOn isOn) {
            isToolOn = std::move(isOn);
            auto modules = hubToolDescriptions();
            for (auto& module : modules) {
                module.activate = [this, id = module.id] { switches.push_back("+" + id); };
                module.deactivate = [this, id = module.id] { switches.push_back("-" + id); };
            }
            return modules;
        });
    }

    /// As the program does it once it has finished launching.
    void launch() {
        create();
        ToolMigrationService(services.defaults).migrate();
        store->seedBuiltInTools();
        store->applyModuleStates();
        settle();
    }

    /// The same with the catalog there.
    void launchWithCatalog() {
        launch();
        store->refreshCatalog();
        advance(0);
    }

    void settle() { desktop.runLoop.drain(); }
    void advance(double seconds) {
        settle();
        desktop.runLoop.advance(seconds);
    }

    /// Lets an install that waits for nothing come to its end.
    void install(std::string_view id) {
        store->install(id);
        advance(0);
    }

    [[nodiscard]] static std::filesystem::path file(const std::string& name) {
        return std::filesystem::path(folder) / name;
    }
    void writeRecords(const std::string& document) {
        desktop.files.put(file("installed-tools.json"),
                          {SimulatedFileManager::Kind::file, document});
    }
    [[nodiscard]] std::string recordsFile() const {
        return desktop.files.content(file("installed-tools.json")).value_or("(none)");
    }
    [[nodiscard]] std::optional<InstalledTools> storedRecords() const {
        return decodeRecords(recordsFile());
    }

    [[nodiscard]] const InstalledToolRecord* record(std::string_view id) const {
        const auto found = std::ranges::find(store->installed(), id, &InstalledToolRecord::id);
        return found == store->installed().end() ? nullptr : &*found;
    }

    [[nodiscard]] std::optional<DefaultsObject> stored(std::string_view key) {
        return desktop.userDefaults.standard().object(key);
    }

    /// What the modules were told since the last time.
    std::vector<std::string> takeSwitches() { return std::exchange(switches, {}); }

    /// What was said since the last time.
    std::vector<std::string> takeLines() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;
    std::vector<std::string> switches; // +ID and -ID
    IsToolOn isToolOn;
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& text) {
        if (kind == "log") {
            lines.push_back(text);
        }
    }};
    HubServices services = HubServices::of(desktop.platform);
    std::shared_ptr<HubToolStore> store;
};

} // namespace quillon
