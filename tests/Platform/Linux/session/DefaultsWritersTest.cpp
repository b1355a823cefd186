#include "Platform/Linux/session/FileUserDefaults.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include "RecordingDiagnostics.h"
#include "WriterProgram.h"
#include "WrittenValue.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace quillon {
namespace {

struct DefaultsWriter : WriterProgram {
    DefaultsWriter(const std::filesystem::path& file, const std::string& prefix, int keys,
                   int count, int step = 0)
        : WriterProgram({QUILLON_DEFAULTS_WRITER, file.string(), prefix, std::to_string(keys),
                         std::to_string(count), std::to_string(step)}) {}
};

class DefaultsWritersTest : public testing::Test {
  protected:
    /// Reads the file as a program that starts now; fails if there is anything to complain of.
    void readAgain() {
        read = std::make_unique<FileUserDefaults>(file, runLoop, diagnostics);
        EXPECT_EQ(diagnostics.take(), std::vector<std::string>{});
    }

    /// The number of the write that gave the key its value: 0 if it has none, -1 for a value that
    /// no write gave.
    int writeOf(const std::string& key) {
        const auto object = read->object(key);
        if (!object) {
            return 0;
        }
        const auto* text = std::get_if<std::string>(&*object);
        return text == nullptr ? -1 : writeThatGave(*text);
    }

    long temporaryFiles() {
        const auto names = namesIn(folder);
        return std::count_if(names.begin(), names.end(), [](const std::string& name) {
            return name != "defaults.json" && name != "defaults.json.lock";
        });
    }

    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "store";
    std::filesystem::path file = folder / "defaults.json";
    VirtualRunLoop runLoop;
    RecordingDiagnostics diagnostics;
    std::unique_ptr<FileUserDefaults> read;
};

TEST_F(DefaultsWritersTest, ProgramsDoNotLoseEachOthersKeys) {
    const int count = 150;
    DefaultsWriter a(file, "a", count, count);
    DefaultsWriter b(file, "b", count, count);
    EXPECT_EQ(a.wait(), 0);
    EXPECT_EQ(b.wait(), 0);
    readAgain();
    for (int n = 1; n <= count; ++n) {
        EXPECT_EQ(writeOf("a" + std::to_string(n % count)), n);
        EXPECT_EQ(writeOf("b" + std::to_string(n % count)), n);
    }
    EXPECT_EQ(temporaryFiles(), 0);
}

TEST_F(DefaultsWritersTest, WriterThatDiesAtAnyStepLeavesACompleteFile) {
    int step = 1;
    for (;; ++step) {
        SCOPED_TRACE(step);
        std::filesystem::remove_all(folder);
        writeFile(file, "{\"k0\": \"" + writtenValue(7) + "\", \"other\": 1e999}");
        DefaultsWriter program(file, "k", 1, 1, step);
        const bool acknowledged = program.nextAcknowledged() == 1;
        const int status = program.wait();
        readAgain();
        const int written = writeOf("k0");
        EXPECT_TRUE(acknowledged ? written == 1 : written == 1 || written == 7) << written;
        EXPECT_TRUE(read->object("other").has_value());
        EXPECT_LE(temporaryFiles(), 1);
        if (WIFEXITED(status)) {
            EXPECT_EQ(status, 0);
            EXPECT_TRUE(acknowledged);
            break;
        }
        EXPECT_EQ(WTERMSIG(status), SIGKILL);

        DefaultsWriter next(file, "k", 1, 2);
        EXPECT_EQ(next.wait(), 0);
        readAgain();
        EXPECT_EQ(writeOf("k0"), 2);
        EXPECT_EQ(temporaryFiles(), 0);
    }
    // Lock, making, write, two synchronisations and a rename had their turn.
    EXPECT_EQ(step, 7);
}

TEST_F(DefaultsWritersTest, WriterKilledBeforeAnyCallLeavesCompleteValues) {
    const int keys = 3;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> steps(1, 120);
    int lastWrites[keys] = {};
    int leftBehind = 0;
    for (int round = 0; round < 300; ++round) {
        // What is on the disk changes by calls to the system alone, so these are all the moments.
        DefaultsWriter program(file, "k", keys, 1000000, steps(random));
        int acknowledged = 0;
        while (const int next = program.nextAcknowledged()) {
            acknowledged = next;
        }
        ASSERT_EQ(WTERMSIG(program.wait()), SIGKILL);

        readAgain();
        for (int n = std::max(1, acknowledged - keys + 1); n <= acknowledged; ++n) {
            lastWrites[n % keys] = n;
        }
        for (int key = 0; key < keys; ++key) {
            const int written = writeOf("k" + std::to_string(key));
            // At most the one write after the last acknowledged may have arrived, too.
            if (written != lastWrites[key]) {
                EXPECT_EQ(written, acknowledged + 1) << "key " << key << " round " << round;
                lastWrites[key] = written;
            }
        }
        const auto left = temporaryFiles();
        EXPECT_LE(left, 1);
        leftBehind += static_cast<int>(left);
        if (HasFailure()) {
            return;
        }
    }
    RecordProperty("writers that left a temporary file", leftBehind);
    EXPECT_GT(leftBehind, 0) << "no writer was killed in the middle of a write";
}

} // namespace
} // namespace quillon
