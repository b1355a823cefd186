#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/UserDefaults.h"

#include <map>
#include <memory>
#include <string>

namespace quillon {

/// The user's defaults. The system writes them to the disk by itself.
class MacUserDefaultsStores final : public UserDefaultsStores {
  public:
    explicit MacUserDefaultsStores(Diagnostics& diagnostics);
    ~MacUserDefaultsStores() override;
    MacUserDefaultsStores(const MacUserDefaultsStores&) = delete;
    MacUserDefaultsStores& operator=(const MacUserDefaultsStores&) = delete;

    [[nodiscard]] UserDefaults& standard() override;
    [[nodiscard]] UserDefaults* suite(std::string_view name) override;

  private:
    class Store;

    Diagnostics& diagnostics_;
    std::unique_ptr<Store> standard_;
    std::map<std::string, std::unique_ptr<Store>, std::less<>> suites_;
};

} // namespace quillon
