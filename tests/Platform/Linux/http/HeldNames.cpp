#include "HeldNames.h"

#include <condition_variable>
#include <mutex>
#include <string_view>

#include <dlfcn.h>
#include <netdb.h>

namespace quillon {

namespace {

// Never destroyed: threads may still be about to leave when the process ends.
struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool holds = false;
    int held = 0;
};

State& state() {
    static State& one = *new State;
    return one;
}

void hold() {
    State& all = state();
    std::unique_lock lock(all.mutex);
    ++all.held;
    all.changed.notify_all();
    all.changed.wait(lock, [&] { return !all.holds; });
    --all.held;
    all.changed.notify_all();
}

} // namespace

HeldNames::HeldNames() {
    const std::scoped_lock lock(state().mutex);
    state().holds = true;
}

HeldNames::~HeldNames() {
    std::unique_lock lock(state().mutex);
    state().holds = false;
    state().changed.notify_all();
    state().changed.wait(lock, [] { return state().held == 0; });
}

int HeldNames::held() {
    const std::scoped_lock lock(state().mutex);
    return state().held;
}

} // namespace quillon

// The C library's header does not name the parameters so that they could be used.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    const std::string_view wanted = name == nullptr ? "" : name;
    if (wanted.ends_with(".held.invalid")) {
        quillon::hold();
    }
    if (wanted.ends_with(".invalid")) {
        return EAI_NONAME;
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto real = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(name, service, hints, result);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
