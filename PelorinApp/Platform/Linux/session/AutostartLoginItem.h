#pragma once

#include "Platform/LoginItem.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// The folders in which a session looks for what it starts at login.
struct AutostartFolders {
    std::filesystem::path user;
    std::vector<std::filesystem::path> system; // the most important first

    /// `autostart` in the configuration folders of the user and the system.
    [[nodiscard]] static AutostartFolders ofSession();
};

/// The program among what an XDG desktop starts at login: a desktop entry in the user's autostart
/// folder. The files are read anew at each question, since the user and other programs change them.
class AutostartLoginItem final : public LoginItem {
  public:
    /// `program` is what the session shall start.
    explicit AutostartLoginItem(std::filesystem::path program,
                                AutostartFolders folders = AutostartFolders::ofSession());

    [[nodiscard]] bool isSupported() const override { return true; }

    /// Whether the session starts this very program: an entry for another copy of it does not
    /// count.
    [[nodiscard]] bool isEnabled() const override;

    [[nodiscard]] std::optional<std::string> registerService() override;

    /// Also stops an entry for another copy of the program, and those of the system.
    [[nodiscard]] std::optional<std::string> unregisterService() override;

  private:
    [[nodiscard]] std::filesystem::path userFile() const;
    [[nodiscard]] std::optional<std::filesystem::path> systemFile() const;
    [[nodiscard]] bool startsProgram(const std::filesystem::path& file) const;
    [[nodiscard]] std::optional<std::string> write(bool enabled) const;

    std::filesystem::path program_;
    AutostartFolders folders_;
};

} // namespace quillon
