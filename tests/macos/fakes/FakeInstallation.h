#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon::fakes {

/// The program as it is installed, its login item, its updates, and the user's folders.
class FakeInstallation {
  public:
    struct UpdaterRequest {
        bool startsUpdater;
        bool hasDelegate;
        bool hasUserDriverDelegate;
    };
    struct FolderRequest {
        unsigned long directory;
        unsigned long domains;
        bool expandsTilde;
    };

    std::optional<std::string> bundleIdentifier;

    /// A value of the information dictionary. Use from files that know the objects' language.
    void setInfo(const std::string& key, void* object);

    long loginItemStatus = 0;
    std::vector<std::string> loginItemCalls;     // "register", "unregister"
    std::optional<std::string> loginItemFailure; // the error's description

    std::vector<UpdaterRequest> updaterRequests;
    std::vector<bool> updateChecks; // whether each had a sender

    /// What the delegate of the last updater answers; nothing when it answers none.
    [[nodiscard]] std::optional<std::string> askedFeed() const;

    std::vector<std::string> searchPaths;
    std::vector<FolderRequest> folderRequests;
    std::string temporaryFolder;

    void reset();
};

FakeInstallation& fakeInstallation();

} // namespace quillon::fakes
