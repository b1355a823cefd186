#include "Platform/Linux/audio/PulseServer.h"

#include "Platform/Linux/audio/PulseOperations.h"
#include "Platform/Linux/audio/SharedMemoryFile.h"

#include <utility>

namespace quillon {

namespace {

/// How long there is no other attempt after one that failed: scrolling asks a hundred times a
/// second.
constexpr std::chrono::milliseconds attemptsApart{250};

/// A connection that has been there for less is not made anew because it knows no sink.
constexpr std::chrono::milliseconds freshFor{100};

} // namespace

void PulseServer::connect(OnDone answer) {
    if (connection_ != nullptr && !PA_CONTEXT_IS_GOOD(state())) {
        drop();
    }
    if (state() == PA_CONTEXT_READY) {
        answer(true);
        return;
    }
    waiting_.push_back(std::move(answer));
    if (connection_ == nullptr) {
        beginConnection();
    }
}

void PulseServer::beginConnection() {
    if (isClosed_ || (failed_ && Clock::now() - *failed_ < attemptsApart)) {
        answerWaiting(false);
        return;
    }
    connection_ = pa_context_new(&context_.api, "Quillon");
    keepSharedMemoryFromPrograms();
    if (connection_ == nullptr ||
        pa_context_connect(connection_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        drop();
        return;
    }
    pa_context_set_state_callback(
        connection_,
        [](pa_context*, void* self) { static_cast<PulseServer*>(self)->stateChanged(); }, this);
    stateChanged();
}

void PulseServer::stateChanged() {
    if (state() == PA_CONTEXT_READY) {
        failed_.reset();
        connected_ = Clock::now();
        answerWaiting(true);
    } else if (!PA_CONTEXT_IS_GOOD(state())) {
        // Not while the library is about to use it.
        context_.later([this] {
            if (connection_ != nullptr && !PA_CONTEXT_IS_GOOD(state())) {
                drop();
            }
        });
    }
}

void PulseServer::drop() {
    // It was lost with a caller waiting for it, or without having been there.
    if (!waiting_.empty()) {
        failed_ = Clock::now();
    }
    if (pa_context* connection = std::exchange(connection_, nullptr)) {
        pa_context_set_state_callback(connection, nullptr, nullptr);
        pa_context_set_subscribe_callback(connection, nullptr, nullptr);
        pa_context_disconnect(connection);
        pa_context_unref(connection);
    }
    isWatched_ = false;
    context_.lost();
    answerWaiting(false);
}

void PulseServer::close() {
    isClosed_ = true;
    drop();
}

void PulseServer::answerWaiting(bool isConnected) {
    for (const OnDone& answer : std::exchange(waiting_, {})) {
        answer(isConnected);
    }
}

pa_context_state_t PulseServer::state() const {
    return connection_ == nullptr ? PA_CONTEXT_UNCONNECTED : pa_context_get_state(connection_);
}

void PulseServer::askDefaultSink(OnSink answer) {
    if (state() != PA_CONTEXT_READY) {
        answer(std::nullopt);
        return;
    }
    auto doubtful = [this, answer = std::move(answer)](const auto& sink) {
        if (!sink) {
            doubt();
        }
        answer(sink);
    };
    awaitSink(std::move(doubtful), [this](pa_sink_info_cb_t found, void* data) {
        return pa_context_get_sink_info_by_name(connection_, "@DEFAULT_SINK@", found, data);
    });
}

void PulseServer::doubt() {
    if (state() != PA_CONTEXT_READY || Clock::now() - connected_ < freshFor) {
        return;
    }
    context_.later([this, doubted = connection_] {
        if (connection_ == doubted) {
            drop();
        }
    });
}

void PulseServer::askSink(std::uint32_t index, OnSink answer) {
    if (state() != PA_CONTEXT_READY) {
        answer(std::nullopt);
        return;
    }
    awaitSink(std::move(answer), [this, index](pa_sink_info_cb_t found, void* data) {
        return pa_context_get_sink_info_by_index(connection_, index, found, data);
    });
}

void PulseServer::setVolume(std::uint32_t index, const pa_cvolume& volume, OnDone answer) {
    if (state() != PA_CONTEXT_READY) {
        answer(false);
        return;
    }
    awaitSuccess(std::move(answer), [&](pa_context_success_cb_t done, void* data) {
        return pa_context_set_sink_volume_by_index(connection_, index, &volume, done, data);
    });
}

void PulseServer::setMute(std::uint32_t index, bool isMuted, OnDone answer) {
    if (state() != PA_CONTEXT_READY) {
        answer(false);
        return;
    }
    awaitSuccess(std::move(answer), [&](pa_context_success_cb_t done, void* data) {
        return pa_context_set_sink_mute_by_index(connection_, index, isMuted ? 1 : 0, done, data);
    });
}

void PulseServer::watchSinks(bool isWatched) {
    if (state() != PA_CONTEXT_READY || isWatched == isWatched_) {
        return;
    }
    isWatched_ = isWatched;
    pa_context_set_subscribe_callback(
        connection_,
        [](pa_context*, pa_subscription_event_type_t, std::uint32_t index, void* self) {
            static_cast<PulseServer*>(self)->context_.sinkChanged(index);
        },
        this);
    awaitSuccess([](bool) {},
                 [&](pa_context_success_cb_t done, void* data) {
                     const auto mask =
                         isWatched ? PA_SUBSCRIPTION_MASK_SINK : PA_SUBSCRIPTION_MASK_NULL;
                     return pa_context_subscribe(connection_, mask, done, data);
                 });
}

} // namespace quillon
