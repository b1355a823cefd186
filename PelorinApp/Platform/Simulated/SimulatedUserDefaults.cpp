#include "Platform/Simulated/SimulatedUserDefaults.h"

#include <utility>

namespace quillon {

std::optional<DefaultsObject> SimulatedUserDefaults::object(std::string_view key) const {
    const auto found = objects_.find(key);
    if (found == objects_.end()) {
        return std::nullopt;
    }
    return found->second;
}

void SimulatedUserDefaults::set(std::string_view key, DefaultsObject object) {
    ++writes_;
    objects_.insert_or_assign(std::string(key), std::move(object));
}

void SimulatedUserDefaults::remove(std::string_view key) {
    ++writes_;
    if (const auto found = objects_.find(key); found != objects_.end()) {
        objects_.erase(found);
    }
}

SimulatedUserDefaults* SimulatedUserDefaultsStores::suite(std::string_view name) {
    if (refused_.contains(name)) {
        return nullptr;
    }
    auto found = suites_.find(name);
    if (found == suites_.end()) {
        found = suites_.emplace(std::string(name), std::make_unique<SimulatedUserDefaults>()).first;
    }
    return found->second.get();
}

} // namespace quillon
