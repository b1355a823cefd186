#pragma once

#include <set>
#include <string>

namespace quillon::fakes {

/// The user's defaults, as the system keeps them.
class FakeDefaults {
  public:
    /// Objects by store ("" is the standard one) and key; null when there is none. Use from files
    /// that know the objects' language.
    [[nodiscard]] void* object(const std::string& store, const std::string& key) const;
    void setObject(const std::string& store, const std::string& key, void* object);

    std::set<std::string> refusedSuites;
    int suitesMade = 0;

    void reset();
};

FakeDefaults& fakeDefaults();

} // namespace quillon::fakes
