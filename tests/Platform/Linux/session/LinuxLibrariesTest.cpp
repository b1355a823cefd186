#include "Platform/Linux/session/LinuxLibraries.h"

#include "Platform/Linux/session/InstalledFiles.h"
#include "Platform/TouchLibrary.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <thread>

#include <dlfcn.h>

namespace quillon {
namespace {

constexpr const char* variable = "QUILLON_TOUCH_LIBRARY";

struct LinuxLibrariesTest : testing::Test {
    LinuxLibrariesTest() { setenv(variable, QUILLON_TOUCH_LIBRARY_FILE, 1); }
    LinuxLibrariesTest(const LinuxLibrariesTest&) = delete;
    LinuxLibrariesTest& operator=(const LinuxLibrariesTest&) = delete;
    ~LinuxLibrariesTest() override { unsetenv(variable); }

    LinuxLibraries libraries;

    static bool isLoaded() {
        void* handle = dlopen(QUILLON_TOUCH_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

    static long threads() {
        const std::filesystem::directory_iterator tasks("/proc/self/task");
        return std::distance(begin(tasks), end(tasks));
    }

    /// One that has ended can be seen for another moment.
    static long threadsInTheEnd(long wanted) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (threads() != wanted && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        return threads();
    }
};

TEST_F(LinuxLibrariesTest, TouchLibraryHasAllThatItIsOpenedFor) {
    const auto library = libraries.open(touchLibraryPath);
    ASSERT_TRUE(library);
    for (const char* symbol :
         {"MTDeviceCreateDefault", "MTRegisterContactFrameCallback",
          "MTUnregisterContactFrameCallback", "MTDeviceStart", "MTDeviceStop"}) {
        EXPECT_NE(library->resolve(symbol), nullptr) << symbol;
    }
    EXPECT_EQ(library->resolve("MTDeviceGetFamilyID"), nullptr);
}

TEST_F(LinuxLibrariesTest, ThereAreNoOthers) {
    EXPECT_FALSE(libraries.open(""));
    EXPECT_FALSE(libraries.open("libc.so.6"));
    EXPECT_FALSE(libraries.open("/System/Library/Frameworks/IOKit.framework/IOKit"));
}

TEST_F(LinuxLibrariesTest, MissingOrDamagedFileIsNoLibrary) {
    testing::internal::CaptureStderr();
    setenv(variable, "/nonexistent/libtouch.so", 1);
    EXPECT_FALSE(libraries.open(touchLibraryPath));
    setenv(variable, "/etc/passwd", 1);
    EXPECT_FALSE(libraries.open(touchLibraryPath));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LinuxLibrariesTest, FindsItBesideTheProgram) {
    const auto beside = thisProgram().parent_path() / "libquillon-touch.so";
    std::filesystem::remove(beside);
    unsetenv(variable);
    EXPECT_FALSE(libraries.open(touchLibraryPath));
    std::filesystem::create_symlink(QUILLON_TOUCH_LIBRARY_FILE, beside);
    EXPECT_TRUE(libraries.open(touchLibraryPath));
    setenv(variable, "", 1);
    EXPECT_TRUE(libraries.open(touchLibraryPath));
    std::filesystem::remove(beside);
}

TEST_F(LinuxLibrariesTest, ClosingItLeavesNothingBehind) {
    const long before = threads();
    for (int round = 0; round < 3; ++round) {
        const auto library = libraries.open(touchLibraryPath);
        ASSERT_TRUE(library);
        EXPECT_TRUE(isLoaded());
        const auto create =
            reinterpret_cast<CreateDefaultTouchDevice>(library->resolve("MTDeviceCreateDefault"));
        const auto start = reinterpret_cast<StartTouchDevice>(library->resolve("MTDeviceStart"));
        const auto stop = reinterpret_cast<StopTouchDevice>(library->resolve("MTDeviceStop"));
        stop(nullptr);
        start(nullptr, 0);
        if (TouchDevice device = create()) { // none when this machine's touchpad may not be read
            start(device, 0);
            EXPECT_EQ(threads(), before + 1);
            if (round == 0) {
                stop(device);
                EXPECT_EQ(threadsInTheEnd(before), before);
            } // else it is closed without having been stopped
        }
    }
    EXPECT_EQ(threadsInTheEnd(before), before);
    EXPECT_FALSE(isLoaded());
}

} // namespace
} // namespace quillon
