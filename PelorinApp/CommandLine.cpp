#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include <array>
#include <optional>
#include <sstream>
#include <utility>

namespace quillon {

namespace {
constexpr int usageStatus = 2;
constexpr double wholeVolume = 100;
constexpr const char* hint = "Try 'quillon --help'.\n";

/// Empty for a number from 0 to 100, else the complaint.
std::string percentCheck(const std::string& text) {
    double percent = 0;
    const bool isNumber = CLI::detail::lexical_cast(text, percent);
    return isNumber && percent >= 0 && percent <= wholeVolume ? "" : text + " is not from 0 to 100";
}

constexpr const char* exitStatuses = "Exit status of the commands for tools: 0 done; 1 it could "
                                     "not be done, and why is on standard\n"
                                     "error; 2 wrong usage; 3 Quillon is not running (show, quit).";

/// The commands for the tool hub, and what was asked by one of them.
class HubCommandLine {
  public:
    explicit HubCommandLine(CLI::App& app) {
        for (const auto& [name, verb, description] : readers) {
            auto* command = add(app, name, verb, description);
            auto* json = command->add_flag("--json", json_, "As JSON, for programs");
            if (verb == Verb::list) {
                command->add_flag("--ids", ids_, "Nothing but the ids, a line each")
                    ->excludes(json);
            }
        }
        for (const auto& [name, verb, description] : changers) {
            add(app, name, verb, description)
                ->add_option("ID", request_.id, "The tool, as 'quillon list' names it")
                ->required();
        }
        add(app, "show", Verb::show, "Open the hub of the Quillon that runs");
        add(app, "quit", Verb::quit, "End the Quillon that runs");
    }

    [[nodiscard]] std::optional<HubRequest> parsed() const {
        using Form = HubRequest::Form;
        for (const auto& [command, verb] : commands_) {
            if (command->parsed()) {
                HubRequest request = request_;
                request.verb = verb;
                request.form = json_ ? Form::json : ids_ ? Form::ids : Form::text;
                return request;
            }
        }
        return std::nullopt;
    }

  private:
    using Verb = HubRequest::Verb;
    struct Description {
        const char* name;
        Verb verb;
        const char* text;
    };
    static constexpr std::array readers{
        Description{"status", Verb::status, "Say whether Quillon runs, and how its tools are"},
        Description{"list", Verb::list, "Print the tools that there are"},
    };
    static constexpr std::array changers{
        Description{"enable", Verb::enable, "Switch a tool on"},
        Description{"disable", Verb::disable, "Switch a tool off"},
        Description{"install", Verb::install, "Install a tool, and wait until it is"},
        Description{"uninstall", Verb::uninstall, "Remove a tool"},
    };

    CLI::App* add(CLI::App& app, const char* name, Verb verb, const char* description) {
        commands_.emplace_back(app.add_subcommand(name, description), verb);
        return commands_.back().first;
    }

    HubRequest request_;
    bool json_ = false;
    bool ids_ = false;
    std::vector<std::pair<CLI::App*, Verb>> commands_;
};

} // namespace

Request parseCommandLine(int argc, const char* const* argv, const std::string& version) {
    CLI::App app{"Turns screen edges and the trackpad into gestures.\n"
                 "Without a command it runs until it is told to end (Ctrl-C)."};
    app.name("quillon");
    app.set_version_flag("--version", "quillon " + version);
    app.require_subcommand(0, 1);
    app.footer(exitStatuses);

    const HubCommandLine hub(app);

    ReplayRequest replayRequest;
    auto* replay = app.add_subcommand("replay", "Run a trace on a simulated desktop");
    replay->add_option("file", replayRequest.file, "The trace")->required();
    replay->add_flag("--check", replayRequest.check,
                     "Compare with the lines under ---- and say where they differ");

    DefaultsRequest defaultsRequest;
    auto* defaults = app.add_subcommand("defaults", "Show or change stored settings, which the "
                                                    "program reads when it starts");
    defaults->require_subcommand(1);
    defaults->add_option("--suite", defaultsRequest.suite, "A named store");
    auto* read = defaults->add_subcommand("read", "Print a setting as JSON");
    read->add_option("key", defaultsRequest.key, "The setting")->required();
    auto* write = defaults->add_subcommand("write", "Store a setting");
    write->add_option("key", defaultsRequest.key, "The setting")->required();
    write->add_option("value", defaultsRequest.json, "Its value as JSON: true, 40, \"text\", []")
        ->required();
    auto* remove = defaults->add_subcommand("delete", "Go back to the setting's default");
    remove->add_option("key", defaultsRequest.key, "The setting")->required();

    ShowLevelRequest showLevelRequest;
    auto* showLevel = app.add_subcommand("show-level", "Have the running program show a volume");
    showLevel->group(""); // not in the help
    showLevel->add_option("percent", showLevelRequest.percents, "From 0 to 100")
        ->required()
        ->check(percentCheck);
    showLevel->add_option("--every", showLevelRequest.milliseconds, "Milliseconds between levels");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream output;
        std::ostringstream complaint;
        const int status = app.exit(error, output, complaint);
        if (status == 0) {
            return PrintRequest{output.str(), {}, 0};
        }
        return PrintRequest{{}, "quillon: " + std::string(error.what()) + "\n" + hint, usageStatus};
    }

    if (replay->parsed()) {
        return replayRequest;
    }
    if (defaults->parsed()) {
        using Verb = DefaultsRequest::Verb;
        defaultsRequest.verb = write->parsed()    ? Verb::write
                               : remove->parsed() ? Verb::remove
                                                  : Verb::read;
        return defaultsRequest;
    }
    if (auto request = hub.parsed()) {
        return std::move(*request);
    }
    if (showLevel->parsed()) {
        return showLevelRequest;
    }
    return RunRequest{};
}

} // namespace quillon
