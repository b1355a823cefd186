#include "Views/HubModel.h"

#include "Views/Screens.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <array>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace quillon {

namespace {

/// What is told of by name before the rest is only counted.
constexpr int mostNames = 3;

/// The tools that need the permission, in the order in which they are named.
constexpr std::array<std::string_view, 6> permittedTools{
    "tool.windowSwitcher",  "tool.trackpadMiddleClick", "tool.mediaControl",
    "tool.desktopSwitcher", "tool.volumeControl",       "tool.scrollReverse"};

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// The tools' own texts are translated, those of a server's catalog are what they are.
QString translated(const std::string& utf8) {
    return QCoreApplication::translate("Tools", utf8.c_str());
}

} // namespace

HubModel::HubModel(HubToolStore& store, ToolManagers& managers, Workspace& workspace,
                   const Bundle& bundle)
    : store_(store), managers_(managers), workspace_(workspace),
      donationPage_(bundle.infoString("DonationURL").value_or("")) {
    const auto follow = [this](auto signal, auto slot) { connect(&store_, signal, this, slot); };
    connect(&store_, &HubToolStore::catalogChanged, this, [this] {
        asked_.clear(); // some may be gone
        takeTools();
    });
    connect(&store_, &HubToolStore::installEnded, this, [this](const QString& id) {
        asked_.erase(id.toStdString());
        takeTools();
    });
    follow(&HubToolStore::installedChanged, &HubModel::takeTools);
    follow(&HubToolStore::installingToolIDsChanged, &HubModel::takeTools);
    follow(&HubToolStore::selectedToolIdChanged, &HubModel::takeSelection);
    connect(&installed_, &ToolListModel::moreWanted, this, &HubModel::takeTools);
    connect(&marketplace_, &ToolListModel::moreWanted, this, &HubModel::takeTools);
    followManagers();
    workspace_.setDisplayOptionsHandler([self = QPointer(this)] {
        if (self) {
            self->takeDisplayOptions();
        }
    });
    takeDisplayOptions();
    takeTools();
}

void HubModel::followManagers() {
    const auto follow = [this](auto& manager) {
        using Manager = std::remove_reference_t<decltype(manager)>;
        connect(&manager, &Manager::hasAccessibilityPermissionChanged, this,
                &HubModel::takePermission);
    };
    follow(managers_.windowSwitcher());
    follow(managers_.mediaControl());
    follow(managers_.desktopSwitcher());
    follow(managers_.volumeControl());
    follow(managers_.scrollReverse());
}

void HubModel::install(const QString& id) {
    if (asked_.insert(id.toStdString()).second) {
        store_.install(id.toStdString());
        takeTools();
    }
}

bool HubModel::isInstalled(const QString& id) const { return store_.isInstalled(id.toStdString()); }
void HubModel::uninstall(const QString& id) { store_.uninstall(id.toStdString()); }

void HubModel::setEnabled(const QString& id, bool enabled) {
    store_.setEnabled(id.toStdString(), enabled);
}

void HubModel::customize(const QString& id) { store_.setSelectedToolId(id.toStdString()); }

void HubModel::showTools() { store_.setSelectedToolId(std::string(HubToolStore::settingsScreen)); }

void HubModel::openPermissionSettings() {
    workspace_.open(
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

void HubModel::openDonationPage() {
    if (!donationPage_.empty()) {
        workspace_.open(donationPage_);
    }
}

QObject* HubModel::manager(std::string_view id) const {
    if (id == "tool.windowSwitcher" || id == "tool.trackpadMiddleClick") {
        return &managers_.windowSwitcher();
    }
    if (id == "tool.mediaControl") {
        return &managers_.mediaControl();
    }
    if (id == "tool.desktopSwitcher") {
        return &managers_.desktopSwitcher();
    }
    if (id == "tool.volumeControl") {
        return &managers_.volumeControl();
    }
    return id == "tool.scrollReverse" ? &managers_.scrollReverse() : nullptr;
}

const HubToolModule* HubModel::module(std::string_view id) const {
    const auto found = store_.modules().find(id);
    return found == store_.modules().end() ? nullptr : &found->second;
}

ToolCard HubModel::card(const ToolCatalogItem& item) const {
    return {.toolId = text(item.id),
            .name = text(item.name),
            .subtitle = translated(item.subtitle),
            .icon = text(item.icon),
            .isEnabled = store_.isEnabled(item.id),
            .isInstalling =
                store_.installingToolIDs().contains(item.id) || asked_.contains(item.id)};
}

/// The catalog, and behind it what is installed and not in it, so that everything that is there can
/// be switched off and removed. A catalog may be long: only what is shown of it becomes cards.
void HubModel::takeTools() {
    std::unordered_set<std::string_view> installedIds;
    for (const InstalledToolRecord& record : store_.installed()) {
        installedIds.insert(record.id);
    }
    ToolCards installed;
    ToolCards others;
    std::unordered_set<std::string_view> seen; // a catalog may name a tool twice
    const auto take = [&](std::string_view id, const ToolCatalogItem& item) {
        if (!seen.insert(id).second) {
            return;
        }
        const bool isInstalled = installedIds.contains(id);
        ToolCards& section = isInstalled ? installed : others;
        const ToolListModel& model = isInstalled ? installed_ : marketplace_;
        if (section.total++ < model.most()) {
            section.first.push_back(card(item));
        }
    };
    for (const ToolCatalogItem& item : store_.catalog()) {
        take(item.id, item);
    }
    for (const ToolCatalogItem& item : builtIn_) {
        if (installedIds.contains(item.id)) {
            const HubToolModule* known = module(item.id);
            take(item.id, known == nullptr ? item
                                           : ToolCatalogItem{.id = item.id,
                                                             .name = known->name,
                                                             .subtitle = known->subtitle,
                                                             .icon = known->icon});
        }
    }
    for (const InstalledToolRecord& record : store_.installed()) {
        take(record.id, {.id = record.id, .name = record.id, .icon = "externaldrive.fill"});
    }
    installed_.setCards(std::move(installed));
    marketplace_.setCards(std::move(others));
    takeSelection();
    takePermission();
}

void HubModel::takeSelection() {
    SelectedTool selected;
    const std::string& id = store_.selectedToolId();
    if (id != HubToolStore::settingsScreen) {
        selected.toolId = text(id);
        selected.name = text(store_.displayName(id));
        selected.isInstalled = store_.isInstalled(id);
        selected.manager = manager(id);
        if (const HubToolModule* known = module(id)) {
            selected.name = text(known->name);
            selected.subtitle = translated(known->subtitle);
            selected.icon = text(known->icon);
            selected.screen = screenUrl(known->makeView());
        }
    }
    if (selected_ != selected) {
        selected_ = selected;
        Q_EMIT selectedChanged();
    }
}

void HubModel::takePermission() {
    QStringList names;
    bool isMissing = false;
    for (const std::string_view id : permittedTools) {
        if (!manager(id)->property("hasAccessibilityPermission").toBool()) {
            isMissing = true;
            if (store_.isEnabled(id)) {
                names.append(text(store_.displayName(id)));
            }
        }
    }
    const QString first = names.mid(0, mostNames).join(QStringLiteral(", "));
    const auto more = static_cast<int>(names.size()) - mostNames;
    //: %1: names of tools
    constexpr const char* few =
        QT_TRANSLATE_NOOP("HubModel", "Accessibility permission is required for %1.");
    constexpr const char* many =
        QT_TRANSLATE_NOOP("HubModel", "Accessibility permission is required for %1 and %2 more.");
    constexpr const char* none = QT_TRANSLATE_NOOP(
        "HubModel", "Accessibility permission is required for input-based tools.");
    const QString message =
        names.isEmpty() ? QCoreApplication::translate("HubModel", none)
        : more > 0 ? QCoreApplication::translate("HubModel", many).arg(first, QString::number(more))
                   : QCoreApplication::translate("HubModel", few).arg(first);
    if (isPermissionMissing_ != isMissing || permissionMessage_ != message) {
        isPermissionMissing_ = isMissing;
        permissionMessage_ = message;
        Q_EMIT permissionChanged();
    }
}

void HubModel::takeDisplayOptions() {
    displayOptions_ = workspace_.displayOptions();
    Q_EMIT displayOptionsChanged();
}

} // namespace quillon
