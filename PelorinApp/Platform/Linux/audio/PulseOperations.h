#pragma once

#include "Platform/Linux/audio/OutputSink.h"

#include <functional>
#include <optional>

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>

namespace quillon {

// Each begins an operation of the sound library by `begin`, which is called at once, and answers
// once: when the operation is done, or cancelled because the connection is lost.

using BeginSink = std::function<pa_operation*(pa_sink_info_cb_t found, void* data)>;
using BeginSuccess = std::function<pa_operation*(pa_context_success_cb_t done, void* data)>;

void awaitSink(std::function<void(const std::optional<OutputSink>&)> answer,
               const BeginSink& begin);

void awaitSuccess(std::function<void(bool)> answer, const BeginSuccess& begin);

} // namespace quillon
