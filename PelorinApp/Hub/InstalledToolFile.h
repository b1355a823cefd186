#pragma once

#include "Hub/HubServices.h"
#include "Hub/InstalledToolRecord.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace quillon {

/// The file of the installed tools' records. Main thread only; writing takes place on a queue, in
/// the order of the calls, since making a file durable can take long.
class InstalledToolFile {
  public:
    static constexpr const char* fileName = "installed-tools.json";

    /// A larger file is no file of ours.
    static constexpr std::size_t largestFile = std::size_t{4} << 20U; // bytes

    /// Makes the folder if it is missing; a failure shows when something is written.
    InstalledToolFile(const HubServices& services, std::shared_ptr<SerialQueue> queue);
    InstalledToolFile(const InstalledToolFile&) = delete;
    InstalledToolFile& operator=(const InstalledToolFile&) = delete;

    /// Writes what is not yet written.
    ~InstalledToolFile();

    [[nodiscard]] std::filesystem::path path() const { return folder_ / fileName; }

    /// What the file holds; nothing when it is missing or cannot be understood. In the latter case
    /// a copy of it will be kept beside the first that is written.
    [[nodiscard]] InstalledTools load();

    /// A failure is reported as a line of diagnostics, and that is all.
    void save(const InstalledTools& records);

    /// Calls `done` on the main thread when what was saved is written, or could not be.
    void whenWritten(std::function<void(bool isWritten)> done);

    /// Waits until what was saved is written. Whether the last of it was.
    bool flush();

  private:
    struct Writing; // what belongs to the queue

    RunLoop& runLoop_;
    std::filesystem::path folder_;
    std::shared_ptr<SerialQueue> queue_;
    std::shared_ptr<Writing> writing_;
};

} // namespace quillon
