#include "Platform/Linux/session/FileUserDefaults.h"

#include "Platform/Linux/session/FileLock.h"

#include "RecordingDiagnostics.h"
#include "SystemCalls.h"
#include "ThreadedRunLoop.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

namespace quillon {
namespace {

using namespace std::chrono_literals;

class DefaultsThreadTest : public testing::Test {
  protected:
    ~DefaultsThreadTest() override { setSystemCallHook(nullptr); }

    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "store";
    std::filesystem::path file = folder / "defaults.json";
    RecordingDiagnostics diagnostics;
    std::unique_ptr<ThreadedRunLoop> runLoop = std::make_unique<ThreadedRunLoop>();
};

TEST_F(DefaultsThreadTest, MainThreadNeverTouchesTheDisk) {
    static std::thread::id mainThread;
    static std::atomic<int> onMain;
    static std::atomic<int> elsewhere;
    mainThread = std::this_thread::get_id();
    onMain = 0;
    elsewhere = 0;
    setSystemCallHook([](const SystemCall& call) {
        if (call.name == "fsync") {
            ++(std::this_thread::get_id() == mainThread ? onMain : elsewhere);
        }
        return 0;
    });
    FileUserDefaults defaults(file, *runLoop, diagnostics);
    defaults.set("x", 1.0);
    runLoop->fireTimers();
    runLoop->waitForBackground();
    EXPECT_EQ(elsewhere, 3); // a new folder, the file, and the folder again
    defaults.set("x", 2.0);
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(elsewhere, 5);
    EXPECT_EQ(onMain, 0);
}

constexpr std::chrono::seconds limit = 20s; // what a broken program is waited for

/// Holds the first write back until it is let go.
struct SlowWrite {
    static inline std::atomic<int> begun;
    static inline std::promise<void> first;
    static inline std::promise<void> letGo;

    static void start() {
        begun = 0;
        first = {};
        letGo = {};
        setSystemCallHook([](const SystemCall& call) {
            if (call.name == "flock" && ++begun == 1) {
                first.set_value();
                letGo.get_future().wait_for(limit);
            }
            return 0;
        });
    }
    static bool waitForFirst() {
        return first.get_future().wait_for(limit) == std::future_status::ready;
    }
};

TEST_F(DefaultsThreadTest, OneWriteAtATimeAndTheLastValueLast) {
    SlowWrite::start();
    FileUserDefaults defaults(file, *runLoop, diagnostics);
    defaults.set("x", 1.0);
    runLoop->fireTimers();
    ASSERT_TRUE(SlowWrite::waitForFirst());

    defaults.set("x", 2.0);
    runLoop->fireTimers();
    ASSERT_TRUE(runLoop->waitUntilFinished(1, limit));
    EXPECT_EQ(SlowWrite::begun, 1);

    SlowWrite::letGo.set_value();
    runLoop->waitForBackground();
    EXPECT_EQ(SlowWrite::begun, 2);
    EXPECT_EQ(readFile(file), "{\n  \"x\": 2.0\n}\n");
}

TEST_F(DefaultsThreadTest, FlushWaitsForTheWriteThatIsOnItsWay) {
    SlowWrite::start();
    FileUserDefaults defaults(file, *runLoop, diagnostics);
    defaults.set("x", 1.0);
    runLoop->fireTimers();
    ASSERT_TRUE(SlowWrite::waitForFirst());
    defaults.set("x", 2.0);
    EXPECT_FALSE(defaults.flush(1ms));
    SlowWrite::letGo.set_value();
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(readFile(file), "{\n  \"x\": 2.0\n}\n");
}

TEST_F(DefaultsThreadTest, FlushGivesUpWhileAnotherProgramHoldsTheLock) {
    std::filesystem::create_directories(folder);
    FileLock other;
    ASSERT_EQ(other.acquire(file.string() + ".lock", 0ms), std::nullopt);
    FileUserDefaults defaults(file, *runLoop, diagnostics);
    defaults.set("x", 1.0);
    EXPECT_FALSE(defaults.flush(1ms));
    EXPECT_FALSE(std::filesystem::exists(file));
    other = FileLock();
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(readFile(file), "{\n  \"x\": 1.0\n}\n");
}

TEST_F(DefaultsThreadTest, LockIsNotWaitedForForever) {
    FileLock first;
    FileLock second;
    const auto path = temporary.path() / "lock";
    ASSERT_EQ(first.acquire(path, 0ms), std::nullopt);
    const auto begun = std::chrono::steady_clock::now();
    const auto failure = second.acquire(path, 30ms);
    EXPECT_GE(std::chrono::steady_clock::now() - begun, 30ms);
    EXPECT_EQ(failure, "another program holds the lock of " + path.string());
    EXPECT_FALSE(second.held());
    EXPECT_TRUE(second.isTaken());
}

TEST_F(DefaultsThreadTest, WhoOnlyReadsSharesTheLockAndMakesNone) {
    const auto path = temporary.path() / "lock";
    FileLock reader;
    EXPECT_EQ(reader.acquireToRead(path, 0ms), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(path));
    FileLock writer;
    ASSERT_EQ(writer.acquire(path, 0ms), std::nullopt);
    EXPECT_NE(reader.acquireToRead(path, 0ms), std::nullopt);
    EXPECT_TRUE(reader.isTaken());
    writer = FileLock();
    FileLock other;
    EXPECT_EQ(reader.acquireToRead(path, 0ms), std::nullopt);
    EXPECT_EQ(other.acquireToRead(path, 0ms), std::nullopt);
    EXPECT_NE(writer.acquire(path, 0ms), std::nullopt);
    EXPECT_TRUE(writer.isTaken());
}

TEST_F(DefaultsThreadTest, WriteThatAFlushLeftBehindUsesNothingThatIsGone) {
    SlowWrite::start();
    auto gone = std::make_unique<RecordingDiagnostics>();
    {
        FileUserDefaults defaults(file, *runLoop, *gone);
        defaults.set("x", 1.0);
        EXPECT_FALSE(defaults.flush(1ms));
        ASSERT_TRUE(SlowWrite::waitForFirst());
        writeFile(file, "damaged meanwhile"); // something to tell
    }
    runLoop.reset();
    gone.reset();
    SlowWrite::letGo.set_value();
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (readFile(file) != "{\n  \"x\": 1.0\n}\n") {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline);
        std::this_thread::yield();
    }
}

TEST_F(DefaultsThreadTest, ChangesWhileWritingAreNeverLost) {
    FileUserDefaults defaults(file, *runLoop, diagnostics);
    for (int i = 0; i < 300; ++i) {
        defaults.set("key" + std::to_string(i % 7), i * 1.0);
        runLoop->fireTimers();
    }
    EXPECT_TRUE(defaults.flush(limit));
    runLoop->waitForBackground();
    const FileUserDefaults read(file, *runLoop, diagnostics);
    for (int i = 293; i < 300; ++i) {
        EXPECT_EQ(read.object("key" + std::to_string(i % 7)),
                  std::optional(DefaultsObject(i * 1.0)));
    }
    EXPECT_TRUE(diagnostics.take().empty());
}

} // namespace
} // namespace quillon
