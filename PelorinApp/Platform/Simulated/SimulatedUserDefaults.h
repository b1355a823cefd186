#pragma once

#include "Platform/UserDefaults.h"

#include <map>
#include <memory>
#include <set>

namespace quillon {

class SimulatedUserDefaults final : public UserDefaults {
  public:
    [[nodiscard]] std::optional<DefaultsObject> object(std::string_view key) const override;
    void set(std::string_view key, DefaultsObject object) override;
    void remove(std::string_view key) override;

    /// How often something was written, for tests of what is persisted when.
    [[nodiscard]] int writes() const { return writes_; }

  private:
    std::map<std::string, DefaultsObject, std::less<>> objects_;
    int writes_ = 0;
};

class SimulatedUserDefaultsStores final : public UserDefaultsStores {
  public:
    [[nodiscard]] SimulatedUserDefaults& standard() override { return standard_; }
    [[nodiscard]] SimulatedUserDefaults* suite(std::string_view name) override;

    /// From now on the suite of this name cannot be opened.
    void refuseSuite(std::string_view name) { refused_.emplace(name); }

  private:
    SimulatedUserDefaults standard_;
    std::map<std::string, std::unique_ptr<SimulatedUserDefaults>, std::less<>> suites_;
    std::set<std::string, std::less<>> refused_;
};

} // namespace quillon
