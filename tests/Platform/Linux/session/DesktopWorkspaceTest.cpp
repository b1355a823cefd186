#include "Platform/Linux/session/DesktopWorkspace.h"

#include "Platform/Linux/session/SessionBus.h"
#include "Platform/Posix/files/FileDescriptor.h"
#include "RecordingDiagnostics.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

/// With an xdg-open of its own in $PATH, or none.
struct DesktopWorkspaceTest : testing::Test {
    TemporaryFolder folder;
    fs::path programs = folder.path() / "bin";
    fs::path pipe = folder.path() / "pipe";
    std::string path = std::getenv("PATH");
    FileDescriptor said;
    RecordingDiagnostics diagnostics;
    int permissionsShown = 0;
    DesktopWorkspace workspace{diagnostics, [this] { ++permissionsShown; }};

    DesktopWorkspaceTest() {
        EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        said = FileDescriptor(::open(pipe.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
        setenv("PATH", programs.c_str(), 1);
    }
    ~DesktopWorkspaceTest() override { setenv("PATH", path.c_str(), 1); }

    /// What these commands print is heard.
    void install(const std::string& commands) const {
        const fs::path program = programs / "xdg-open";
        writeFile(program, "#!/bin/sh\nPATH='" + path + "'\n{ " + commands + "; echo end; } >'" +
                               pipe.string() + "'\n");
        fs::permissions(program, fs::perms::owner_all);
    }

    /// One that writes down how it was started: a shell would not do, for it minds its signals.
    void installWitness() const {
        const fs::path program = programs / "xdg-open";
        writeFile(program, "#!/usr/bin/python3\n"
                           "import os\n"
                           "files = [os.readlink(f'/proc/self/fd/{n}') for n in range(64)\n"
                           "         if os.path.exists(f'/proc/self/fd/{n}')]\n"
                           "status = open('/proc/self/status').read()\n"
                           "leader = os.getsid(0) == os.getpid()\n"
                           "with open('" +
                               pipe.string() +
                               "', 'w') as out:\n"
                               "    print(status, files, 'leader', leader, file=out)\n"
                               "    print('end', file=out)\n");
        fs::permissions(program, fs::perms::owner_all);
    }

    /// Up to the end; stops before after a limit that no passing test reaches.
    [[nodiscard]] std::string heard() const {
        constexpr int limit = 15000;
        constexpr std::string_view end = "end\n";
        std::string text;
        pollfd waiting{said.get(), POLLIN, 0};
        while (!text.ends_with(end) && ::poll(&waiting, 1, limit) == 1) {
            char c = 0;
            if (::read(said.get(), &c, 1) == 1) {
                text += c;
            }
        }
        return text.ends_with(end) ? text.substr(0, text.size() - end.size()) : "nothing";
    }
};

TEST_F(DesktopWorkspaceTest, HandsTheAddressOverAsItIs) {
    install(R"(printf '%s|' "$#" "$@")");
    for (const std::string url :
         {"https://example.org/a?b=c&d=$HOME#e", "http://example.org",
          "mailto:someone@example.org?subject=a%20b", "x-desktop.settings:privacy?input",
          "https://example.org/;id';$(id)&"}) {
        workspace.open(url);
        EXPECT_EQ(heard(), "1|" + url + "|");
    }
    EXPECT_TRUE(diagnostics.take().empty());
}

TEST_F(DesktopWorkspaceTest, SaysWhenThereIsNoOpener) {
    workspace.open("https://example.org/");
    const auto lines = diagnostics.take();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("⚠️ Cannot open https://example.org/: ")) << lines[0];
}

TEST_F(DesktopWorkspaceTest, OpensNothingElse) {
    using namespace std::string_view_literals;
    // An attempt would be heard of: there is no opener.
    for (const auto url :
         {""sv, "-h"sv, "--help"sv, "-x-y:z"sv, "example.org"sv, "/etc/passwd"sv,
          "file:///etc/passwd"sv, "javascript:alert(1)"sv, "https:"sv, "https:///x"sv, "mailto:"sv,
          "x-y:"sv, "https://example.org/a b"sv, "https://[::"sv, "https://example.org/%"sv,
          "https://example.org/\n"sv, "https://example.org\0/"sv, "https://example.org/\xFF"sv,
          " https://example.org"sv}) {
        workspace.open(url);
        EXPECT_TRUE(diagnostics.take().empty()) << url;
    }
}

TEST_F(DesktopWorkspaceTest, ReturnsWhileTheOpenerIsStillAtIt) {
    const fs::path go = folder.path() / "go";
    ASSERT_EQ(mkfifo(go.c_str(), 0600), 0);
    install("read -r word <'" + go.string() + "'; printf %s \"$word\"");
    workspace.open("https://example.org/");
    const FileDescriptor writer(::open(go.c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::write(writer.get(), "on\n", 3), 3);
    EXPECT_EQ(heard(), "on");
}

TEST_F(DesktopWorkspaceTest, NothingOfThisProcessStaysWithTheOpener) {
    installWitness();
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigprocmask(SIG_BLOCK, &blocked, &before);
    auto* const hangUpBefore = std::signal(SIGHUP, SIG_IGN);
    const FileDescriptor leaky(::open((folder.path() / "leaky").c_str(), O_RDWR | O_CREAT, 0600));
    workspace.open("https://example.org/");
    const std::string facts = heard();
    sigprocmask(SIG_SETMASK, &before, nullptr);
    std::signal(SIGHUP, hangUpBefore);
    EXPECT_NE(facts.find("SigBlk:\t0000000000000000\n"), std::string::npos) << facts;
    const auto ignored = std::strtoull(facts.c_str() + facts.find("SigIgn:") + 7, nullptr, 16);
    constexpr unsigned long long hangUp = 1;
    EXPECT_EQ(ignored & hangUp, 0U) << facts;
    EXPECT_NE(facts.find("['/dev/null', '/dev/null', '/dev/null']"), std::string::npos) << facts;
    EXPECT_NE(facts.find("leader True"), std::string::npos) << facts;
}

TEST_F(DesktopWorkspaceTest, TheOpenerHasTheBusOfTheSession) {
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
    EXPECT_FALSE(settleSessionBus());
    install("printf %s \"$DBUS_SESSION_BUS_ADDRESS\"");
    workspace.open("https://example.org/");
    EXPECT_EQ(heard(), "unix:path=/nowhere");
}

} // namespace
} // namespace quillon
