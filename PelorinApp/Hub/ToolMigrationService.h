#pragma once

#include "Platform/UserDefaults.h"

namespace quillon {

/// Carries what older releases remembered of the tools, once for each user, over to where the hub
/// looks for it. What they stored stays where it is.
class ToolMigrationService {
  public:
    explicit ToolMigrationService(UserDefaults& defaults) : defaults_(defaults) {}

    /// On the standard defaults of the current platform.
    static ToolMigrationService& shared();

    void migrate();

  private:
    UserDefaults& defaults_;
};

/// A stored object as a flag, as settings are read whose type has changed over time: a number that
/// is not 0, a text that begins like yes, true or a number that is not 0.
[[nodiscard]] bool asBool(const DefaultsObject& object);

} // namespace quillon
