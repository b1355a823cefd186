#include "Platform/Linux/audio/PulseOperations.h"

#include <memory>
#include <utility>

namespace quillon {

namespace {

template <class Result>
struct Pending {
    std::function<void(const Result&)> answer;
    Result result{};
};

/// What the operation was begun with lives until it ends, which the library reports in any case;
/// what it was asked for only when there is an answer.
template <class Result>
void await(pa_operation* operation, std::unique_ptr<Pending<Result>> pending) {
    if (operation == nullptr) {
        pending->answer(Result{});
        return;
    }
    pa_operation_set_state_callback(
        operation,
        [](pa_operation* ended, void* data) {
            if (pa_operation_get_state(ended) != PA_OPERATION_RUNNING) {
                const std::unique_ptr<Pending<Result>> owned(static_cast<Pending<Result>*>(data));
                owned->answer(owned->result);
            }
        },
        pending.release());
    pa_operation_unref(operation); // the connection keeps it while it is going on
}

void sinkFound(pa_context* /*context*/, const pa_sink_info* info, int end, void* data) {
    if (end == 0 && info != nullptr) {
        static_cast<Pending<std::optional<OutputSink>>*>(data)->result = {
            .index = info->index, .volume = info->volume, .isMuted = info->mute != 0};
    }
}

void succeeded(pa_context* /*context*/, int success, void* data) {
    static_cast<Pending<bool>*>(data)->result = success != 0;
}

} // namespace

void awaitSink(std::function<void(const std::optional<OutputSink>&)> answer,
               const BeginSink& begin) {
    auto pending = std::make_unique<Pending<std::optional<OutputSink>>>();
    pending->answer = std::move(answer);
    pa_operation* operation = begin(sinkFound, pending.get());
    await(operation, std::move(pending));
}

void awaitSuccess(std::function<void(bool)> answer, const BeginSuccess& begin) {
    auto pending = std::make_unique<Pending<bool>>();
    pending->answer = [given = std::move(answer)](const bool& isDone) { given(isDone); };
    pa_operation* operation = begin(succeeded, pending.get());
    await(operation, std::move(pending));
}

} // namespace quillon
