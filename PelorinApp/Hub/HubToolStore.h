#pragma once

#include "Hub/CatalogService.h"
#include "Hub/HubServices.h"
#include "Hub/HubToolModule.h"
#include "Hub/InstalledToolFile.h"
#include "Hub/InstalledToolRecord.h"
#include "Hub/ModuleInstaller.h"
#include "Hub/ToolCatalogItem.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace quillon {

/// What the hub knows, for the screens to show: the catalog, the installed tools, which screen is
/// selected and what is being installed. It carries out install, uninstall, enable and disable by
/// changing records, storing them and switching the tools' modules.
///
/// Main thread only. Records are written in the background; flush() waits for them.
class HubToolStore final : public QObject, public std::enable_shared_from_this<HubToolStore> {
    Q_OBJECT
    Q_PROPERTY(
        QString selectedToolId READ selectedTool WRITE setSelectedTool NOTIFY selectedToolIdChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(QStringList installingToolIDs READ installingTools NOTIFY installingToolIDsChanged)

  public:
    /// What is selected when it is no tool.
    static constexpr std::string_view settingsScreen = "settings";

    /// The instance of the process, made on first use on the current platform.
    static HubToolStore& shared();

    /// The records are read, at once. `makeModules` is given what answers for the records.
    static std::shared_ptr<HubToolStore>
    create(const HubServices& services,
           const std::function<std::vector<HubToolModule>(IsToolOn)>& makeModules);

    ~HubToolStore() override;

    [[nodiscard]] const ToolCatalog& catalog() const { return catalog_; }
    [[nodiscard]] const InstalledTools& installed() const { return installed_; }
    [[nodiscard]] const std::string& selectedToolId() const { return selectedToolId_; }
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] const std::set<std::string, std::less<>>& installingToolIDs() const {
        return installingToolIDs_;
    }
    [[nodiscard]] const std::map<std::string, HubToolModule, std::less<>>& modules() const {
        return modules_;
    }
    [[nodiscard]] std::filesystem::path metadataURL() const { return file_->path(); }

    void setSelectedToolId(std::string id);

    [[nodiscard]] bool isInstalled(std::string_view id) const { return record(id) != nullptr; }
    [[nodiscard]] bool isEnabled(std::string_view id) const;

    /// What people call the tool; its id where nobody knows it.
    [[nodiscard]] std::string displayName(std::string_view id) const;

    // The steps of a start, in this order.
    void seedBuiltInTools();
    void applyModuleStates();

    /// Asks the catalog server; its answer is published when it is there.
    void refreshCatalog();

    /// Begins to install what the catalog offers under this id; nothing happens for another.
    void install(std::string_view id);
    void uninstall(std::string_view id);
    void setEnabled(std::string_view id, bool enabled);

    /// Calls `done` on the main thread when the records are on the disk, or could not be put there.
    void whenStored(std::function<void(bool areStored)> done);

    /// Waits until the records are on the disk. Whether they are.
    bool flush();

    /// The program ends: gives up what is under way, and waits until the records are on the disk.
    void end();

  Q_SIGNALS:
    void catalogChanged();
    void installedChanged();
    void selectedToolIdChanged();
    void isBusyChanged();
    void installingToolIDsChanged();

    /// An install has come to its end; `failure` is empty when the tool is installed.
    void installEnded(const QString& id, const QString& failure);

  private:
    explicit HubToolStore(const HubServices& services);

    [[nodiscard]] QString selectedTool() const { return QString::fromStdString(selectedToolId_); }
    void setSelectedTool(const QString& id) { setSelectedToolId(id.toStdString()); }
    [[nodiscard]] QStringList installingTools() const;

    [[nodiscard]] const InstalledToolRecord* record(std::string_view id) const;
    [[nodiscard]] const HubToolModule* module(std::string_view id) const;
    void rememberEnabled(std::string_view id, bool enabled);
    void upsert(InstalledToolRecord record);
    void persist();
    void switchModule(std::string_view id, bool on);
    void beginInstall(const ToolCatalogItem& item);
    void endInstall(const std::string& id, FileResult<InstalledToolRecord> result);
    void setInstalling(const std::string& id, bool installing);

    HubServices services_;
    std::shared_ptr<SerialQueue> queue_;
    std::unique_ptr<CatalogService> catalogService_;
    std::unique_ptr<ModuleInstaller> installer_;
    std::unique_ptr<InstalledToolFile> file_;
    std::map<std::string, HubToolModule, std::less<>> modules_;

    ToolCatalog catalog_;
    InstalledTools installed_;
    std::string selectedToolId_{settingsScreen};
    bool isBusy_ = false;
    std::set<std::string, std::less<>> installingToolIDs_;
};

} // namespace quillon
