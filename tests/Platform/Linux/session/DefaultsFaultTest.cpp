#include "Platform/Linux/session/FileUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include "OrdinaryUser.h"
#include "RecordingDiagnostics.h"
#include "SystemCalls.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;
using Names = std::vector<std::string>;
using namespace std::string_literals;

/// What the system calls of a write are told to answer, and what was called.
struct Calls {
    static inline std::vector<std::string> made;
    static inline std::string failing;
    static inline int error = 0;
    static inline VirtualRunLoop* clock = nullptr;
    static inline std::vector<double> lockedAt;

    static int hook(const SystemCall& call) {
        made.emplace_back(call.name);
        if (call.name == "fsync") {
            struct stat info {};
            ::fstat(call.fd, &info);
            made.back() += S_ISDIR(info.st_mode) ? " folder" : " file";
        }
        if (call.name == "flock" && clock != nullptr) {
            lockedAt.push_back(clock->uptime());
        }
        return made.back() == failing ? error : 0;
    }
};

class DefaultsFaultTest : public testing::Test {
  protected:
    DefaultsFaultTest() {
        Calls::made.clear();
        Calls::failing.clear();
        Calls::lockedAt.clear();
        Calls::clock = &runLoop;
    }
    ~DefaultsFaultTest() override {
        setSystemCallHook(nullptr);
        Calls::clock = nullptr;
    }

    FileUserDefaults open() { return {file, runLoop, diagnostics}; }
    void settle() { runLoop.advance(0.1); }

    static void failCall(const std::string& name, int error) {
        Calls::failing = name;
        Calls::error = error;
        setSystemCallHook(Calls::hook);
    }
    static void letCallsSucceed() { Calls::failing.clear(); }

    void expectOneWarning(const std::string& about) {
        const Lines lines = diagnostics.take();
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_TRUE(lines[0].starts_with("⚠️ "));
        EXPECT_NE(lines[0].find(file.string()), std::string::npos) << lines[0];
        EXPECT_NE(lines[0].find(about), std::string::npos) << lines[0];
        EXPECT_EQ(lines[0].find('\n'), std::string::npos) << lines[0];
    }

    /// A file of one key that every test of a failing write starts with.
    void writeOld() { writeFile(file, old); }
    void expectOldAlone() {
        EXPECT_EQ(readFile(file), old);
        for (const auto& name : namesIn(folder)) {
            EXPECT_TRUE(name == "defaults.json" || name == "defaults.json.lock") << name;
        }
    }

    const std::string old = R"({"old": true})";
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "store";
    std::filesystem::path file = folder / "defaults.json";
    VirtualRunLoop runLoop;
    RecordingDiagnostics diagnostics;
};

TEST_F(DefaultsFaultTest, DamagedFileIsWarnedOfAndKeptAside) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "is empty"},
        {R"({"a": 1, "b")", "is not valid JSON at line 1, column 13"},
        {"\x7f\x45LF\x02\x01\xff\xfe", "is not valid JSON at line 1, column 1"},
        {std::string(4096, '\0'), "contains NUL bytes"},
        {R"({"a": 1})"s + '\0', "contains NUL bytes"},
        {R"(["a", 1])", "holds no JSON object"},
        {"{\"a\": \"\xff\"}", "ill-formed UTF-8"},
    };
    for (const auto& [content, reason] : cases) {
        SCOPED_TRACE(reason);
        std::filesystem::remove_all(folder);
        writeFile(file, content);
        auto defaults = open();
        expectOneWarning(reason);
        EXPECT_EQ(defaults.object("a"), std::nullopt);
        defaults.remove("a");
        settle();
        EXPECT_EQ(readFile(file), content);
        EXPECT_EQ(namesIn(folder), (Names{"defaults.json"}));

        defaults.set("b", 2.0);
        settle();
        EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
        EXPECT_EQ(readFile(folder / "defaults.json.damaged"), content);
        EXPECT_EQ(diagnostics.take(), Lines{});
    }
}

TEST_F(DefaultsFaultTest, EarlierDamagedFilesAreNeverReplaced) {
    for (const std::string content : {"first", "second", "third"}) {
        writeFile(file, content);
        auto defaults = open();
        defaults.set("b", 2.0);
        settle();
    }
    EXPECT_EQ(readFile(folder / "defaults.json.damaged"), "first");
    EXPECT_EQ(readFile(folder / "defaults.json.damaged-2"), "second");
    EXPECT_EQ(readFile(folder / "defaults.json.damaged-3"), "third");
}

TEST_F(DefaultsFaultTest, DamagedFileIsKeptAlsoWhereRenamingCannotRefuse) {
    writeFile(folder / "defaults.json.damaged", "first");
    writeFile(file, "second");
    auto defaults = open();
    failCall("renameat2", EINVAL);
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(folder / "defaults.json.damaged"), "first");
    EXPECT_EQ(readFile(folder / "defaults.json.damaged-2"), "second");
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
}

TEST_F(DefaultsFaultTest, DamagedFileIsNotLostWhenItCannotBeKeptAside) {
    writeFile(file, "damaged");
    auto defaults = open();
    expectOneWarning("is not valid JSON");
    failCall("renameat2", EPERM);
    defaults.set("b", 2.0);
    settle();
    expectOneWarning("cannot keep the damaged file aside");
    EXPECT_EQ(readFile(file), "damaged");
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json", "defaults.json.lock"}));
}

TEST_F(DefaultsFaultTest, WrongTypesCostOnlyTheirOwnKeys) {
    writeFile(file, R"({"a": {"b": 1}, "n": null, "h": 1e999, "m": ["x", 1], "good": 3})");
    auto defaults = open();
    EXPECT_EQ(diagnostics.take(), Lines{});
    EXPECT_EQ(defaults.object("good"), std::optional(DefaultsObject(3.0)));
    EXPECT_EQ(defaults.object("h"), std::optional(DefaultsObject(UnsupportedObject{"1e999"})));
    defaults.set("good", 4.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"a\": {\"b\": 1},\n  \"good\": 4.0,\n  \"h\": 1e999,\n"
                              "  \"m\": [\"x\", 1],\n  \"n\": null\n}\n");
}

TEST_F(DefaultsFaultTest, FileDamagedMeanwhileIsReplacedByWhatWasKnown) {
    writeFile(file, R"({"a": 1})");
    auto defaults = open();
    writeFile(file, R"({"a": 5, "typo)");
    defaults.set("b", 2.0);
    settle();
    expectOneWarning("is not valid JSON");
    EXPECT_EQ(readFile(file), "{\n  \"a\": 1,\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(readFile(folder / "defaults.json.damaged"), R"({"a": 5, "typo)");
    // And what has been written since is known, too.
    writeFile(file, "again");
    defaults.set("c", 3.0);
    settle();
    expectOneWarning("is not valid JSON");
    EXPECT_EQ(readFile(file), "{\n  \"a\": 1,\n  \"b\": 2.0,\n  \"c\": 3.0\n}\n");
}

TEST_F(DefaultsFaultTest, FileRemovedMeanwhileStaysRemovedButForTheChange) {
    writeFile(file, R"({"a": 1})");
    auto defaults = open();
    std::filesystem::remove_all(folder);
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(diagnostics.take(), Lines{});
}

TEST_F(DefaultsFaultTest, FolderInTheFilesPlaceIsKeptAside) {
    writeFile(file / "inside", "x");
    auto defaults = open();
    expectOneWarning("is not a regular file");
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(readFile(folder / "defaults.json.damaged" / "inside"), "x");
}

TEST_F(DefaultsFaultTest, NamedPipeInTheFilesPlaceDoesNotBlock) {
    std::filesystem::create_directories(folder);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    auto defaults = open();
    expectOneWarning("is not a regular file");
    defaults.set("b", 2.0);
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "defaults.json.damaged"));
}

TEST_F(DefaultsFaultTest, LinkToADeviceIsKeptAsideAndTheDeviceLeftAlone) {
    std::filesystem::create_directories(folder);
    // Stands for the device itself, which an administrator's test must not put at risk.
    const auto pipe = temporary.path() / "device";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink(pipe, file);
    auto defaults = open();
    expectOneWarning("is not a regular file");
    defaults.set("b", 2.0);
    EXPECT_TRUE(defaults.flush());
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_FALSE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(std::filesystem::read_symlink(folder / "defaults.json.damaged"), pipe);
}

TEST_F(DefaultsFaultTest, LinksInACircleAreKeptAside) {
    std::filesystem::create_directories(folder);
    std::filesystem::create_symlink("other", file);
    std::filesystem::create_symlink("defaults.json", folder / "other");
    auto defaults = open();
    expectOneWarning("cannot be read");
    defaults.set("b", 2.0);
    settle();
    EXPECT_FALSE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
}

TEST_F(DefaultsFaultTest, FileAtTheSizeLimitIsReadAndALargerOneIsNot) {
    const std::string content = R"({"a": 1})";
    const std::string largest =
        content + std::string(DefaultsFile::largestSize - content.size(), '\n');
    writeFile(file, largest);
    EXPECT_EQ(open().object("a"), std::optional(DefaultsObject(1.0)));
    EXPECT_EQ(diagnostics.take(), Lines{});
    writeFile(file, largest + '\n');
    EXPECT_EQ(open().object("a"), std::nullopt);
    expectOneWarning("is larger than 4 MiB");
}

TEST_F(DefaultsFaultTest, StoreIsNotWrittenLargerThanItCanBeRead) {
    writeOld();
    auto defaults = open();
    defaults.set("large", std::string(DefaultsFile::largestSize, 'x'));
    settle();
    expectOneWarning("more than 4 MiB");
    expectOldAlone();
    defaults.set("large", std::string("small"));
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"large\": \"small\",\n  \"old\": true\n}\n");
}

TEST_F(DefaultsFaultTest, DeepNestingIsKept) {
    const std::string nested = std::string(300000, '[') + std::string(300000, ']');
    writeFile(file, "{\"a\": " + nested + "}");
    auto defaults = open();
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"a\": " + nested + ",\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(diagnostics.take(), Lines{});
}

TEST_F(DefaultsFaultTest, ContentIsOnTheDiskBeforeItsName) {
    writeOld();
    auto defaults = open();
    failCall("none", 0);
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(Calls::made,
              (Lines{"flock", "create", "write", "fsync file", "rename", "fsync folder"}));
}

TEST_F(DefaultsFaultTest, FailingCallsLeaveTheOldFile) {
    const std::vector<std::pair<std::string, int>> cases{
        {"flock", EIO}, {"create", ENOSPC}, {"write", EIO}, {"fsync file", EIO}, {"rename", EBUSY}};
    for (const auto& [name, error] : cases) {
        SCOPED_TRACE(name);
        writeOld();
        auto defaults = open();
        failCall(name, error);
        defaults.set("b", 2.0);
        settle();
        expectOneWarning("cannot be written");
        expectOldAlone();
        letCallsSucceed();
        EXPECT_TRUE(defaults.flush());
        EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0,\n  \"old\": true\n}\n");
        EXPECT_EQ(diagnostics.take().size(), 1U);
    }
}

TEST_F(DefaultsFaultTest, InterruptedCallsAreRepeated) {
    // Each is interrupted once.
    setSystemCallHook([](const SystemCall& call) {
        Calls::made.emplace_back(call.name);
        const auto& made = Calls::made;
        return call.name != "rename" && std::count(made.begin(), made.end(), call.name) == 1 ? EINTR
                                                                                             : 0;
    });
    writeOld(); // in a folder that is there, whose making would be synchronised first
    auto defaults = open();
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0,\n  \"old\": true\n}\n");
    EXPECT_EQ(diagnostics.take(), Lines{});
}

TEST_F(DefaultsFaultTest, FileSystemWithoutLocksIsWrittenWithout) {
    writeFile(folder / "defaults.json.tmp-abcdef", "of a writer that may be alive");
    auto defaults = open();
    failCall("flock", ENOLCK);
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    EXPECT_TRUE(std::filesystem::exists(folder / "defaults.json.tmp-abcdef"));
    EXPECT_EQ(diagnostics.take(), Lines{});
}

TEST_F(DefaultsFaultTest, WhatDeadWritersLeftIsRemovedAndNothingElse) {
    writeFile(folder / "defaults.json.tmp-abcdef", "half");
    writeFile(folder / "defaults.json.tmp-ABC123", "half");
    writeFile(folder / "defaults.json.tmp-notes", "mine");
    writeFile(folder / "other.json.tmp-abcdef", "mine");
    auto defaults = open();
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json", "defaults.json.lock",
                                      "defaults.json.tmp-notes", "other.json.tmp-abcdef"}));
}

TEST_F(DefaultsFaultTest, RunOfFailuresIsReportedOnceAndItsEndOnce) {
    writeFile(folder, "a file where the folder should be");
    auto defaults = open();
    EXPECT_EQ(diagnostics.take(), Lines{});
    defaults.set("a", 1.0);
    settle();
    expectOneWarning("cannot make the folder");
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(runLoop.timerCount(), 1U) << "more than one retry";
    EXPECT_FALSE(defaults.flush());
    runLoop.advance(600);
    EXPECT_EQ(diagnostics.take(), Lines{});

    std::filesystem::remove(folder);
    runLoop.advance(60);
    EXPECT_EQ(readFile(file), "{\n  \"a\": 1.0,\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(diagnostics.take(), (Lines{"✅ Settings are written to " + file.string() + " again"}));
    EXPECT_EQ(runLoop.timerCount(), 0U);
}

TEST_F(DefaultsFaultTest, NextChangeTriesAgainWithoutWaiting) {
    writeFile(folder, "a file where the folder should be");
    auto defaults = open();
    defaults.set("a", 1.0);
    settle();
    std::filesystem::remove(folder);
    defaults.set("b", 2.0);
    settle();
    EXPECT_EQ(readFile(file), "{\n  \"a\": 1.0,\n  \"b\": 2.0\n}\n");
    EXPECT_EQ(runLoop.timerCount(), 0U);
}

TEST_F(DefaultsFaultTest, RetriesBackOffToOnceAMinute) {
    auto defaults = open();
    failCall("flock", EIO);
    defaults.set("a", 1.0);
    runLoop.advance(200);
    EXPECT_EQ(Calls::lockedAt,
              (std::vector<double>{0.05, 5.05, 15.05, 35.05, 75.05, 135.05, 195.05}));
    // A success starts the next run of failures from the beginning.
    letCallsSucceed();
    runLoop.advance(60);
    failCall("flock", EIO);
    Calls::lockedAt.clear();
    defaults.set("b", 1.0);
    runLoop.advance(10);
    EXPECT_EQ(Calls::lockedAt, (std::vector<double>{260.05, 265.05}));
}

TEST_F(DefaultsFaultTest, RetriesEndWithTheStore) {
    {
        auto defaults = open();
        failCall("flock", EIO);
        defaults.set("a", 1.0);
        settle();
        EXPECT_EQ(runLoop.timerCount(), 1U);
    }
    EXPECT_EQ(runLoop.timerCount(), 0U);
    Calls::lockedAt.clear();
    runLoop.advance(100);
    EXPECT_TRUE(Calls::lockedAt.empty());
}

TEST_F(DefaultsFaultTest, FullDiskLeavesTheOldFile) {
    writeOld();
    auto defaults = open();
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    defaults.set("b", std::string(5000, 'x'));
    settle();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, previous);

    expectOneWarning("cannot write");
    expectOldAlone();
    runLoop.advance(5);
    EXPECT_EQ(readFile(file),
              "{\n  \"b\": \"" + std::string(5000, 'x') + "\",\n  \"old\": true\n}\n");
    EXPECT_EQ(diagnostics.take().size(), 1U);
}

/// The fixture's folder belongs to the user whose rights are left.
class DefaultsPermissionTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!user.held()) {
            GTEST_SKIP() << "the system does not let an administrator's rights go";
        }
        writeFile(file, R"({"old": true})");
    }

    OrdinaryUser user;
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "store";
    std::filesystem::path file = folder / "defaults.json";
    VirtualRunLoop runLoop;
    RecordingDiagnostics diagnostics;
};

TEST_F(DefaultsPermissionTest, UnreadableFileIsKeptAside) {
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    FileUserDefaults defaults(file, runLoop, diagnostics);
    const Lines lines = diagnostics.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("cannot be read: Permission denied"), std::string::npos) << lines[0];
    defaults.set("b", 2.0);
    runLoop.advance(0.1);
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0\n}\n");
    ASSERT_EQ(::chmod((folder / "defaults.json.damaged").c_str(), 0600), 0);
    EXPECT_EQ(readFile(folder / "defaults.json.damaged"), R"({"old": true})");
}

TEST_F(DefaultsPermissionTest, ReadOnlyFolderIsReportedAndTheFileLeft) {
    ASSERT_EQ(::chmod(folder.c_str(), 0500), 0);
    FileUserDefaults defaults(file, runLoop, diagnostics);
    defaults.set("b", 2.0);
    runLoop.advance(0.1);
    EXPECT_FALSE(defaults.flush());
    EXPECT_EQ(readFile(file), R"({"old": true})");
    EXPECT_EQ(namesIn(folder), (Names{"defaults.json"}));
    const Lines lines = diagnostics.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Permission denied"), std::string::npos) << lines[0];
    ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
    runLoop.advance(5);
    EXPECT_EQ(readFile(file), "{\n  \"b\": 2.0,\n  \"old\": true\n}\n");
}

} // namespace
} // namespace quillon
