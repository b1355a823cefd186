#include "Hub/HubCommands.h"

#include "Text/NearestWord.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace quillon {

namespace {

using OrderedJson = nlohmann::ordered_json;

std::string inQuotes(std::string_view text) { return "'" + std::string(text) + "'"; }

} // namespace

HubCommands::HubCommands(HubToolStore& store) : store_(store) {}

std::string HubCommands::status() const {
    auto tools = OrderedJson::array();
    const auto add = [&](const std::string& id, const std::string& name,
                         const std::string& subtitle) {
        const auto record = std::ranges::find(store_.installed(), id, &InstalledToolRecord::id);
        const bool isInstalled = record != store_.installed().end();
        OrderedJson tool{{"id", id},
                         {"name", name},
                         {"subtitle", subtitle},
                         {"installed", isInstalled},
                         {"enabled", isInstalled && record->isEnabled},
                         {"installing", store_.installingToolIDs().contains(id)}};
        if (isInstalled) {
            tool["version"] = record->version;
            tool["installedAt"] = internetDateTime(record->installedAt);
            tool["downloaded"] = record->isDownloaded;
        }
        tools.push_back(std::move(tool));
    };
    const auto& catalog = store_.catalog().empty() ? builtInCatalog() : store_.catalog();
    for (const auto& item : catalog) {
        add(item.id, item.name, item.subtitle);
    }
    for (const auto& record : store_.installed()) {
        if (std::ranges::find(catalog, record.id, &ToolCatalogItem::id) == catalog.end()) {
            const auto module = store_.modules().find(record.id);
            add(record.id, store_.displayName(record.id),
                module == store_.modules().end() ? "" : module->second.subtitle);
        }
    }
    const OrderedJson status{{"busy", store_.isBusy()}, {"tools", std::move(tools)}};
    return status.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
}

void HubCommands::perform(const HubCommand& command, std::function<void(Outcome)> done) {
    using Verb = HubCommand::Verb;
    if (command.verb == Verb::install) {
        install(command.id, std::move(done));
        return;
    }
    if (!store_.isInstalled(command.id)) {
        const auto outcome = unknown(command.id);
        done(outcome ? outcome : inQuotes(command.id) + " is not installed");
        return;
    }
    if (command.verb == Verb::uninstall) {
        store_.uninstall(command.id);
    } else {
        store_.setEnabled(command.id, command.verb == Verb::enable);
    }
    done(std::nullopt);
}

void HubCommands::install(const std::string& id, std::function<void(Outcome)> done) {
    if (!store_.catalog().empty()) {
        installOffered(id, std::move(done));
        return;
    }
    // Asked for in the first moment: what is offered is not known yet.
    connect(
        &store_, &HubToolStore::catalogChanged, this,
        [this, id, done = std::move(done)] { installOffered(id, done); }, Qt::SingleShotConnection);
    store_.refreshCatalog();
}

void HubCommands::installOffered(const std::string& id, std::function<void(Outcome)> done) {
    const auto offered = std::ranges::find(store_.catalog(), id, &ToolCatalogItem::id);
    if (offered == store_.catalog().end()) {
        const auto outcome = unknown(id);
        done(outcome ? outcome : "the catalog does not offer " + inQuotes(id));
        return;
    }
    // Also of an install that somebody else has begun: it is the same that is wanted.
    const auto connection = std::make_shared<QMetaObject::Connection>();
    *connection =
        connect(&store_, &HubToolStore::installEnded, this,
                [connection, wanted = QString::fromStdString(id),
                 done = std::move(done)](const QString& ended, const QString& failure) {
                    if (ended != wanted) {
                        return;
                    }
                    disconnect(*connection);
                    done(failure.isEmpty() ? std::nullopt : std::optional(failure.toStdString()));
                });
    store_.install(id);
}

HubCommands::Outcome HubCommands::unknown(std::string_view id) const {
    std::vector<std::string_view> known;
    for (const auto& item : store_.catalog()) {
        known.emplace_back(item.id);
    }
    for (const auto& module : store_.modules()) {
        known.emplace_back(module.first);
    }
    return std::ranges::find(known, id) != known.end()
               ? std::nullopt
               : std::optional("there is no tool " + inQuotes(id) + nearestWordHint(id, known));
}

} // namespace quillon
