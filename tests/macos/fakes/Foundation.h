#pragma once

#include <Foundation/Foundation.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// A small Foundation on gcc's Objective-C runtime, so that the files of macOS run elsewhere. What
// that runtime (version 12) and clang 14 can do, as tried:
// - works: constant strings (UTF-8 bytes and their count), @synthesize of properties, selectors by
//   name, class_addMethod, fast enumeration, @try/@catch of objects, @autoreleasepool, blocks, also
//   as objects (copied by a copy property, kept in arrays);
// - instance variables must stand in the @interface; a class declared without any keeps what it
//   holds by stateOf(). Those of C++ types are constructed by +alloc, and never destroyed;
// - a C++ exception passes through an Objective-C++ function, but only a plain C++ file can catch
//   one; so EXPECT_THROW belongs into a .cpp;
// - static initialisers run before the classes of their file are known: no messages from there;
// - comparing selectors needs sel_isEqual.
//
// Nothing is ever freed: retain, release and autorelease do nothing.

namespace quillon::fakes {

/// What a fake object holds, one value of each type; made by default at the first call. It lives
/// as long as the program. From any thread; the value itself is not protected.
template <class State>
State& stateOf(id object) {
    static std::mutex mutex;
    static std::unordered_map<void*, std::unique_ptr<State>> states;
    const std::scoped_lock lock(mutex);
    auto& state = states[(void*)object];
    if (!state)
        state = std::make_unique<State>();
    return *state;
}

/// Empty for nil.
std::string utf8(NSString* string);

/// Nil when the bytes are no UTF-8.
NSString* stringOf(std::string_view utf8);

/// Empty for nil.
std::vector<id> elementsOf(NSArray* array);

NSArray* arrayOf(const std::vector<id>& elements);

} // namespace quillon::fakes
