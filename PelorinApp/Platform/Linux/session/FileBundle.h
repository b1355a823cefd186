#pragma once

#include "Platform/Bundle.h"
#include "Platform/Diagnostics.h"

#include <filesystem>
#include <map>

namespace quillon {

/// The information dictionary as a JSON file of texts.
class FileBundle final : public Bundle {
  public:
    /// Reads $QUILLON_INFO, else Info.json of the installed resources, else the one beside the
    /// program. A file that is missing or damaged is an empty dictionary, and said so; so is an
    /// identifier that cannot name a folder, for which the built-in one stands in.
    explicit FileBundle(Diagnostics& diagnostics);

    /// Reads this file.
    FileBundle(const std::filesystem::path& file, Diagnostics& diagnostics);

    [[nodiscard]] std::string identifier() const override;
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override;

  private:
    std::map<std::string, std::string, std::less<>> info_;
};

} // namespace quillon
