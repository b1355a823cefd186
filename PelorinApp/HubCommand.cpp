#include "HubCommand.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

namespace {

using Json = nlohmann::ordered_json;
using Form = HubRequest::Form;
using Outcome = HubReply::Outcome;
using Verb = HubRequest::Verb;
using Row = std::vector<std::string>;

constexpr int ok = 0;
constexpr int failed = 1;
constexpr int notRunning = 3;

constexpr int indentation = 2;
constexpr std::size_t columnGap = 3;

/// Names come from catalog servers: none may command the terminal.
std::string printable(std::string text) {
    constexpr unsigned char firstVisible = 0x20;
    constexpr unsigned char deletion = 0x7f;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isLaterControl =
            byte == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (isLaterControl) {
            text.erase(i, 1);
        }
        if (isLaterControl || byte < firstVisible || byte == deletion) {
            text[i] = ' ';
        }
    }
    return text;
}

std::string textOf(const Json& tool, const char* key) {
    const auto found = tool.find(key);
    return found != tool.end() && found->is_string() ? printable(found->get<std::string>()) : "";
}

bool isTrue(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_boolean() && found->get<bool>();
}

/// In characters, of UTF-8.
std::size_t width(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U; }));
}

/// Each column as wide as its widest cell; lines end with their last character.
void printTable(const std::vector<Row>& rows, std::ostream& out) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], width(row[i]));
        }
    }
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - width(row[i]) + columnGap, ' ');
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

std::string stateOf(const Json& tool) {
    if (isTrue(tool, "installing")) {
        return "installing";
    }
    if (!isTrue(tool, "installed")) {
        return "not installed";
    }
    return isTrue(tool, "enabled") ? "on" : "off";
}

Row statusRow(const Json& tool) {
    return {textOf(tool, "name"), textOf(tool, "id"), stateOf(tool),
            isTrue(tool, "downloaded") ? textOf(tool, "version") : ""};
}

Row listRow(const Json& tool) {
    return {textOf(tool, "name"), textOf(tool, "id"),
            isTrue(tool, "installed") ? "installed" : "not installed", textOf(tool, "subtitle")};
}

void print(const HubRequest& request, const Json& document, std::ostream& out) {
    const auto& tools = document.at("tools");
    const bool isStatus = request.verb == Verb::status;
    if (request.form == Form::json) {
        out << (isStatus ? document : tools).dump(indentation) << '\n';
        return;
    }
    std::vector<Row> rows;
    for (const auto& tool : tools) {
        rows.push_back(request.form == Form::ids ? Row{textOf(tool, "id")}
                       : isStatus                ? statusRow(tool)
                                                 : listRow(tool));
    }
    if (isStatus) {
        out << (isTrue(document, "running") ? "Quillon is running\n" : "Quillon is not running\n");
    }
    printTable(rows, out);
}

bool isStatusDocument(const Json& document) {
    const auto tools = document.find("tools");
    return document.is_object() && tools != document.end() && tools->is_array() &&
           std::ranges::all_of(*tools, [](const Json& tool) { return tool.is_object(); });
}

} // namespace

int hubCommand(const HubRequest& request, const HubResponder& running, const HubResponder& files,
               std::ostream& out, std::ostream& err) {
    auto reply = running(request);
    if (reply.outcome == Outcome::notRunning) {
        reply = files(request);
    }
    if (reply.outcome == Outcome::notRunning) {
        err << "quillon: Quillon is not running\n";
        return notRunning;
    }
    if (reply.outcome == Outcome::failed) {
        err << "quillon: " << printable(reply.text) << '\n';
        return failed;
    }
    if (request.verb == Verb::status || request.verb == Verb::list) {
        const auto document = Json::parse(reply.text, nullptr, false);
        if (!isStatusDocument(document)) {
            err << "quillon: Quillon has answered what cannot be understood\n";
            return failed;
        }
        print(request, document, out);
        out.flush();
        if (!out) {
            err << "quillon: the answer cannot be written\n";
            return failed;
        }
    }
    return ok;
}

std::string statusDocument(bool isRunning, const std::string& version,
                           const std::string& hubStatus) {
    Json document{{"running", isRunning}, {"version", version}};
    const auto hub = Json::parse(hubStatus);
    for (const auto& [key, value] : hub.items()) {
        document[key] = value;
    }
    return document.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace quillon
