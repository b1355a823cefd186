#include "Replay/replay.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace quillon {
namespace {

const std::string notch = "defaults Tool4LeftEdge true\n"
                          "tool tool.desktopSwitcher\n"
                          "0 pointer 0 450\n"
                          "5 wheel 1\n";
const std::string notchOutput = "0 tap install tool.desktopSwitcher\n5 consume\n";

class ReplayTest : public testing::Test {
  protected:
    void write(const std::string& text) { std::ofstream(file_, std::ios::binary) << text; }
    int replay(bool check = false) { return replayCommand(path(), check, out_, err_); }
    [[nodiscard]] std::string path() const { return file_.string(); }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_.path() / "test.trace";
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(ReplayTest, PrintsWhatTheToolsDid) {
    write(notch);
    EXPECT_EQ(replay(), 0);
    EXPECT_EQ(out_.str(), notchOutput);
    EXPECT_EQ(err_.str(), "");
}

TEST_F(ReplayTest, WithoutCheckTheExpectationDoesNotMatter) {
    write(notch + "----\nsomething else\n");
    EXPECT_EQ(replay(), 0);
    EXPECT_EQ(out_.str(), notchOutput);
}

TEST_F(ReplayTest, ACheckOfEqualOutputIsSilent) {
    write(notch + "----\n" + notchOutput);
    EXPECT_EQ(replay(true), 0);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), "");
}

TEST_F(ReplayTest, ACheckOfOtherOutputShowsTheDifference) {
    write(notch + "----\n0 tap install tool.desktopSwitcher\n5 pass\n");
    EXPECT_EQ(replay(true), 1);
    EXPECT_EQ(out_.str(), "--- " + path() + " (expected)\n+++ " + path() +
                              " (replayed)\n@@ -6,2 +1,2 @@\n"
                              " 0 tap install tool.desktopSwitcher\n-5 pass\n+5 consume\n");
    EXPECT_EQ(err_.str(), "");
}

TEST_F(ReplayTest, ACheckNeedsAnExpectation) {
    write(notch);
    EXPECT_EQ(replay(true), 2);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(),
              path() + ": no expected output to compare with: a line ---- is missing\n");
}

TEST_F(ReplayTest, AnEmptyExpectationIsOne) {
    write("0 wheel 1\n----\n");
    EXPECT_EQ(replay(true), 0);
}

TEST_F(ReplayTest, ATraceThatDoesNotParseIsRefusedWithItsPlace) {
    write("# a\n\nscren 0 0 1 1\n----\n");
    EXPECT_EQ(replay(true), 2);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), path() + ":3:1: unknown statement \"scren\"; did you mean screen?\n");
}

TEST_F(ReplayTest, APropertyThatCannotBeSetIsRefusedWithItsPlace) {
    write("tool tool.desktopSwitcher\n0 wheel 1\n1 set tool.mediaControl isOn true\n----\n");
    EXPECT_EQ(replay(), 2);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), path() + ":3:25: tool.mediaControl has no property \"isOn\"\n");
}

TEST_F(ReplayTest, AFileThatIsNotThereIsRefused) {
    EXPECT_EQ(replay(), 2);
    EXPECT_EQ(err_.str(), path() + ": No such file or directory\n");
}

TEST_F(ReplayTest, ADirectoryIsRefused) {
    std::filesystem::create_directory(file_);
    EXPECT_EQ(replay(), 2);
    EXPECT_EQ(err_.str(), path() + ": Is a directory\n");
}

TEST_F(ReplayTest, AFileCanBeAsLargeAsTheLimitAndNoLarger) {
    constexpr std::size_t limit = std::size_t{16} * 1024 * 1024;
    write("#" + std::string(limit - 1, ' '));
    EXPECT_EQ(replay(), 0);
    write("#" + std::string(limit, ' '));
    EXPECT_EQ(replay(), 2);
    EXPECT_EQ(err_.str(), path() + ": larger than 16 MiB\n");
}

TEST_F(ReplayTest, OutputThatCannotBeWrittenIsAFailure) {
    write(notch);
    out_.setstate(std::ios::badbit);
    EXPECT_EQ(replay(), 2);
    EXPECT_EQ(err_.str(), path() + ": its output cannot be written\n");
}

} // namespace
} // namespace quillon
