#pragma once

#include "FolderBench.h"

#include "Hub/HubToolStore.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include "../session/SystemCalls.h"

#include <cstdlib>

namespace quillon {

/// A hub in virtual time whose files are real.
class HubBench : public FolderBench {
  protected:
    HubBench() {
        path = temporary.path() / "data" / "com.pelorin.PelorinApp";
        ::setenv("XDG_DATA_HOME", path.parent_path().c_str(), 1);
    }
    ~HubBench() override {
        setSystemCallHook(nullptr);
        ::unsetenv("XDG_DATA_HOME");
    }

    std::shared_ptr<HubToolStore> open() {
        return HubToolStore::create(services,
                                    [](const IsToolOn&) { return hubToolDescriptions(); });
    }

    /// A store whose catalog is what a server offers.
    std::shared_ptr<HubToolStore> open(const ToolCatalog& catalog) {
        desktop.urls.answer("http://localhost:8787/tools/catalog", 200, encodeCatalog(catalog));
        auto store = open();
        store->refreshCatalog();
        settle();
        return store;
    }

    static ToolCatalogItem offered(const std::string& id) {
        return {.id = id,
                .name = "Tool",
                .subtitle = "",
                .icon = "",
                .version = "2.0",
                .minHubVersion = "1.0.0",
                .downloadURL = "http://tools/" + id};
    }

    /// Lets everything that is under way come to its end.
    void settle() {
        desktop.runLoop.drain();
        desktop.runLoop.advance(10);
        desktop.runLoop.drain();
    }
    std::vector<std::string> said() { return std::exchange(lines, {}); }
    [[nodiscard]] std::filesystem::path recordsFile() const {
        return path / InstalledToolFile::fileName;
    }
    [[nodiscard]] std::optional<InstalledTools> recordsOnDisk() const {
        return decodeRecords(readFile(recordsFile()));
    }

    std::vector<std::string> lines;
    SimulatedDesktop desktop{
        [this](std::string_view, const std::string& text) { lines.push_back(text); }};
    HubServices services{desktop.runLoop, desktop.userDefaults.standard(),
                         desktop.bundle,  desktop.diagnostics,
                         desktop.urls,    files};
};

} // namespace quillon
