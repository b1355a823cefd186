#include "Platform/MacOS/MacApplications.h"
#include "Platform/MacOS/MacWorkspace.h"

#include "fakes/FakeDesktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeDesktop;
using Activation = fakes::FakeDesktop::Activation;

class DesktopTest : public testing::Test {
  protected:
    DesktopTest() { fakeDesktop().reset(); }

    MacApplications applications;
    MacWorkspace workspace;
};

TEST_F(DesktopTest, TheFrontmostApplicationIsTheWorkspaces) {
    EXPECT_EQ(applications.frontmostApplication(), nullptr);
    fakeDesktop().apps = {{.process = 41, .name = "Other"}, {.process = 42, .name = "Größe"}};
    fakeDesktop().frontmost = 42;
    const auto application = applications.frontmostApplication();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->processIdentifier(), 42);
    EXPECT_EQ(application->localizedName(), "Größe");
}

TEST_F(DesktopTest, AnApplicationIsFoundByItsProcess) {
    fakeDesktop().apps = {{.process = 1, .activationPolicy = 0},
                          {.process = 2, .activationPolicy = 1},
                          {.process = 3, .activationPolicy = 2}};
    EXPECT_EQ(applications.runningApplication(4), nullptr);
    EXPECT_EQ(applications.runningApplication(1)->localizedName(), std::nullopt);
    EXPECT_EQ(applications.runningApplication(1)->activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(applications.runningApplication(2)->activationPolicy(), ActivationPolicy::accessory);
    EXPECT_EQ(applications.runningApplication(3)->activationPolicy(), ActivationPolicy::prohibited);
}

TEST_F(DesktopTest, AnApplicationIsActivatedWithTheGivenBits) {
    fakeDesktop().apps = {{.process = 7}};
    const auto application = applications.runningApplication(7);
    application->activate(ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps);
    application->activate(ActivationOptions::ignoringOtherApps);
    EXPECT_EQ(fakeDesktop().activations, (std::vector<Activation>{{7, 3}, {7, 2}}));
}

TEST_F(DesktopTest, AddressesAreOpenedByTheWorkspace) {
    constexpr const char* settings =
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
    workspace.open(settings);
    workspace.open("https://quillon.example/contact");
    EXPECT_EQ(fakeDesktop().opened,
              (std::vector<std::string>{settings, "https://quillon.example/contact"}));
}

TEST_F(DesktopTest, WhatIsNoAddressIsNotOpened) {
    workspace.open("");
    workspace.open("no address at all");
    workspace.open("https://\xff");
    EXPECT_EQ(fakeDesktop().opened.size(), 0U);
}

TEST_F(DesktopTest, DisplayOptionsAreTheWorkspacesAndFollowed) {
    EXPECT_EQ(workspace.displayOptions(), DisplayOptions{});
    std::vector<DisplayOptions> seen;
    workspace.setDisplayOptionsHandler([&] { seen.push_back(workspace.displayOptions()); });
    fakeDesktop().changeDisplayOptions(true, false);
    fakeDesktop().changeDisplayOptions(false, true);
    EXPECT_EQ(seen, (std::vector<DisplayOptions>{{true, false}, {false, true}}));
}

TEST_F(DesktopTest, OnlyTheLastHandlerIsCalledAndNoneOnceTheWorkspaceIsGone) {
    int first = 0;
    int second = 0;
    {
        MacWorkspace other;
        other.setDisplayOptionsHandler([&] { ++first; });
        other.setDisplayOptionsHandler([&] { ++second; });
        fakeDesktop().changeDisplayOptions(true, true);
        EXPECT_EQ(first, 0);
        EXPECT_EQ(second, 1);
        other.setDisplayOptionsHandler(nullptr);
        fakeDesktop().changeDisplayOptions(true, true);
        EXPECT_EQ(second, 1);
        other.setDisplayOptionsHandler([&] { ++second; });
    }
    fakeDesktop().changeDisplayOptions(false, false);
    EXPECT_EQ(second, 1);
}

} // namespace
} // namespace quillon
