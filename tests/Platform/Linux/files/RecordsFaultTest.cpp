#include "HubBench.h"

#include "WrittenRecords.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using Names = std::vector<std::string>;

class RecordsFaultTest : public HubBench {
  protected:
    std::unique_ptr<InstalledToolFile> openFile() {
        return std::make_unique<InstalledToolFile>(services,
                                                   desktop.runLoop.makeSerialQueue("records"));
    }

    static inline std::string failing;
    static inline int error = 0;
    static inline Lines made;

    /// From now on these calls fail so.
    static void failCalls(const std::string& name, int with) {
        failing = name;
        error = with;
        made.clear();
        setSystemCallHook([](const SystemCall& call) {
            made.emplace_back(call.name);
            if (call.name == "fsync") {
                struct stat info {};
                ::fstat(call.fd, &info);
                made.back() += S_ISDIR(info.st_mode) ? " folder" : " file";
            }
            return made.back() == failing ? error : 0;
        });
    }
};

TEST_F(RecordsFaultTest, ContentIsOnTheDiskBeforeItsName) {
    const auto file = openFile();
    failCalls("", 0);
    file->save(writtenRecords(1));
    EXPECT_TRUE(file->flush());
    EXPECT_EQ(made, (Lines{"create", "write", "fsync file", "rename", "fsync folder"}));
}

TEST_F(RecordsFaultTest, FailedSaveIsSaidOnceLeavesTheOldFileAndIsNotRetried) {
    const struct {
        const char* call;
        int error;
        std::string said;
    } cases[] = {
        {"create", ENOSPC, "cannot make a file in " + path.string() + ": No space left on device"},
        {"write", ENOSPC, "cannot write " + recordsFile().string() + ": No space left on device"},
        {"fsync file", ENOSPC,
         "cannot write " + recordsFile().string() + ": No space left on device"},
        {"fsync file", EIO, "cannot write " + recordsFile().string() + ": Input/output error"},
        {"rename", ENOSPC,
         "cannot replace " + recordsFile().string() + ": No space left on device"},
        {"create", EACCES, "cannot make a file in " + path.string() + ": Permission denied"},
        {"create", EROFS, "cannot make a file in " + path.string() + ": Read-only file system"},
        {"rename", EROFS, "cannot replace " + recordsFile().string() + ": Read-only file system"},
    };
    for (const auto& fault : cases) {
        SCOPED_TRACE(fault.said);
        const auto file = openFile();
        file->save(writtenRecords(1));
        EXPECT_TRUE(file->flush());
        failCalls(fault.call, fault.error);
        file->save(writtenRecords(2));
        EXPECT_FALSE(file->flush());
        EXPECT_EQ(said(), Lines{"Failed to persist install metadata: " + fault.said});
        const auto callsMade = made.size();
        settle();
        EXPECT_FALSE(file->flush());
        EXPECT_EQ(made.size(), callsMade) << "tried again";
        EXPECT_EQ(recordsOnDisk(), writtenRecords(1));
        EXPECT_EQ(namesIn(path), Names{InstalledToolFile::fileName});
        setSystemCallHook(nullptr);
        file->save(writtenRecords(3));
        EXPECT_TRUE(file->flush());
        EXPECT_EQ(recordsOnDisk(), writtenRecords(3));
        EXPECT_EQ(said(), Lines{});
    }
}

TEST_F(RecordsFaultTest, WhatIsInMemoryStandsWhenItCannotBeSaved) {
    const auto store = open();
    failCalls("create", ENOSPC);
    store->seedBuiltInTools();
    EXPECT_FALSE(store->flush());
    EXPECT_EQ(store->installed().size(), 6U);
    EXPECT_FALSE(fs::exists(recordsFile()));
    EXPECT_EQ(said().size(), 1U);
    setSystemCallHook(nullptr);
    store->setEnabled("tool.mediaControl", false);
    EXPECT_TRUE(store->flush());
    EXPECT_EQ(recordsOnDisk(), store->installed());
}

TEST_F(RecordsFaultTest, DamagedFileStaysUntilTheNextSaveAndIsKeptThen) {
    for (int i = 1; i <= 3; ++i) {
        const std::string damage = "damaged " + std::to_string(i);
        writeFile(recordsFile(), damage);
        const auto file = openFile();
        EXPECT_EQ(file->load(), InstalledTools{});
        EXPECT_EQ(readFile(recordsFile()), damage);
        failCalls("", 0);
        file->save(writtenRecords(i));
        file->save(writtenRecords(i + 1));
        EXPECT_TRUE(file->flush());
        EXPECT_EQ(std::ranges::count(made, "link"), 1);
        EXPECT_EQ(recordsOnDisk(), writtenRecords(i + 1));
    }
    const std::string kept = recordsFile().string() + ".damaged";
    EXPECT_EQ(readFile(kept), "damaged 1");
    EXPECT_EQ(readFile(kept + "-2"), "damaged 2");
    EXPECT_EQ(readFile(kept + "-3"), "damaged 3");
    EXPECT_EQ(namesIn(path).size(), 4U);
    EXPECT_EQ(said(), Lines{});
}

/// Looks at the file before each call that changes one.
TEST_F(RecordsFaultTest, DamagedFileIsThereUntilTheNewOneIs) {
    for (const bool hasLinks : {true, false}) {
        fs::remove_all(path);
        writeFile(recordsFile(), "damaged");
        const auto file = openFile();
        EXPECT_EQ(file->load(), InstalledTools{});
        static fs::path looked;
        static bool links;
        static int missing;
        looked = recordsFile();
        links = hasLinks;
        missing = 0;
        setSystemCallHook([](const SystemCall& call) {
            const std::string content = readFile(looked);
            missing += content != "damaged" && !decodeRecords(content) ? 1 : 0;
            return call.name == "link" && !links ? EPERM : 0;
        });
        file->save(writtenRecords(1));
        EXPECT_TRUE(file->flush());
        setSystemCallHook(nullptr);
        EXPECT_EQ(missing, 0);
        EXPECT_EQ(readFile(recordsFile().string() + ".damaged"), "damaged");
        EXPECT_EQ(recordsOnDisk(), writtenRecords(1));
        EXPECT_EQ(namesIn(path).size(), 2U);
    }
}

TEST_F(RecordsFaultTest, DamagedFileThatCannotBeKeptIsNotReplaced) {
    for (const int fault : {ENOSPC, EIO}) {
        writeFile(recordsFile(), "damaged");
        const auto file = openFile();
        EXPECT_EQ(file->load(), InstalledTools{});
        failCalls("link", fault);
        file->save(writtenRecords(1));
        EXPECT_FALSE(file->flush());
        EXPECT_EQ(said().size(), 1U);
        EXPECT_EQ(readFile(recordsFile()), "damaged");
        EXPECT_EQ(namesIn(path), Names{InstalledToolFile::fileName});
        setSystemCallHook(nullptr);
    }
}

/// What is planted at the names of the records, and of what is kept of them.
TEST_F(RecordsFaultTest, LinksLeadNowhereAndWhatIsNoFileIsKeptAside) {
    const fs::path kept = recordsFile().string() + ".damaged";
    for (const std::string kind : {"link", "dangling", "pipe", "folder"}) {
        SCOPED_TRACE(kind);
        fs::remove_all(path);
        fs::create_directories(path);
        fs::create_symlink(outside / "missing", kept);
        if (kind == "link") {
            fs::create_symlink(outside / "kept", recordsFile());
        } else if (kind == "dangling") {
            fs::create_symlink(outside / "missing", recordsFile());
        } else if (kind == "pipe") {
            ASSERT_EQ(::mkfifo(recordsFile().c_str(), 0600), 0);
        } else {
            writeFile(recordsFile() / "inside", "x");
        }
        const auto planted = fs::symlink_status(recordsFile()).type();
        const auto file = openFile();
        EXPECT_EQ(file->load(), InstalledTools{});
        file->save(writtenRecords(1));
        EXPECT_TRUE(file->flush());
        EXPECT_EQ(said(), Lines{});
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(recordsFile())));
        EXPECT_EQ(recordsOnDisk(), writtenRecords(1));
        EXPECT_EQ(fs::read_symlink(kept), outside / "missing") << "an earlier one is kept";
        EXPECT_EQ(fs::symlink_status(kept.string() + "-2").type(), planted);
    }
}

TEST_F(RecordsFaultTest, SupportFolderThatCannotBeIsSaidAtEachSave) {
    writeFile(path, "a file where the folder should be");
    const auto file = openFile();
    EXPECT_EQ(file->load(), InstalledTools{});
    EXPECT_EQ(said(), Lines{});
    file->save(writtenRecords(1));
    EXPECT_FALSE(file->flush());
    EXPECT_EQ(said(), Lines{"Failed to persist install metadata: cannot make the folder " +
                            path.string() + ": File exists"});
    EXPECT_EQ(readFile(path), "a file where the folder should be");
}

} // namespace
} // namespace quillon
