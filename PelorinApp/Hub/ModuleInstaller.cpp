#include "Hub/ModuleInstaller.h"

#include "Hub/CatalogService.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

constexpr const char* package = "package.bin";
constexpr const char* incoming = "package.tmp";
constexpr const char* placeholder = "package.placeholder";

using OpenFolder = std::unique_ptr<Folder>;

/// The folder of all tools; an error where there is no place for it.
FileResult<OpenFolder> rootFolder(const HubServices& services) {
    const auto path = services.supportFolder();
    if (!path) {
        return FileError{"there is no folder for what applications keep"};
    }
    return services.fileManager.makeFolder(*path);
}

FileResult<OpenFolder> toolFolder(const HubServices& services, std::string_view toolId) {
    auto root = rootFolder(services);
    if (std::holds_alternative<FileError>(root)) {
        return root;
    }
    return std::get<OpenFolder>(root)->makeFolder(toolId);
}

bool sameDigest(std::string_view body, const std::string& expected) {
    const auto digest = QCryptographicHash::hash(
        QByteArray::fromRawData(body.data(), static_cast<qsizetype>(body.size())),
        QCryptographicHash::Sha256);
    return digest.toHex() == QByteArray::fromStdString(expected).toLower();
}

/// Puts the downloaded package in place. Answers why it could not.
std::optional<std::string> putInPlace(Folder& folder, const ToolCatalogItem& item,
                                      const UrlResponse& response) {
    if (!isSuccess(response)) {
        return downloadFailed().description;
    }
    const auto expected = item.sha256.value_or("");
    if (!expected.empty() && !sameDigest(*response.body, expected)) {
        return verificationFailed().description;
    }
    if (auto error = folder.write(incoming, *response.body)) {
        return std::move(error->description);
    }
    if (auto error = folder.rename(incoming, package)) {
        return std::move(error->description);
    }
    return std::nullopt;
}

} // namespace

InstallError downloadFailed() { return {1, "Tool download failed"}; }
InstallError verificationFailed() { return {2, "Tool signature verification failed"}; }

/// One install: a step on the queue, a download, a step on the queue. What is queued holds it
/// weakly where it answers to the main thread.
class ModuleInstaller::Install : public std::enable_shared_from_this<Install> {
  public:
    Install(ModuleInstaller& installer, ToolCatalogItem item, Completion completion)
        : installer_(installer), services_(installer.services_), queue_(installer.queue_),
          item_(std::move(item)), completion_(std::move(completion)) {}

    void begin() {
        queue_->async([weak = weak_from_this(), services = services_, id = item_.id] {
            auto folder = toolFolder(services, id);
            std::optional<FileError> failure;
            if (auto* error = std::get_if<FileError>(&folder)) {
                failure = std::move(*error);
            }
            services.runLoop.async([weak, failure = std::move(failure)] {
                if (const auto self = weak.lock()) {
                    self->folderMade(failure);
                }
            });
        });
    }

    [[nodiscard]] const Completion& completion() const { return completion_; }

  private:
    void folderMade(const std::optional<FileError>& failure) {
        if (failure) {
            installer_.end(this, *failure);
        } else if (!item_.downloadURL || !isAddress(*item_.downloadURL)) {
            finish(false);
        } else {
            task_ = services_.session.fetchData(
                services_.request(*item_.downloadURL, largestPackage), [this](UrlResult result) {
                    task_.reset();
                    store(std::move(result));
                });
        }
    }

    void store(UrlResult result) {
        queue_->async([weak = weak_from_this(), services = services_, item = item_,
                       result = std::move(result)] {
            const bool isStored = storePackage(services, item, result);
            services.runLoop.async([weak, isStored] {
                if (const auto self = weak.lock()) {
                    self->finish(isStored);
                }
            });
        });
    }

    /// What cannot be stored leaves a placeholder.
    static bool storePackage(const HubServices& services, const ToolCatalogItem& item,
                             const UrlResult& result) {
        auto opened = toolFolder(services, item.id);
        auto* folder = std::get_if<OpenFolder>(&opened);
        std::optional<std::string> failure;
        if (folder == nullptr) {
            failure = std::get<FileError>(opened).description;
        } else if (const auto* error = std::get_if<UrlError>(&result)) {
            failure = error->description;
        } else {
            failure = putInPlace(**folder, item, std::get<UrlResponse>(result));
        }
        if (!failure) {
            return true;
        }
        if (folder != nullptr) {
            [[maybe_unused]] const auto ignored = (*folder)->write(
                placeholder, "Placeholder package for " + item.id + " (" + item.version + ")");
        }
        services.diagnostics.line("Install fallback for " + item.id + ": " + *failure);
        return false;
    }

    void finish(bool isDownloaded) {
        installer_.end(this,
                       InstalledToolRecord{.id = item_.id,
                                           .version = item_.version,
                                           .installedAt = std::chrono::floor<std::chrono::seconds>(
                                               services_.runLoop.now()),
                                           .isEnabled = true,
                                           .isDownloaded = isDownloaded});
    }

    ModuleInstaller& installer_; // outlives its installs
    HubServices services_;
    std::shared_ptr<SerialQueue> queue_;
    ToolCatalogItem item_;
    Completion completion_;
    std::unique_ptr<UrlTask> task_;
};

ModuleInstaller::ModuleInstaller(const HubServices& services, std::shared_ptr<SerialQueue> queue)
    : services_(services), queue_(std::move(queue)) {}

ModuleInstaller::~ModuleInstaller() = default;

void ModuleInstaller::install(const ToolCatalogItem& item, Completion completion) {
    installs_.push_back(std::make_shared<Install>(*this, item, std::move(completion)));
    installs_.back()->begin();
}

void ModuleInstaller::end(const Install* install, FileResult<InstalledToolRecord> result) {
    const auto found = std::ranges::find(installs_, install, &std::shared_ptr<Install>::get);
    const auto ended = *found; // until the completion has returned
    installs_.erase(found);
    ended->completion()(std::move(result));
}

void ModuleInstaller::uninstall(std::string_view toolId, std::function<void(FileError)> failed) {
    queue_->async([services = services_, id = std::string(toolId), failed = std::move(failed)] {
        auto root = rootFolder(services);
        auto error = std::holds_alternative<FileError>(root)
                         ? std::optional(std::get<FileError>(root))
                         : std::get<OpenFolder>(root)->remove(id);
        if (error) {
            failed(std::move(*error));
        }
    });
}

} // namespace quillon
