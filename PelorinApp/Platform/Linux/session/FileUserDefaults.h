#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/session/DefaultsDocument.h"
#include "Platform/Linux/session/DefaultsWriter.h"
#include "Platform/RunLoop.h"
#include "Platform/UserDefaults.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// A store in a file, read once, at construction. Changes are written soon after they were made,
/// in the background; they are not lost if the store goes away first, but the process must live.
class FileUserDefaults final : public UserDefaults {
  public:
    static constexpr std::chrono::milliseconds flushPatience{2000};

    FileUserDefaults(std::filesystem::path file, RunLoop& runLoop, Diagnostics& diagnostics);
    ~FileUserDefaults() override;
    FileUserDefaults(const FileUserDefaults&) = delete;
    FileUserDefaults& operator=(const FileUserDefaults&) = delete;

    [[nodiscard]] std::optional<DefaultsObject> object(std::string_view key) const override;

    /// An object that cannot be stored is refused with a line of diagnostics.
    void set(std::string_view key, DefaultsObject object) override;
    void remove(std::string_view key) override;

    /// Writes what is not yet written, without needing the run loop to run, and waits for it.
    /// Answers whether everything is on the disk.
    bool flush(std::chrono::milliseconds patience = flushPatience);

  private:
    friend class FileUserDefaultsStores;

    DefaultsDocument document_;
    Diagnostics& diagnostics_;
    std::shared_ptr<DefaultsWriter> writer_;
};

class FileUserDefaultsStores final : public UserDefaultsStores {
  public:
    /// `configHome` holds a folder for each store; `standardName` is the name of the standard one.
    FileUserDefaultsStores(std::filesystem::path configHome, std::string standardName,
                           RunLoop& runLoop, Diagnostics& diagnostics);

    [[nodiscard]] FileUserDefaults& standard() override { return *standard_; }

    /// Null for a name that cannot be that of a folder. The standard store's name gives that store.
    [[nodiscard]] FileUserDefaults* suite(std::string_view name) override;

    /// FileUserDefaults::flush of all stores at the same time.
    bool flush(std::chrono::milliseconds patience = FileUserDefaults::flushPatience);

  private:
    [[nodiscard]] std::unique_ptr<FileUserDefaults> open(std::string_view name) const;

    std::filesystem::path configHome_;
    std::string standardName_;
    RunLoop& runLoop_;
    Diagnostics& diagnostics_;
    std::unique_ptr<FileUserDefaults> standard_;
    std::map<std::string, std::unique_ptr<FileUserDefaults>, std::less<>> suites_;
};

} // namespace quillon
