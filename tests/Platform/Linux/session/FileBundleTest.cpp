#include "Platform/Linux/session/FileBundle.h"

#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace quillon {
namespace {

struct FileBundleTest : testing::Test {
    std::vector<std::string> lines;
    SimulatedDesktop desktop{
        [this](std::string_view, const std::string& text) { lines.push_back(text); }};
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "Info.json";

    void write(const char* text) const { std::ofstream(file) << text; }
};

TEST_F(FileBundleTest, ReadsTexts) {
    write(R"({"identifier": "com.example", "SUFeedURL": "https://example/feed", "n": 1})");
    const FileBundle bundle(file, desktop.diagnostics);
    EXPECT_EQ(bundle.identifier(), "com.example");
    EXPECT_EQ(bundle.infoString("SUFeedURL"), "https://example/feed");
    EXPECT_EQ(bundle.infoString("n"), std::nullopt) << "no text";
    EXPECT_EQ(bundle.infoString("other"), std::nullopt);
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileBundleTest, MissingOrDamagedFileIsSaidAndSurvived) {
    const FileBundle missing(file, desktop.diagnostics);
    EXPECT_EQ(missing.identifier(), "com.pelorin.PelorinApp");
    EXPECT_EQ(lines.size(), 1U);
    for (const char* text : {"", "[]", "{", "\xff"}) {
        write(text);
        const FileBundle damaged(file, desktop.diagnostics);
        EXPECT_EQ(damaged.infoString("identifier"), std::nullopt);
    }
    EXPECT_EQ(lines.size(), 5U);
}

TEST_F(FileBundleTest, IdentifierThatCannotNameAFolderIsSaidAndReplaced) {
    const std::string tooLong(256, 'x');
    for (const std::string& identifier :
         {std::string(), std::string("."), std::string(".."), std::string("a/b"),
          std::string("../outside"), std::string("a\\u0000b"), tooLong}) {
        write((R"({"identifier": ")" + identifier + R"(", "other": "kept"})").c_str());
        const FileBundle bundle(file, desktop.diagnostics);
        EXPECT_EQ(bundle.identifier(), "com.pelorin.PelorinApp");
        EXPECT_EQ(bundle.infoString("other"), "kept");
        ASSERT_EQ(lines.size(), 1U) << identifier;
        EXPECT_EQ(lines[0], "⚠️ The identifier in " + file.string() +
                                " cannot be the name of a folder; using com.pelorin.PelorinApp");
        lines.clear();
    }
    write((R"({"identifier": ")" + std::string(255, 'x') + R"("})").c_str());
    EXPECT_EQ(FileBundle(file, desktop.diagnostics).identifier(), std::string(255, 'x'));
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileBundleTest, EnvironmentNamesAnotherFile) {
    write(R"({"identifier": "com.elsewhere"})");
    setenv("QUILLON_INFO", file.c_str(), 1);
    const FileBundle bundle(desktop.diagnostics);
    unsetenv("QUILLON_INFO");
    EXPECT_EQ(bundle.identifier(), "com.elsewhere");
}

} // namespace
} // namespace quillon
