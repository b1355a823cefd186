#include "Hub/InstalledToolFile.h"

#include <utility>

namespace quillon {

namespace {

constexpr const char* fileName = InstalledToolFile::fileName;

/// Keeps the file that is there under a name beside it that nothing has yet.
std::optional<FileError> keepDamaged(Folder& folder) {
    constexpr int mostKept = 1000;
    const std::string name = std::string(fileName) + ".damaged";
    std::string free = name;
    for (int i = 2; i <= mostKept; free = name + "-" + std::to_string(i++)) {
        if (folder.exists(free)) {
            continue;
        }
        auto error = folder.keep(fileName, free);
        if (!error || !folder.exists(free)) { // else somebody was faster
            return error;
        }
    }
    return FileError{"too many damaged files are kept as " + name};
}

} // namespace

struct InstalledToolFile::Writing {
    FileManager& fileManager;
    Diagnostics& diagnostics;
    std::filesystem::path folder;
    bool isDamaged = false; // what is there now is to be kept
    bool isWritten = true;  // the last that was saved

    void write(const std::string& document) {
        const auto failure = tryToWrite(document);
        isWritten = !failure;
        if (failure) {
            diagnostics.line("Failed to persist install metadata: " + failure->description);
        }
    }

    std::optional<FileError> tryToWrite(const std::string& document) {
        auto opened = fileManager.makeFolder(folder);
        if (const auto* error = std::get_if<FileError>(&opened)) {
            return *error;
        }
        Folder& place = *std::get<std::unique_ptr<Folder>>(opened);
        if (isDamaged && place.exists(fileName)) {
            if (auto error = keepDamaged(place)) {
                return error;
            }
        }
        isDamaged = false;
        return place.write(fileName, document);
    }
};

InstalledToolFile::InstalledToolFile(const HubServices& services,
                                     std::shared_ptr<SerialQueue> queue)
    : runLoop_(services.runLoop), folder_(services.supportFolder().value_or(services.folderWithin(
                                      services.fileManager.temporaryDirectory()))),
      queue_(std::move(queue)), writing_(std::make_shared<Writing>(
                                    Writing{services.fileManager, services.diagnostics, folder_})) {
    [[maybe_unused]] const auto made = services.fileManager.makeFolder(folder_);
}

InstalledToolFile::~InstalledToolFile() { flush(); }

InstalledTools InstalledToolFile::load() {
    auto opened = writing_->fileManager.openFolder(folder_);
    auto* folder = std::get_if<std::unique_ptr<Folder>>(&opened);
    if (folder == nullptr || !(*folder)->exists(fileName)) {
        return {};
    }
    const auto document = (*folder)->read(fileName, largestFile);
    const auto* text = std::get_if<std::string>(&document);
    auto records = text == nullptr ? std::nullopt : decodeRecords(*text);
    writing_->isDamaged = !records;
    return records ? std::move(*records) : InstalledTools();
}

void InstalledToolFile::save(const InstalledTools& records) {
    queue_->async(
        [writing = writing_, document = encodeRecords(records)] { writing->write(document); });
}

void InstalledToolFile::whenWritten(std::function<void(bool)> done) {
    queue_->async([writing = writing_, &runLoop = runLoop_, done = std::move(done)]() mutable {
        runLoop.async(
            [isWritten = writing->isWritten, done = std::move(done)] { done(isWritten); });
    });
}

bool InstalledToolFile::flush() {
    bool isWritten = false;
    queue_->sync([&] { isWritten = writing_->isWritten; });
    return isWritten;
}

} // namespace quillon
