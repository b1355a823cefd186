#include "FakeLibraries.h"

#include <dlfcn.h>

namespace quillon::fakes {

FakeLibraries& fakeLibraries() {
    // Never destroyed: libraries are closed also while the program ends.
    static FakeLibraries& fake = *new FakeLibraries;
    return fake;
}

} // namespace quillon::fakes

// The system's own are found behind these.
extern "C" {

void* dlopen(const char* path, int mode) noexcept {
    using Open = void* (*)(const char*, int);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    auto& fake = quillon::fakes::fakeLibraries();
    if (path == nullptr) {
        return open(path, mode);
    }
    const auto found = fake.files.find(path);
    const char* file = found == fake.files.end() ? path
                       : found->second.empty()   ? nullptr
                                                 : found->second.c_str();
    void* handle = open(file, mode);
    fake.openings.push_back({path, mode, handle});
    return handle;
}

int dlclose(void* handle) {
    using Close = int (*)(void*);
    static const auto close = reinterpret_cast<Close>(dlsym(RTLD_NEXT, "dlclose"));
    quillon::fakes::fakeLibraries().closed.push_back(handle);
    return close(handle);
}

} // extern "C"
