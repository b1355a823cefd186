#include "Hub/InstalledToolFile.h"

#include "../session/WriterProgram.h"
#include "WrittenRecords.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace quillon {
namespace {

/// Programs that save records are killed; the parameter only divides the work.
class RecordsWriterTest : public testing::TestWithParam<int> {
  protected:
    RecordsWriterTest() { ::setenv("XDG_DATA_HOME", temporary.path().c_str(), 1); }
    ~RecordsWriterTest() override { ::unsetenv("XDG_DATA_HOME"); }

    struct Run {
        int acknowledged = 0;
        int status = 0;
    };
    static Run run(int first, int count, int step, long microseconds) {
        WriterProgram program({QUILLON_RECORDS_WRITER, std::to_string(first), std::to_string(count),
                               std::to_string(step), std::to_string(microseconds)});
        Run run;
        while (const int next = program.nextAcknowledged()) {
            run.acknowledged = next;
        }
        run.status = program.wait();
        return run;
    }

    /// The save that the file holds: 0 when there is none, -1 for what no save gave.
    [[nodiscard]] int saved() const {
        if (!std::filesystem::exists(file)) {
            return 0;
        }
        const auto records = decodeRecords(readFile(file));
        return records ? saveThatGave(*records) : -1;
    }

    [[nodiscard]] long others() const {
        return std::ranges::count_if(namesIn(file.parent_path()), [](const std::string& name) {
            return name != InstalledToolFile::fileName;
        });
    }

    TemporaryFolder temporary;
    std::filesystem::path file =
        temporary.path() / "com.pelorin.PelorinApp" / InstalledToolFile::fileName;
};

TEST_F(RecordsWriterTest, ProgramThatDiesAtAnyStepLeavesWhatWasSaved) {
    int step = 1;
    for (;; ++step) {
        SCOPED_TRACE(step);
        std::filesystem::remove_all(temporary.path() / "com.pelorin.PelorinApp");
        ASSERT_EQ(run(1, 1, 0, 0).acknowledged, 1);
        const Run died = run(2, 1, step, 0);
        const int state = saved();
        EXPECT_TRUE(state == 2 || (state == 1 && died.acknowledged == 0)) << state;
        EXPECT_LE(others(), 1);
        if (WIFEXITED(died.status)) {
            EXPECT_EQ(died.acknowledged, 2);
            break;
        }
        EXPECT_EQ(WTERMSIG(died.status), SIGKILL);
        ASSERT_EQ(run(3, 1, 0, 0).acknowledged, 3);
        EXPECT_EQ(saved(), 3);
        EXPECT_EQ(others(), 0);
    }
    EXPECT_EQ(step, 6); // making, write, two synchronisations and a rename had their turn
}

TEST_P(RecordsWriterTest, ProgramKilledAtAnyMomentLeavesWhatWasSaved) {
    constexpr int kills = 125;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> steps(1, 60);
    std::uniform_int_distribution<long> moments(1, 20000);
    int confirmed = 0;
    int begun = 0; // the highest that may have been saved
    int leftBehind = 0;
    for (int round = 0; round < kills; ++round) {
        const int first = begun + 1;
        const bool byStep = round % 2 == 0;
        const Run died =
            run(first, 1000000, byStep ? steps(random) : 0, byStep ? 0 : moments(random));
        ASSERT_TRUE(WIFSIGNALED(died.status));
        ASSERT_EQ(WTERMSIG(died.status), SIGKILL);
        if (died.acknowledged != 0) {
            confirmed = died.acknowledged;
        }
        const int state = saved();
        // Of the three saves that follow those that were confirmed each may have arrived.
        const int last = died.acknowledged == 0 ? first + 2 : died.acknowledged + 3;
        ASSERT_GE(state, confirmed) << "round " << round;
        ASSERT_LE(state, last) << "round " << round;
        ASSERT_TRUE(state <= begun ? state == confirmed : state >= first) << state;
        confirmed = state;
        begun = last;
        leftBehind += static_cast<int>(others());
        ASSERT_LE(others(), 1);
    }
    RecordProperty("programs that left a temporary file", leftBehind);
    EXPECT_GT(leftBehind, 0) << "no program was killed in the middle of a save";
}

INSTANTIATE_TEST_SUITE_P(EachEighth, RecordsWriterTest, testing::Range(0, 8));

} // namespace
} // namespace quillon
