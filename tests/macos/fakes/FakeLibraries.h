#pragma once

#include <map>
#include <string>
#include <vector>

namespace quillon::fakes {

/// Loading of libraries at run time. Main thread only.
class FakeLibraries {
  public:
    struct Opening {
        std::string path;
        int mode;
        void* handle; // null when it failed
    };

    /// By the path that is asked for, the file that is opened in its stead; empty for the test
    /// program itself, which must then be linked so that it exports its symbols.
    std::map<std::string, std::string> files;

    std::vector<Opening> openings;
    std::vector<void*> closed;

    void reset() { *this = {}; }
};

FakeLibraries& fakeLibraries();

} // namespace quillon::fakes
