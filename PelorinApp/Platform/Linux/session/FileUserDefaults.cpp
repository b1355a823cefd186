#include "Platform/Linux/session/FileUserDefaults.h"

#include "Platform/FileManager.h"

#include <utility>

namespace quillon {

FileUserDefaults::FileUserDefaults(std::filesystem::path file, RunLoop& runLoop,
                                   Diagnostics& diagnostics)
    : diagnostics_(diagnostics) {
    DefaultsFile defaultsFile(std::move(file));
    auto loaded = defaultsFile.load();
    if (loaded.warning) {
        diagnostics.line(*loaded.warning);
    }
    document_ = std::move(loaded.document);
    writer_ = std::make_shared<DefaultsWriter>(std::move(defaultsFile), runLoop, diagnostics);
}

FileUserDefaults::~FileUserDefaults() { writer_->detach(); }

std::optional<DefaultsObject> FileUserDefaults::object(std::string_view key) const {
    const DefaultsObject* found = document_.object(key);
    return found == nullptr ? std::nullopt : std::optional(*found);
}

void FileUserDefaults::set(std::string_view key, DefaultsObject object) {
    // Also an unchanged value is written: another program may have stored a different one.
    if (document_.set(key, object) == DefaultsDocument::Change::refused) {
        std::string line = "⚠️ Setting ";
        line += key;
        line += " is not changed: only true, false, finite numbers, UTF-8 texts and lists of "
                "texts can be stored";
        diagnostics_.line(line);
        return;
    }
    writer_->change(key, std::move(object));
}

void FileUserDefaults::remove(std::string_view key) {
    document_.remove(key);
    writer_->change(key, std::nullopt);
}

bool FileUserDefaults::flush(std::chrono::milliseconds patience) {
    writer_->beginFlush();
    return writer_->finishFlush(std::chrono::steady_clock::now() + patience);
}

FileUserDefaultsStores::FileUserDefaultsStores(std::filesystem::path configHome,
                                               std::string standardName, RunLoop& runLoop,
                                               Diagnostics& diagnostics)
    : configHome_(std::move(configHome)), standardName_(std::move(standardName)), runLoop_(runLoop),
      diagnostics_(diagnostics), standard_(open(standardName_)) {}

std::unique_ptr<FileUserDefaults> FileUserDefaultsStores::open(std::string_view name) const {
    return std::make_unique<FileUserDefaults>(configHome_ / name / "defaults.json", runLoop_,
                                              diagnostics_);
}

FileUserDefaults* FileUserDefaultsStores::suite(std::string_view name) {
    if (name == standardName_) {
        return standard_.get();
    }
    if (!isEntryName(name)) {
        return nullptr;
    }
    auto found = suites_.find(name);
    if (found == suites_.end()) {
        found = suites_.emplace(std::string(name), open(name)).first;
    }
    return found->second.get();
}

bool FileUserDefaultsStores::flush(std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    standard_->writer_->beginFlush();
    for (const auto& [name, store] : suites_) {
        store->writer_->beginFlush();
    }
    bool flushed = standard_->writer_->finishFlush(deadline);
    for (const auto& [name, store] : suites_) {
        flushed = store->writer_->finishFlush(deadline) && flushed;
    }
    return flushed;
}

} // namespace quillon
