#pragma once

#include "Hub/HubServices.h"
#include "Hub/InstalledToolRecord.h"
#include "Hub/ToolCatalogItem.h"

#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// Why an install has not succeeded, as people read it.
struct InstallError {
    static constexpr const char* domain = "ModuleInstaller";

    int code;
    std::string description;
};
[[nodiscard]] InstallError downloadFailed();
[[nodiscard]] InstallError verificationFailed();

/// Makes an installed tool of what the catalog offers: it fetches the tool's package, if there is
/// one, checks it, and puts it into the tool's folder. A package that cannot be had keeps nobody
/// from installing the tool, which is built in.
///
/// Main thread only; downloads and files are seen to elsewhere.
class ModuleInstaller {
  public:
    /// A larger package is given up, unless the configuration allows more.
    static constexpr std::size_t largestPackage = std::size_t{64} << 20U; // bytes

    using Completion = std::function<void(FileResult<InstalledToolRecord>)>;

    /// Files are written and checked on `queue`.
    ModuleInstaller(const HubServices& services, std::shared_ptr<SerialQueue> queue);
    ModuleInstaller(const ModuleInstaller&) = delete;
    ModuleInstaller& operator=(const ModuleInstaller&) = delete;

    /// Gives up what is under way; nobody is told.
    ~ModuleInstaller();

    /// `completion` is called once, on the main thread, after this call has returned: with the
    /// record, or with an error when there is no folder for the tool.
    void install(const ToolCatalogItem& item, Completion completion);

    /// Removes the tool's folder, behind what is under way; one that is not there is no error.
    /// `failed` is called on the queue if it cannot be removed.
    void uninstall(std::string_view toolId, std::function<void(FileError)> failed);

  private:
    class Install;

    void end(const Install* install, FileResult<InstalledToolRecord> result);

    HubServices services_;
    std::shared_ptr<SerialQueue> queue_;
    std::list<std::shared_ptr<Install>> installs_; // under way
};

} // namespace quillon
