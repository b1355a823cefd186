#include "Replay/TraceJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quillon {

namespace {

using nlohmann::json;

constexpr int deepestNesting = 64; // describing a value recurses

struct NestedTooDeeply {};

bool refuseDeepNesting(int depth, json::parse_event_t /*event*/, json& /*parsed*/) {
    if (depth > deepestNesting) {
        throw NestedTooDeeply{};
    }
    return true;
}

/// What is wrong, without the library's code and its own idea of the position before it and the
/// quotation after it.
std::string reason(std::string_view what) {
    constexpr std::string_view positionEnd = ": ";
    constexpr std::string_view quotation = "; last read";
    if (const auto begin = what.find(positionEnd); begin != std::string_view::npos) {
        what.remove_prefix(begin + positionEnd.size());
    }
    return "malformed JSON: " + std::string(what.substr(0, what.find(quotation)));
}

DefaultsObject objectFrom(const json& value) {
    if (value.is_boolean()) {
        return value.get<bool>();
    }
    if (value.is_number()) {
        return value.get<double>();
    }
    if (value.is_string()) {
        return value.get<std::string>();
    }
    const auto isString = [](const json& element) { return element.is_string(); };
    if (value.is_array() && std::all_of(value.begin(), value.end(), isString)) {
        return value.get<StringList>();
    }
    return UnsupportedObject{value.dump()};
}

} // namespace

std::variant<DefaultsObject, JsonFault> objectFromJson(std::string_view text) {
    try {
        return objectFrom(json::parse(text, refuseDeepNesting));
    } catch (const json::parse_error& error) {
        const std::size_t read = std::clamp<std::size_t>(error.byte, 1, text.size() + 1);
        return JsonFault{read - 1, reason(error.what())};
    } catch (const json::out_of_range&) {
        return JsonFault{0, "a number in this JSON is too large"};
    } catch (const NestedTooDeeply&) {
        return JsonFault{0, "this JSON is nested too deeply"};
    }
}

} // namespace quillon
