#include "Platform/Linux/session/DefaultsWriter.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace quillon {

namespace {
constexpr double coalescingDelay = 0.05;
constexpr double firstRetryDelay = 5;
constexpr double longestRetryDelay = 60;
} // namespace

DefaultsWriter::DefaultsWriter(DefaultsFile file, RunLoop& runLoop, Diagnostics& diagnostics)
    : file_(std::move(file)), runLoop_(runLoop), diagnostics_(diagnostics),
      retryDelay_(firstRetryDelay) {}

void DefaultsWriter::change(std::string_view key, std::optional<DefaultsObject> object) {
    {
        const std::scoped_lock lock(mutex_);
        changes_.insert_or_assign(std::string(key), Change{std::move(object), ++changesMade_});
    }
    schedule();
}

void DefaultsWriter::schedule() {
    if (std::exchange(scheduled_, true)) {
        return;
    }
    runLoop_.asyncAfter(coalescingDelay, [self = shared_from_this()] {
        self->scheduled_ = false;
        self->writeInBackground();
    });
}

void DefaultsWriter::writeInBackground() {
    runLoop_.asyncBackground([self = shared_from_this()] { self->write(); });
}

void DefaultsWriter::write() {
    std::unique_lock lock(mutex_);
    if (writing_) {
        writeAgain_ = true;
        return;
    }
    writing_ = true;
    do {
        writeAgain_ = false;
        writeOnce(lock);
    } while (writeAgain_);
    writing_ = false;
    idle_.notify_all();
}

void DefaultsWriter::writeOnce(std::unique_lock<std::mutex>& lock) {
    if (changes_.empty()) {
        return;
    }
    DefaultsChanges changes;
    for (const auto& [key, change] : changes_) {
        changes.emplace(key, change.object);
    }
    const std::uint64_t newest = changesMade_;

    lock.unlock();
    const auto updated = file_.update(changes);
    reportResult(updated);
    lock.lock();

    if (!updated.failure) {
        // A key that was changed again meanwhile waits for its own write.
        std::erase_if(changes_, [&](const auto& entry) { return entry.second.age <= newest; });
    }
}

void DefaultsWriter::report(std::string_view line) {
    const std::scoped_lock lock(platformMutex_);
    if (!platformIsGone_) {
        diagnostics_.line(line);
    }
}

void DefaultsWriter::reportResult(const DefaultsFile::Updated& updated) {
    if (updated.warning) {
        report(*updated.warning);
    }
    const bool failed = updated.failure.has_value();
    const bool failedBefore = std::exchange(failing_, failed);
    if (failed && !failedBefore) {
        report("⚠️ Settings cannot be written to " + file_.path().string() + ": " +
               *updated.failure + "; trying again");
    } else if (!failed && failedBefore) {
        report("✅ Settings are written to " + file_.path().string() + " again");
    }
    if (!failed && !failedBefore) {
        return;
    }
    const std::scoped_lock lock(platformMutex_);
    if (!platformIsGone_) {
        // The last attempts of a store that is gone are not repeated.
        runLoop_.async([weak = weak_from_this(), failed] {
            if (const auto self = weak.lock()) {
                failed ? self->scheduleRetry() : self->cancelRetry();
            }
        });
    }
}

void DefaultsWriter::scheduleRetry() {
    if (retry_) {
        return;
    }
    retry_ = runLoop_.asyncAfter(retryDelay_, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->retry_ = nullptr;
            self->writeInBackground();
        }
    });
    retryDelay_ = std::min(retryDelay_ * 2, longestRetryDelay);
}

void DefaultsWriter::cancelRetry() {
    if (const auto retry = std::exchange(retry_, nullptr)) {
        retry->cancel();
    }
    retryDelay_ = firstRetryDelay;
}

void DefaultsWriter::beginFlush() {
    const std::scoped_lock lock(mutex_);
    if (changes_.empty()) {
        return;
    }
    const auto flush = [self = shared_from_this()] {
        self->write();
        const std::scoped_lock ended(self->mutex_);
        --self->flushThreads_;
        self->idle_.notify_all();
    };
    ++flushThreads_;
    try {
        std::thread(flush).detach();
    } catch (const std::system_error&) {
        --flushThreads_;
        writeInBackground();
    }
}

bool DefaultsWriter::finishFlush(std::chrono::steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    idle_.wait_until(lock, deadline, [this] { return !writing_ && flushThreads_ == 0; });
    return changes_.empty();
}

void DefaultsWriter::detach() {
    const std::scoped_lock lock(mutex_, platformMutex_);
    // The run loop's own work may still use the platform, a thread that it does not know may not.
    platformIsGone_ = flushThreads_ > 0;
    if (retry_) {
        retry_->cancel();
    }
}

} // namespace quillon
