#pragma once

#include "Platform/Bundle.h"
#include "Platform/Linux/updates/UpdateCheck.h"
#include "Platform/Linux/updates/UpdateSchedule.h"
#include "Platform/Linux/updates/UpdateWindow.h"
#include "Platform/Updater.h"
#include "Platform/Workspace.h"

namespace quillon {

/// What an updater works with. All of it outlives the updater.
struct UpdaterServices {
    RunLoop& runLoop;
    const Bundle& bundle;
    UserDefaults& defaults;
    Diagnostics& diagnostics;
    Workspace& workspace;
    UpdateWindow& window;
};

/// Compares this version with those in a feed and tells the user; it installs nothing. One check
/// at a time: who asks while one runs gets its result. Checks of its own speak only of a version
/// that is newer than this one and all it has already spoken of.
class FeedUpdater final : public UpdaterController {
  public:
    FeedUpdater(const UpdaterServices& services, std::unique_ptr<FeedFetcher> fetcher,
                std::weak_ptr<UpdaterDelegate> delegate);

    /// Begins the daily checks, as soon as the main queue gets to it: the delegate may not be ready
    /// to be asked yet. Without a feed there are none.
    void start();

    void checkForUpdates(Sender* sender) override;

  private:
    [[nodiscard]] std::string feedAddress() const;
    void startSchedule();
    bool checkInBackground();
    void check(const std::string& address);
    void conclude(const UpdateFindings& findings);
    void concludeWith(const std::optional<PublishedVersion>& published, bool asked);
    void tell(const std::string& title, const std::string& text);
    void offer(const PublishedVersion& version);

    UpdaterServices services_;
    std::unique_ptr<FeedFetcher> fetcher_;
    std::weak_ptr<UpdaterDelegate> delegate_;
    std::string ownVersion_; // empty: unknown
    UpdateSchedule schedule_;
    std::unique_ptr<UpdateCheck> check_;
    bool started_ = false;
    bool asked_ = false; // the running check is one that the user waits for
    std::string lastOffered_;
    std::shared_ptr<int> alive_ = std::make_shared<int>(); // what is queued holds it weakly
};

} // namespace quillon
