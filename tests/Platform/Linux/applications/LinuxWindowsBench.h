#pragma once

#include "Platform/Linux/applications/LinuxWindows.h"

#include "OtherPrograms.h"

#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/TemporaryFolder.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

namespace quillon {

constexpr auto everything = ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps;
constexpr auto noDesktop = WindowListOptions::excludeDesktopElements;

/// The services on an X server of their own, with other programs.
struct LinuxWindowsBench : testing::Test {
    TemporaryFolder data;
    XServer server;
    int argc = 1;
    std::array<char, 5> name{"test"};
    std::array<char*, 2> argv{name.data(), nullptr};
    QCoreApplication application{argc, argv.data()};
    VirtualRunLoop runLoop;
    SimulatedDiagnostics diagnostics{[](std::string_view, const std::string&) {}};
    X11Displays displays;
    X11Session session{diagnostics, displays, [] {}};
    std::unique_ptr<LinuxWindows> windows;
    OtherPrograms others;

    void SetUp() override {
        ASSERT_TRUE(session.isProcessTrusted());
        writeFile(data.path() / "applications/editor.desktop",
                  "[Desktop Entry]\nType=Application\nName=Text Editor\n");
        setenv("XDG_DATA_HOME", data.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", "/nowhere", 1);
        windows = std::make_unique<LinuxWindows>(runLoop, displays);
        runLoop.drain();
    }
    void TearDown() override {
        unsetenv("XDG_DATA_HOME");
        unsetenv("XDG_DATA_DIRS");
    }

    /// The only window's.
    WindowDescription description() {
        runLoop.drain();
        const auto list = windows->copyWindowList(noDesktop);
        return list && list->size() == 1 ? list->front() : WindowDescription{};
    }

    /// What was asked of the window manager since the last call, all of it: a list that is read
    /// after it comes after it.
    [[nodiscard]] std::vector<OtherPrograms::Request> requests() {
        if (windows) {
            runLoop.drain();
            [[maybe_unused]] const auto list = windows->copyWindowList(noDesktop);
            runLoop.drain();
        }
        return others.requests();
    }

    [[nodiscard]] xcb_atom_t atom(const char* text) const { return others.connection().atom(text); }
};

} // namespace quillon
