// Starts of the program that share a session bus, or have none.

#include "Platform/Linux/session/InstanceAdaptors.h"

#include "support/MessageBus.h"
#include "support/TemporaryFolder.h"
#include "support/XServer.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace quillon {
namespace {

constexpr const char* busVariable = "DBUS_SESSION_BUS_ADDRESS";

struct SingleInstanceTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    TemporaryFolder folder;
    std::filesystem::path runtime = folder.path() / "runtime";
    std::string socket = folder.path() / "socket";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    SingleInstanceTest() {
        for (const char* variable : {busVariable, "DISPLAY", "DESKTOP_STARTUP_ID"}) {
            environment.remove(variable);
        }
        environment.insert("XDG_ACTIVATION_TOKEN", "");
        std::filesystem::create_directory(runtime);
        std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
        environment.insert("XDG_RUNTIME_DIR", QString::fromStdString(runtime));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
    }

    std::unique_ptr<ChildProgram> start(const QStringList& arguments = {}) {
        return std::make_unique<ChildProgram>(QUILLON_INSTANCE_PROGRAM, arguments, environment);
    }
};

struct SingleInstanceOnABus : SingleInstanceTest {
    MessageBus bus{socket};

    SingleInstanceOnABus() {
        environment.insert(busVariable, QString::fromStdString(bus.address()));
    }

    /// Calls the running instance as another implementation of D-Bus does; answers its status.
    int call(const QStringList& methodAndArguments) {
        ChildProgram caller("gdbus",
                            QStringList{"call", "--session", "--dest", "com.pelorin.PelorinApp",
                                        "--object-path", "/com/pelorin/PelorinApp", "--method"} +
                                methodAndArguments,
                            environment);
        return caller.status();
    }
};

TEST_F(SingleInstanceOnABus, ASecondStartBringsUpTheFirstAndEnds) {
    const auto first = start();
    ASSERT_TRUE(first->says("running")) << first->errors();
    const auto second = start();
    EXPECT_EQ(second->status(), 0);
    EXPECT_EQ(second->errors(), "");
    EXPECT_EQ(first->nextLine(), "activated sometime");
    EXPECT_TRUE(first->isRunning());
    EXPECT_EQ(first->errors(), "") << "an application was made after the look for another";
}

TEST_F(SingleInstanceOnABus, TellsWhenTheUserDidIt) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    environment.insert("DESKTOP_STARTUP_ID", "panel-1-host_TIME4000000000");
    EXPECT_EQ(start()->status(), 0);
    EXPECT_EQ(first->nextLine(), "activated 4000000000");
    environment.remove("DESKTOP_STARTUP_ID");
    environment.insert("XDG_ACTIVATION_TOKEN", "panel-2-host_TIME77");
    EXPECT_EQ(start()->status(), 0);
    EXPECT_EQ(first->nextLine(), "activated 77");
}

TEST_F(SingleInstanceOnABus, SpeaksWithOtherProgramsAsApplicationsDo) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    EXPECT_EQ(call({"org.freedesktop.Application.Activate",
                    "{'desktop-startup-id': <'x_TIME12'>, 'other': <1>}"}),
              0);
    EXPECT_EQ(first->nextLine(), "activated 12");
    EXPECT_EQ(call({"org.freedesktop.Application.Open", "['file:///x']", "{}"}), 0);
    EXPECT_EQ(first->nextLine(), "activated sometime");
    EXPECT_NE(call({"org.freedesktop.Application.ActivateAction", "none", "[]", "{}"}), 0);
    EXPECT_EQ(call({"com.pelorin.PelorinApp.Development.ShowVolumeLevel", "12.5"}), 0);
    EXPECT_EQ(first->nextLine(), "level 12.500000");
}

TEST_F(SingleInstanceOnABus, AStartThatLosesTheRaceIsTold) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    EXPECT_EQ(start({"claim"})->nextLine(), "taken");
}

TEST_F(SingleInstanceOnABus, OneOfManySimultaneousStartsRuns) {
    std::array<std::unique_ptr<ChildProgram>, 4> starts;
    for (auto& each : starts) {
        each = start();
    }
    int running = 0;
    for (const auto& each : starts) {
        const QString line = each->nextLine();
        running += line == "running" ? 1 : 0;
        EXPECT_TRUE(line == "running" || line == "taken" || line.isEmpty()) << line.toStdString();
    }
    EXPECT_EQ(running, 1);
}

TEST_F(SingleInstanceOnABus, AnInstanceThatHangsIsSaid) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    first->signal(SIGSTOP);
    const auto second = start();
    EXPECT_EQ(second->status(), 1);
    EXPECT_EQ(second->errors(), "quillon: Quillon is already running but does not answer\n");
    const auto levels = start({"show-level", "1"});
    EXPECT_EQ(levels->status(), 1);
    EXPECT_EQ(levels->errors(), "quillon: Quillon is running but does not answer\n");
}

TEST_F(SingleInstanceOnABus, ShowsLevels) {
    const auto missing = start({"show-level", "1"});
    EXPECT_EQ(missing->status(), 1);
    EXPECT_EQ(missing->errors(), "quillon: Quillon is not running in this session\n");

    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    EXPECT_EQ(start({"show-level", "0", "33.25", "100"})->status(), 0);
    for (const char* line : {"level 0.000000", "level 33.250000", "level 100.000000"}) {
        EXPECT_EQ(first->nextLine(), line);
    }
    for (const char* wrong : {"100.5", "-1", "nan", "inf"}) {
        const auto refused = start({"show-level", wrong});
        EXPECT_EQ(refused->status(), 1);
        EXPECT_NE(refused->errors().find("from 0 to 100"), std::string::npos);
    }
    EXPECT_EQ(start()->status(), 0);
    EXPECT_EQ(first->nextLine(), "activated sometime") << "nothing of what was refused";
}

TEST_F(SingleInstanceOnABus, CarriesToolCommandsOver) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    EXPECT_EQ(start({"status"})->nextLine(), "done: {}");
    for (const char* verb : {"enable", "disable", "uninstall"}) {
        EXPECT_EQ(start({verb, "tool.ä"})->nextLine(), "done:") << verb;
        EXPECT_EQ(first->nextLine(), QString("%1 tool.ä").arg(verb));
        EXPECT_EQ(start({verb, "wrong"})->nextLine(), "refused: there is no tool 'wrong'");
        EXPECT_EQ(first->nextLine(), QString("%1 wrong").arg(verb));
    }
    EXPECT_EQ(call({"com.pelorin.PelorinApp.Tools.SetEnabled", "x", "true"}), 0);
    EXPECT_EQ(first->nextLine(), "enable x");
    EXPECT_NE(call({"com.pelorin.PelorinApp.Tools.SetEnabled", "wrong", "true"}), 0);
}

TEST_F(SingleInstanceOnABus, AnInstallIsAnsweredWhenItHasEnded) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    const auto installing = start({"install", "tool.x"});
    EXPECT_EQ(first->nextLine(), "install tool.x");
    EXPECT_EQ(start({"status"})->nextLine(), "done: {}") << "others are answered meanwhile";
    EXPECT_EQ(start()->status(), 0);
    EXPECT_EQ(installing->nextLine(), "refused: ended by a start");
}

TEST_F(SingleInstanceOnABus, AnInstanceThatHangsInAnInstallIsNoticed) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    const auto installing = start({"install", "tool.x"});
    EXPECT_EQ(first->nextLine(), "install tool.x");
    first->signal(SIGSTOP);
    EXPECT_TRUE(installing->nextLine().startsWith("no answer"));
}

TEST_F(SingleInstanceOnABus, AnInstanceThatDiesInAnInstallIsNoticed) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    const auto installing = start({"install", "tool.x"});
    EXPECT_EQ(first->nextLine(), "install tool.x");
    first->end();
    EXPECT_EQ(installing->nextLine(), "refused: Quillon ended before it had answered");
}

TEST_F(SingleInstanceOnABus, ToolsThatHaveNotStartedAreSaid) {
    environment.insert("QUILLON_TEST_NO_TOOLS", "1");
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    for (const char* verb : {"status", "install"}) {
        EXPECT_EQ(start({verb, "x"})->nextLine(), "refused: Quillon has not started its tools");
    }
}

TEST_F(SingleInstanceOnABus, QuitReturnsWhenTheNameIsFree) {
    EXPECT_TRUE(start({"quit"})->nextLine().startsWith("not running"));
    for (int round = 0; round < 5; ++round) {
        const auto first = start();
        ASSERT_TRUE(first->says("running"));
        EXPECT_EQ(start({"quit"})->nextLine(), "done:");
        EXPECT_EQ(start({"status"})->nextLine().section(':', 0, 0), "not running");
        EXPECT_EQ(first->nextLine(), "quit");
        EXPECT_EQ(first->status(), 0);
    }
}

TEST_F(SingleInstanceOnABus, TheBusMayDieAndComeBack) {
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    for (int round = 0; round < 3; ++round) {
        bus.kill();
        EXPECT_TRUE(first->nextLine().startsWith("⚠️ The session bus is gone"));
        bus.restart();
        EXPECT_EQ(first->nextLine(), "✅ The session bus is back");
        EXPECT_EQ(start()->status(), 0);
        EXPECT_EQ(first->nextLine(), "activated sometime");
    }
    EXPECT_TRUE(first->isRunning());
}

TEST_F(SingleInstanceOnABus, AStoppedBusHoldsNothingUp) {
    bus.stop();
    QElapsedTimer waited;
    waited.start();
    const auto first = start();
    EXPECT_TRUE(first->says("running without a bus"));
    EXPECT_LT(waited.elapsed(), 3000);
    bus.resume();
}

TEST_F(SingleInstanceTest, FindsTheBusOfTheRuntimeFolder) {
    const MessageBus bus{runtime / "bus"};
    const auto first = start();
    ASSERT_TRUE(first->says("running"));
    EXPECT_EQ(start()->status(), 0);
    EXPECT_EQ(first->nextLine(), "activated sometime");
}

TEST_F(SingleInstanceTest, StartsNoBus) {
    const XServer server;
    environment.insert("DISPLAY", std::getenv("DISPLAY"));
    const XClient client;
    for (const char* address : {"", "autolaunch:", "unix:path=/nowhere;autolaunch:",
                                "unixexec:path=/bin/false", "disabled:"}) {
        environment.insert(busVariable, address);
        const auto first = start();
        EXPECT_TRUE(first->says("running without a bus")) << address << first->errors();
        const auto levels = start({"show-level", "1"});
        EXPECT_EQ(levels->status(), 1);
        EXPECT_NE(levels->errors().find("no session bus"), std::string::npos);
    }
    // Where a bus that was started for a display is written down.
    const std::string mark = "_DBUS_SESSION_BUS_ADDRESS";
    const XcbOwned<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(client.connection().get(),
                              xcb_intern_atom(client.connection().get(), 1,
                                              static_cast<std::uint16_t>(mark.size()), mark.data()),
                              nullptr));
    ASSERT_TRUE(atom);
    EXPECT_EQ(atom->atom, xcb_atom_t{XCB_ATOM_NONE});
}

TEST(StartupTime, IsTheNumberAtTheEnd) {
    EXPECT_EQ(startupTime("x_TIME123"), 123U);
    EXPECT_EQ(startupTime("_TIME1_TIME4294967295"), 4294967295U);
    for (const char* id : {"", "x", "_TIME", "x_TIME12x", "x_TIME-1", "x_TIME4294967296"}) {
        EXPECT_EQ(startupTime(id), std::nullopt) << id;
    }
}

} // namespace
} // namespace quillon
