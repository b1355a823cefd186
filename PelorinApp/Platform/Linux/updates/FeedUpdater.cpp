#include "Platform/Linux/updates/FeedUpdater.h"

#include "Platform/Linux/updates/FeedAddress.h"
#include "Platform/Linux/updates/Version.h"

#include <utility>

namespace quillon {

namespace {

const std::string productName = "Quillon";
constexpr int longestVersion = 40;
constexpr const char* failedTitle = "Could not check for updates";

std::string reasonText(const FeedFailure& failure) {
    const bool isSentence = failure.reason.ends_with('?');
    return "The update feed could not be read: " + failure.reason + (isSentence ? "" : ".");
}

std::string named(std::string_view version) {
    return productName + " " + plainText(version, longestVersion);
}

} // namespace

FeedUpdater::FeedUpdater(const UpdaterServices& services, std::unique_ptr<FeedFetcher> fetcher,
                         std::weak_ptr<UpdaterDelegate> delegate)
    : services_(services), fetcher_(std::move(fetcher)), delegate_(std::move(delegate)),
      ownVersion_(services.bundle.infoString("version").value_or("")),
      schedule_(services.runLoop, services.defaults, services.diagnostics,
                [this] { return checkInBackground(); }) {}

void FeedUpdater::start() {
    services_.runLoop.async([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            started_ = true;
            startSchedule();
        }
    });
}

std::string FeedUpdater::feedAddress() const {
    if (const auto delegate = delegate_.lock()) {
        if (const auto address = delegate->feedURLStringForUpdater();
            address && !address->empty()) {
            return *address;
        }
    }
    return services_.bundle.infoString("SUFeedURL").value_or("");
}

void FeedUpdater::startSchedule() {
    if (started_ && mayFetch(feedUrl(feedAddress())) && !ownVersion_.empty()) {
        schedule_.start();
    }
}

bool FeedUpdater::checkInBackground() {
    const std::string address = feedAddress();
    if (!mayFetch(feedUrl(address))) {
        schedule_.stop();
        return false;
    }
    if (check_) {
        return false;
    }
    check(address);
    return true;
}

void FeedUpdater::checkForUpdates(Sender* /*sender*/) {
    if (check_) {
        asked_ = true;
        return;
    }
    const std::string address = feedAddress();
    if (feedUrl(address).isEmpty()) {
        tell("Updates are not configured",
             "This copy of " + productName + " does not know where to look for new versions.");
    } else if (!mayFetch(feedUrl(address))) {
        tell(failedTitle, "The address of the update feed must begin with https://.");
    } else if (ownVersion_.empty()) {
        tell(failedTitle, "The version of this copy of " + productName + " is not known.");
    } else {
        asked_ = true;
        check(address);
        startSchedule(); // the feed may have been configured since the start
    }
}

void FeedUpdater::check(const std::string& address) {
    check_ = std::make_unique<UpdateCheck>(
        services_.runLoop, *fetcher_, address,
        [this](const UpdateFindings& findings) { conclude(findings); });
}

void FeedUpdater::conclude(const UpdateFindings& findings) {
    check_.reset();
    const bool asked = std::exchange(asked_, false);
    if (const auto* published = std::get_if<std::optional<PublishedVersion>>(&findings)) {
        concludeWith(*published, asked);
        return;
    }
    const std::string reason = reasonText(std::get<FeedFailure>(findings));
    if (asked) {
        tell(failedTitle, reason);
    } else {
        services_.diagnostics.line("⚠️ " + reason);
    }
}

void FeedUpdater::concludeWith(const std::optional<PublishedVersion>& published, bool asked) {
    if (!published || std::is_lteq(compareVersions(published->version, ownVersion_))) {
        if (asked) {
            tell("You're up to date", named(ownVersion_) + " is the newest version.");
        }
        return;
    }
    const bool isNews =
        lastOffered_.empty() || std::is_gt(compareVersions(published->version, lastOffered_));
    if (isNews) {
        lastOffered_ = published->version;
    }
    if (asked || isNews) {
        offer(*published);
    }
}

void FeedUpdater::tell(const std::string& title, const std::string& text) {
    services_.window.show(title, text, {{"OK", {}}});
}

void FeedUpdater::offer(const PublishedVersion& version) {
    std::vector<UpdateButton> buttons;
    if (!version.page.empty()) {
        // Not through this object, which the window may outlive.
        buttons.push_back({"Open Release Page", [&workspace = services_.workspace,
                                                 page = version.page] { workspace.open(page); }});
    }
    buttons.push_back({"Later", {}});
    services_.window.show("A new version of " + productName + " is available",
                          named(version.version) + " is available. You have " +
                              plainText(ownVersion_, longestVersion) + ".",
                          std::move(buttons));
}

} // namespace quillon
