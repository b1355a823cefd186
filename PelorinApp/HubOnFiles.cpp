#include "HubOnFiles.h"

#include "Hub/HubCommands.h"
#include "Hub/ToolMigrationService.h"

#include <optional>
#include <utility>

namespace quillon {

namespace {

using Outcome = HubReply::Outcome;
using Verb = HubRequest::Verb;

/// The user's files as they are: a folder that is missing is not made.
class FilesAsTheyAre final : public FileManager {
  public:
    explicit FilesAsTheyAre(FileManager& files) : files_(files) {}

    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() override {
        return files_.applicationSupportDirectory();
    }
    [[nodiscard]] std::filesystem::path temporaryDirectory() override {
        return files_.temporaryDirectory();
    }
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    makeFolder(const std::filesystem::path& path) override {
        return files_.openFolder(path);
    }
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    openFolder(const std::filesystem::path& path) override {
        return files_.openFolder(path);
    }

  private:
    FileManager& files_;
};

std::shared_ptr<HubToolStore> makeStore(const HubServices& services) {
    return HubToolStore::create(services, [](const IsToolOn&) { return hubToolDescriptions(); });
}

std::string readStatus(const HubFilesContext& context) {
    FilesAsTheyAre files(context.services.fileManager);
    const HubServices& given = context.services;
    const auto store = makeStore(
        {given.runLoop, given.defaults, given.bundle, given.diagnostics, given.session, files});
    return statusDocument(false, context.version, HubCommands(*store).status());
}

std::optional<std::string> change(const HubCommand& command, const HubFilesContext& context) {
    const auto store = makeStore(context.services);
    ToolMigrationService(context.services.defaults).migrate();
    store->seedBuiltInTools();
    HubCommands commands(*store);
    std::optional<HubCommands::Outcome> ended;
    commands.perform(command, [&](HubCommands::Outcome outcome) {
        ended = std::move(outcome);
        context.quit();
    });
    if (!ended) {
        context.run();
    }
    store->end();
    // Both, whatever comes of the first.
    const bool recordsAreStored = store->flush();
    const bool settingsAreStored = context.flushSettings();
    if (!ended) {
        return "interrupted before " + command.id + " was installed";
    }
    if (!*ended && !(recordsAreStored && settingsAreStored)) {
        return "the change could not be stored";
    }
    return *ended;
}

std::optional<HubCommand> hubChange(const HubRequest& request) {
    using Change = HubCommand::Verb;
    switch (request.verb) {
    case Verb::enable:
        return HubCommand{Change::enable, request.id};
    case Verb::disable:
        return HubCommand{Change::disable, request.id};
    case Verb::install:
        return HubCommand{Change::install, request.id};
    case Verb::uninstall:
        return HubCommand{Change::uninstall, request.id};
    case Verb::status:
    case Verb::list:
    case Verb::show:
    case Verb::quit:
        break;
    }
    return std::nullopt;
}

} // namespace

bool changesTools(const HubRequest& request) { return hubChange(request).has_value(); }

HubReply hubOnFiles(const HubRequest& request, const HubFilesContext& context) {
    if (const auto command = hubChange(request)) {
        auto failure = change(*command, context);
        return failure ? HubReply{Outcome::failed, std::move(*failure)} : HubReply{};
    }
    if (request.verb == Verb::status || request.verb == Verb::list) {
        return {Outcome::done, readStatus(context)};
    }
    return {Outcome::notRunning};
}

} // namespace quillon
