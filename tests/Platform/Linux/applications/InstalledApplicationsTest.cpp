#include "Platform/Linux/applications/InstalledApplications.h"

#include "Platform/Simulated/VirtualRunLoop.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>

#include <sys/stat.h>

namespace quillon {
namespace {

struct InstalledApplicationsTest : testing::Test {
    TemporaryFolder temporary;
    std::filesystem::path mine = temporary.path() / "mine";
    std::filesystem::path system = temporary.path() / "system";
    VirtualRunLoop runLoop;

    void SetUp() override {
        write(system / "editor.desktop", "Editor");
        write(system / "kde" / "viewer.desktop", "Viewer");
    }

    static void write(const std::filesystem::path& file, const std::string& name) {
        writeFile(file, "[Desktop Entry]\nType=Application\nName=" + name + "\n");
        // As if it had been there for a while: the clock of folders goes in steps.
        const auto longAgo = std::filesystem::last_write_time(file) - std::chrono::hours(++hours);
        std::filesystem::last_write_time(file.parent_path(), longAgo);
    }

    [[nodiscard]] InstalledApplications installed() { return {runLoop, {mine, system}}; }

    static std::optional<std::string> name(const InstalledApplications& installed,
                                           std::string_view applicationId) {
        return installed.names()->find(applicationId, "", "");
    }

    static inline int hours = 0;
};

TEST_F(InstalledApplicationsTest, ReadsInTheBackground) {
    const auto applications = installed();
    EXPECT_EQ(name(applications, "editor"), std::nullopt) << "not yet; and that it does not hang";
    runLoop.drain();
    EXPECT_EQ(name(applications, "editor"), "Editor");
    EXPECT_EQ(name(applications, "kde-viewer"), "Viewer");
}

TEST_F(InstalledApplicationsTest, TheUsersOwnComeFirst) {
    write(mine / "editor.desktop", "My editor");
    const auto applications = installed();
    runLoop.drain();
    EXPECT_EQ(name(applications, "editor"), "My editor");
}

TEST_F(InstalledApplicationsTest, LooksAgainAtFoldersThatHaveChanged) {
    auto applications = installed();
    runLoop.drain();
    const auto before = applications.names();

    applications.lookAgain();
    runLoop.drain();
    EXPECT_EQ(applications.names(), before) << "nothing has changed";

    write(system / "kde" / "painter.desktop", "Painter");
    applications.lookAgain();
    EXPECT_EQ(name(applications, "kde-painter"), std::nullopt);
    runLoop.drain();
    EXPECT_EQ(name(applications, "kde-painter"), "Painter");

    write(mine / "own.desktop", "Own"); // a folder that was not there
    applications.lookAgain();
    runLoop.drain();
    EXPECT_EQ(name(applications, "own"), "Own");

    std::filesystem::remove(system / "editor.desktop");
    applications.lookAgain();
    runLoop.drain();
    EXPECT_EQ(name(applications, "editor"), std::nullopt);
}

TEST_F(InstalledApplicationsTest, SurvivesWhatIsNoEntry) {
    ASSERT_EQ(mkfifo((system / "pipe.desktop").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", system / "broken.desktop");
    std::filesystem::create_directory_symlink(system, system / "loop");
    writeFile(system / "nonsense.desktop", "nonsense");
    std::filesystem::create_directory(system / "folder.desktop");
    const auto applications = installed();
    runLoop.drain();
    EXPECT_EQ(name(applications, "editor"), "Editor");
    EXPECT_EQ(name(applications, "nonsense"), std::nullopt);
}

TEST_F(InstalledApplicationsTest, MayEndBeforeTheWorkBegins) {
    { const auto applications = installed(); }
    runLoop.drain();
}

TEST(ApplicationFolders, AsTheBaseDirectoriesSay) {
    const auto set = [](const char* home, const char* data, const char* dirs) {
        setenv("HOME", home, 1);
        setenv("XDG_DATA_HOME", data, 1);
        setenv("XDG_DATA_DIRS", dirs, 1);
        return applicationFolders();
    };
    using Folders = std::vector<std::filesystem::path>;
    const std::string home = getenv("HOME");
    EXPECT_EQ(set("/h", "/d", "/a:relative:/b"),
              (Folders{"/d/applications", "/a/applications", "/b/applications"}));
    EXPECT_EQ(set("/h", "", ""),
              (Folders{"/h/.local/share/applications", "/usr/local/share/applications",
                       "/usr/share/applications"}));
    setenv("HOME", home.c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
}

} // namespace
} // namespace quillon
