#pragma once

#include <string>
#include <variant>
#include <vector>

namespace quillon {

/// What the command line asks for.
struct RunRequest {};
struct ReplayRequest {
    std::string file;
    bool check = false;
};
struct DefaultsRequest {
    enum class Verb { read, write, remove } verb = Verb::read;
    std::string suite; // empty: the standard store
    std::string key;
    std::string json; // what to write
};
/// What people and scripts ask of the tool hub.
struct HubRequest {
    enum class Verb {
        status,
        list,
        enable,
        disable,
        install,
        uninstall,
        show,
        quit
    } verb = Verb::status;
    std::string id; // of the tool, for the verbs that change one
    enum class Form { text, json, ids } form = Form::text; // of status and list
};
/// For developers and demonstrations.
struct ShowLevelRequest {
    std::vector<double> percents;
    unsigned milliseconds = 0; // from one level to the next
};
/// Nothing to be done but to print this and to end.
struct PrintRequest {
    std::string output;
    std::string error;
    int status = 0;
};
using Request = std::variant<RunRequest, ReplayRequest, DefaultsRequest, HubRequest,
                             ShowLevelRequest, PrintRequest>;

[[nodiscard]] Request parseCommandLine(int argc, const char* const* argv,
                                       const std::string& version);

} // namespace quillon
