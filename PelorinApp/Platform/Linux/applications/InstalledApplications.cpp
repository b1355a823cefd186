#include "Platform/Linux/applications/InstalledApplications.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillon {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds patience{100};
constexpr std::uintmax_t longestEntry = 1 << 20;

/// The times of folders and the folders in them; one that is not there has the earliest time.
using FolderTimes = std::map<fs::path, fs::file_time_type>;

fs::file_time_type timeOf(const fs::path& folder) {
    std::error_code failed;
    const auto time = fs::last_write_time(folder, failed);
    return failed ? fs::file_time_type::min() : time;
}

std::string idOf(const fs::path& file, const fs::path& folder) {
    std::string id = file.lexically_relative(folder).replace_extension().string();
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

void readEntry(const fs::path& file, const fs::path& folder, ApplicationNames& names) {
    std::error_code failed;
    // Opening anything else, such as a pipe, may never end.
    if (!fs::is_regular_file(file, failed) || fs::file_size(file, failed) > longestEntry ||
        failed) {
        return;
    }
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (const auto entry = DesktopEntry::parse(text)) {
        names.add(idOf(file, folder), *entry);
    }
}

/// The entries of a folder and of those in it, in the order of their names.
void readFolder(const fs::path& folder, ApplicationNames& names, FolderTimes& times) {
    times.emplace(folder, timeOf(folder));
    std::vector<fs::path> files;
    std::error_code failed;
    for (fs::recursive_directory_iterator each(folder, failed), end; !failed && each != end;
         each.increment(failed)) {
        std::error_code gone;
        if (each->is_directory(gone)) {
            times.emplace(each->path(), timeOf(each->path()));
        } else if (each->path().extension() == ".desktop") {
            files.push_back(each->path());
        }
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        readEntry(file, folder, names);
    }
}

} // namespace

/// Shared with the background work, which may outlive whoever asked for it. At any time, one piece
/// of it at most is under way.
class InstalledApplications::Reader {
  public:
    explicit Reader(std::vector<fs::path> folders)
        : folders_(std::move(folders)), locales_(messageLocales()) {}

    /// Main thread. Whether nobody is at it.
    bool begin() {
        const std::scoped_lock lock(mutex_);
        return !std::exchange(isBusy_, true);
    }

    /// Background.
    void run() noexcept {
        std::shared_ptr<const ApplicationNames> read;
        try {
            read = readIfChanged();
        } catch (...) {
            times_.clear(); // no memory, say: another time
        }
        const std::scoped_lock lock(mutex_);
        if (read) {
            names_ = std::move(read);
        }
        isBusy_ = false;
        done_.notify_all();
    }

    /// Main thread.
    std::shared_ptr<const ApplicationNames> names() {
        std::unique_lock lock(mutex_);
        if (!names_ && !std::exchange(hasWaited_, true)) {
            done_.wait_for(lock, patience, [&] { return !isBusy_; });
        }
        return names_ ? names_ : std::make_shared<const ApplicationNames>();
    }

  private:
    std::shared_ptr<const ApplicationNames> readIfChanged() {
        const bool isUnchanged =
            !times_.empty() && std::all_of(times_.begin(), times_.end(), [](const auto& each) {
                return timeOf(each.first) == each.second;
            });
        if (isUnchanged) {
            return nullptr;
        }
        FolderTimes times;
        auto names = std::make_shared<ApplicationNames>(locales_);
        for (const fs::path& folder : folders_) {
            readFolder(folder, *names, times);
        }
        times_ = std::move(times);
        return names;
    }

    const std::vector<fs::path> folders_;
    const std::vector<std::string> locales_; // the environment is the main thread's to read
    FolderTimes times_;                      // the background's
    std::mutex mutex_;
    std::condition_variable done_;
    bool isBusy_ = false;
    bool hasWaited_ = false;
    std::shared_ptr<const ApplicationNames> names_; // null until they are read
};

InstalledApplications::InstalledApplications(RunLoop& runLoop, std::vector<fs::path> folders)
    : runLoop_(runLoop), reader_(std::make_shared<Reader>(std::move(folders))) {
    lookAgain();
}

std::shared_ptr<const ApplicationNames> InstalledApplications::names() const {
    return reader_->names();
}

void InstalledApplications::lookAgain() {
    if (reader_->begin()) {
        runLoop_.asyncBackground([reader = reader_] { reader->run(); });
    }
}

std::vector<fs::path> applicationFolders() {
    std::vector<fs::path> data;
    const char* home = std::getenv("XDG_DATA_HOME");
    const char* user = std::getenv("HOME");
    if (home != nullptr && fs::path(home).is_absolute()) {
        data.emplace_back(home);
    } else if (user != nullptr && fs::path(user).is_absolute()) {
        data.push_back(fs::path(user) / ".local/share");
    }
    const char* set = std::getenv("XDG_DATA_DIRS");
    std::string_view names = set != nullptr && *set != '\0' ? set : "/usr/local/share:/usr/share";
    while (!names.empty()) {
        const auto end = std::min(names.find(':'), names.size());
        if (const fs::path folder(names.substr(0, end)); folder.is_absolute()) {
            data.push_back(folder);
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    for (fs::path& folder : data) {
        folder /= "applications";
    }
    return data;
}

} // namespace quillon
