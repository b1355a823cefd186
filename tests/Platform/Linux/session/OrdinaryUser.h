#pragma once

#include <sys/types.h>
#include <unistd.h>

namespace quillon {

/// Gives up an administrator's rights while it lives, since permissions do not bind those.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (user_ == 0) {
            held_ = setegid(nobody) == 0 && seteuid(nobody) == 0;
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (user_ == 0) {
            held_ = seteuid(user_) == 0 && setegid(group_) == 0;
        }
    }

    /// False when the system does not let the rights go.
    [[nodiscard]] bool held() const { return held_; }

  private:
    static constexpr uid_t nobody = 65534;
    uid_t user_ = geteuid();
    gid_t group_ = getegid();
    bool held_ = true;
};

} // namespace quillon
