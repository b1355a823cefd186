#include "Platform/Linux/audio/PulseLoop.h"

#include <new>
#include <utility>

#include <pthread.h>

namespace quillon {

PulseLoop::PulseLoop() : loop_(pa_mainloop_new()) {
    if (!loop_) {
        throw std::bad_alloc();
    }
    api().io_new(
        &api(), wakeUp_.descriptor(), PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
            static_cast<PulseLoop*>(self)->runPosted();
        },
        this);
    thread_ = std::thread([this] { run(); });
    pthread_setname_np(thread_.native_handle(), "sound");
}

bool PulseLoop::post(std::function<void()> work) {
    {
        const std::scoped_lock lock(mutex_);
        if (stops_) {
            return false;
        }
        posted_.push_back(std::move(work));
    }
    wakeUp_.wake();
    return true;
}

void PulseLoop::stop() {
    {
        const std::scoped_lock lock(mutex_);
        stops_ = true;
    }
    wakeUp_.wake();
    thread_.join();
}

void PulseLoop::run() { pa_mainloop_run(loop_.get(), nullptr); }

void PulseLoop::runPosted() {
    wakeUp_.clear();
    std::vector<std::function<void()>> posted;
    bool stops = false;
    {
        const std::scoped_lock lock(mutex_);
        posted.swap(posted_);
        stops = stops_;
    }
    for (const auto& work : posted) {
        work();
    }
    if (stops) {
        api().quit(&api(), 0);
    }
}

} // namespace quillon
