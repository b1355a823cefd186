#include "DefaultsCommand.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <ostream>
#include <type_traits>

namespace quillon {

namespace {

constexpr int ok = 0;
constexpr int failed = 1;
constexpr int misused = 2;

std::string toJson(const DefaultsObject& object) {
    return std::visit(
        [](const auto& value) -> std::string {
            if constexpr (std::is_same_v<std::decay_t<decltype(value)>, UnsupportedObject>) {
                return value.description;
            } else {
                return nlohmann::json(value).dump();
            }
        },
        object);
}

std::optional<DefaultsObject> fromJson(const std::string& text) {
    const auto json = nlohmann::json::parse(text, nullptr, false);
    if (json.is_boolean()) {
        return json.get<bool>();
    }
    if (json.is_number() && isStorableNumber(json.get<double>())) {
        return json.get<double>();
    }
    if (json.is_string()) {
        return json.get<std::string>();
    }
    const auto isText = [](const nlohmann::json& element) { return element.is_string(); };
    if (json.is_array() && std::all_of(json.begin(), json.end(), isText)) {
        return json.get<StringList>();
    }
    return std::nullopt;
}

} // namespace

int defaultsCommand(const DefaultsRequest& request, UserDefaultsStores& stores,
                    const std::function<bool()>& flush, std::ostream& out, std::ostream& err) {
    UserDefaults* store = request.suite.empty() ? &stores.standard() : stores.suite(request.suite);
    if (store == nullptr) {
        err << "quillon: no store can be named '" << request.suite << "'\n";
        return misused;
    }
    switch (request.verb) {
    case DefaultsRequest::Verb::read: {
        const auto object = store->object(request.key);
        if (!object) {
            err << "quillon: " << request.key << " is not set\n";
            return failed;
        }
        out << toJson(*object) << '\n';
        return ok;
    }
    case DefaultsRequest::Verb::write: {
        auto object = fromJson(request.json);
        if (!object) {
            err << "quillon: '" << request.json
                << "' is no value for a setting; use true, false, a number, \"text\" or "
                   "[\"texts\"], as JSON\n";
            return misused;
        }
        store->set(request.key, *object);
        if (store->object(request.key) != object) {
            return failed; // refused, and said why
        }
        break;
    }
    case DefaultsRequest::Verb::remove:
        store->remove(request.key);
        break;
    }
    return flush() ? ok : failed;
}

} // namespace quillon
