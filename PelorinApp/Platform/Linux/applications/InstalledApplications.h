#pragma once

#include "Platform/Linux/applications/ApplicationNames.h"
#include "Platform/RunLoop.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace quillon {

/// The names of the applications that are installed, which are read in the background: the main
/// thread touches no file. Main thread only.
class InstalledApplications {
  public:
    /// Begins to read. `folders` hold desktop entries, the most important first.
    InstalledApplications(RunLoop& runLoop, std::vector<std::filesystem::path> folders);

    /// As they were when they were read last. The first reading is waited for, but not longer than
    /// a tenth of a second: then there are no names yet.
    [[nodiscard]] std::shared_ptr<const ApplicationNames> names() const;

    /// Reads anew what has changed since, for those who ask later. What is installed or removed
    /// changes the time of its folder, so without that no file is opened.
    void lookAgain();

  private:
    class Reader;

    RunLoop& runLoop_;
    std::shared_ptr<Reader> reader_;
};

/// Where desktop entries are, the most important first.
[[nodiscard]] std::vector<std::filesystem::path> applicationFolders();

} // namespace quillon
