#include "Hub/HubToolStore.h"

#include "Hub/EnabledKey.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace quillon {

namespace {

constexpr const char* seededVersion = "1.0.0";

std::chrono::sys_seconds wholeSeconds(const RunLoop& runLoop) {
    return std::chrono::floor<std::chrono::seconds>(runLoop.now());
}

std::map<std::string, HubToolModule, std::less<>> byId(std::vector<HubToolModule> modules) {
    std::map<std::string, HubToolModule, std::less<>> dictionary;
    for (auto& module : modules) {
        const std::string id = module.id;
        if (!dictionary.emplace(id, std::move(module)).second) {
            std::abort(); // the program is not put together right
        }
    }
    return dictionary;
}

/// At most one record for each tool: the first, which is the one that everybody finds.
InstalledTools withoutDuplicates(InstalledTools records) {
    std::set<std::string> seen;
    std::erase_if(records, [&](const auto& record) { return !seen.insert(record.id).second; });
    return records;
}

} // namespace

HubToolStore& HubToolStore::shared() {
    // Never destroyed: it lives as long as the process, the platform no longer than main.
    static const auto& instance = *new std::shared_ptr<HubToolStore>(
        create(HubServices::of(Platform::current()),
               [](const IsToolOn& isOn) { return hubToolModules(sharedToolManagers(), isOn); }));
    return *instance;
}

std::shared_ptr<HubToolStore>
HubToolStore::create(const HubServices& services,
                     const std::function<std::vector<HubToolModule>(IsToolOn)>& makeModules) {
    std::shared_ptr<HubToolStore> store(new HubToolStore(services));
    store->modules_ = byId(
        makeModules([store = store.get()](std::string_view id) { return store->isEnabled(id); }));
    return store;
}

HubToolStore::HubToolStore(const HubServices& services)
    : services_(services), queue_(services.runLoop.makeSerialQueue("hub.files")),
      catalogService_(std::make_unique<CatalogService>(services, queue_)),
      installer_(std::make_unique<ModuleInstaller>(services, queue_)),
      file_(std::make_unique<InstalledToolFile>(services, queue_)),
      installed_(withoutDuplicates(file_->load())) {}

HubToolStore::~HubToolStore() = default;

void HubToolStore::setSelectedToolId(std::string id) {
    if (selectedToolId_ != id) {
        selectedToolId_ = std::move(id);
        Q_EMIT selectedToolIdChanged();
    }
}

QStringList HubToolStore::installingTools() const {
    QStringList ids;
    for (const auto& id : installingToolIDs_) {
        ids.append(QString::fromStdString(id));
    }
    return ids;
}

const InstalledToolRecord* HubToolStore::record(std::string_view id) const {
    const auto found = std::ranges::find(installed_, id, &InstalledToolRecord::id);
    return found == installed_.end() ? nullptr : &*found;
}

const HubToolModule* HubToolStore::module(std::string_view id) const {
    const auto found = modules_.find(id);
    return found == modules_.end() ? nullptr : &found->second;
}

bool HubToolStore::isEnabled(std::string_view id) const {
    const auto* found = record(id);
    return found != nullptr && found->isEnabled;
}

std::string HubToolStore::displayName(std::string_view id) const {
    if (const auto item = std::ranges::find(catalog_, id, &ToolCatalogItem::id);
        item != catalog_.end()) {
        return item->name;
    }
    const auto* known = module(id);
    return known != nullptr ? known->name : std::string(id);
}

void HubToolStore::seedBuiltInTools() {
    for (const auto& [id, module] : modules_) {
        if (isInstalled(id)) {
            continue;
        }
        const auto stored = services_.defaults.object(enabledKey(id));
        const bool* remembered = stored ? std::get_if<bool>(&*stored) : nullptr;
        upsert({.id = id,
                .version = seededVersion,
                .installedAt = wholeSeconds(services_.runLoop),
                .isEnabled = remembered == nullptr || *remembered,
                .isDownloaded = false});
    }
    persist();
}

void HubToolStore::applyModuleStates() {
    // A copy: a module that is switched may have somebody change the records.
    for (const auto& record : InstalledTools(installed_)) {
        switchModule(record.id, record.isEnabled);
    }
}

void HubToolStore::refreshCatalog() {
    catalogService_->fetchCatalog([this](ToolCatalog catalog) {
        catalog_ = std::move(catalog);
        Q_EMIT catalogChanged();
    });
}

void HubToolStore::install(std::string_view id) {
    const auto item = std::ranges::find(catalog_, id, &ToolCatalogItem::id);
    if (item == catalog_.end() || installingToolIDs_.contains(id)) {
        return;
    }
    services_.runLoop.async([weak = weak_from_this(), item = *item] {
        if (const auto self = weak.lock()) {
            self->beginInstall(item);
        }
    });
}

void HubToolStore::beginInstall(const ToolCatalogItem& item) {
    setInstalling(item.id, true);
    installer_->install(item, [this, id = item.id](FileResult<InstalledToolRecord> result) {
        endInstall(id, std::move(result));
    });
}

void HubToolStore::endInstall(const std::string& id, FileResult<InstalledToolRecord> result) {
    const auto* error = std::get_if<FileError>(&result);
    if (error == nullptr) {
        upsert(std::move(std::get<InstalledToolRecord>(result)));
        persist();
        applyModuleStates();
    } else {
        services_.diagnostics.line("Install failed for " + id + ": " + error->description);
    }
    setInstalling(id, false);
    Q_EMIT installEnded(QString::fromStdString(id),
                        error == nullptr ? QString() : QString::fromStdString(error->description));
}

void HubToolStore::setInstalling(const std::string& id, bool installing) {
    const bool changed =
        installing ? installingToolIDs_.insert(id).second : installingToolIDs_.erase(id) != 0;
    if (changed) {
        Q_EMIT installingToolIDsChanged();
    }
    // The first of two installs that ends clears it, too.
    if (std::exchange(isBusy_, installing) != installing) {
        Q_EMIT isBusyChanged();
    }
}

void HubToolStore::setEnabled(std::string_view id, bool enabled) {
    const auto found = std::ranges::find(installed_, id, &InstalledToolRecord::id);
    if (found == installed_.end()) {
        return;
    }
    const std::string toolId(id); // which may be a view of the record
    found->isEnabled = enabled;
    Q_EMIT installedChanged();
    rememberEnabled(toolId, enabled);
    persist();
    switchModule(toolId, enabled);
}

void HubToolStore::uninstall(std::string_view id) {
    const std::string toolId(id);
    installer_->uninstall(
        toolId, [&diagnostics = services_.diagnostics, toolId](const FileError& error) {
            diagnostics.line("Uninstall failed for " + toolId + ": " + error.description);
        });
    if (std::erase_if(installed_, [&](const auto& record) { return record.id == toolId; }) != 0) {
        Q_EMIT installedChanged();
    }
    rememberEnabled(toolId, false);
    if (selectedToolId_ == toolId) {
        setSelectedToolId(std::string(settingsScreen));
    }
    switchModule(toolId, false);
    persist();
}

void HubToolStore::rememberEnabled(std::string_view id, bool enabled) {
    services_.defaults.set(enabledKey(id), enabled);
}

void HubToolStore::upsert(InstalledToolRecord record) {
    const auto found = std::ranges::find(installed_, record.id, &InstalledToolRecord::id);
    if (found != installed_.end()) {
        *found = std::move(record);
    } else {
        installed_.push_back(std::move(record));
    }
    Q_EMIT installedChanged();
}

void HubToolStore::persist() { file_->save(installed_); }

void HubToolStore::switchModule(std::string_view id, bool on) {
    if (const auto* known = module(id)) {
        (on ? known->activate : known->deactivate)();
    }
}

void HubToolStore::whenStored(std::function<void(bool)> done) {
    file_->whenWritten(std::move(done));
}

bool HubToolStore::flush() { return file_->flush(); }

void HubToolStore::end() {
    installer_ = std::make_unique<ModuleInstaller>(services_, queue_);
    catalogService_ = std::make_unique<CatalogService>(services_, queue_);
    flush();
}

} // namespace quillon
