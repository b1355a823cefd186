#include "VisibleShell.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using namespace fakes;

class RecordingDelegate final : public ApplicationDelegate {
  public:
    void applicationDidFinishLaunching() override { told.emplace_back("launched"); }
    void applicationDidBecomeActive() override { told.emplace_back("active"); }
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() override {
        told.emplace_back("last window");
        return answer;
    }
    void applicationShouldHandleReopen() override { told.emplace_back("reopen"); }
    void applicationWillTerminate() override { told.emplace_back("terminate"); }

    std::vector<std::string> told;
    bool answer = false;
};

class ApplicationTest : public testing::Test {
  protected:
    ApplicationTest() { shell.application.setDelegate(delegate); }

    static id<NSApplicationDelegate> native() { return fakeApplication().delegate; }

    VisibleShell shell;
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
};

TEST_F(ApplicationTest, EachPolicyIsTheSystems) {
    shell.application.setActivationPolicy(ActivationPolicy::regular);
    EXPECT_EQ(fakeApplication().policy, NSApplicationActivationPolicyRegular);
    shell.application.setActivationPolicy(ActivationPolicy::accessory);
    EXPECT_EQ(fakeApplication().policy, NSApplicationActivationPolicyAccessory);
    shell.application.setActivationPolicy(ActivationPolicy::prohibited);
    EXPECT_EQ(fakeApplication().policy, NSApplicationActivationPolicyProhibited);
}

TEST_F(ApplicationTest, TheProgramIsAnAccessory) {
    shell.launch();
    EXPECT_EQ(fakeApplication().policy, NSApplicationActivationPolicyAccessory);
}

TEST_F(ApplicationTest, HandsOnWhatItIsTold) {
    [native() applicationDidFinishLaunching:nil];
    [native() applicationDidBecomeActive:nil];
    EXPECT_FALSE([native() applicationShouldHandleReopen:nil hasVisibleWindows:YES]);
    EXPECT_EQ(delegate->told, (std::vector<std::string>{"launched", "active", "reopen"}));
}

TEST_F(ApplicationTest, AnswersAsTheDelegate) {
    EXPECT_FALSE([native() applicationShouldTerminateAfterLastWindowClosed:nil]);
    delegate->answer = true;
    EXPECT_TRUE([native() applicationShouldTerminateAfterLastWindowClosed:nil]);
}

TEST_F(ApplicationTest, TellsTheEndOnce) {
    shell.application.willTerminate();
    [native() applicationWillTerminate:nil];
    EXPECT_EQ(delegate->told, std::vector<std::string>{"terminate"});
}

TEST_F(ApplicationTest, SaysNothingToADelegateThatIsGone) {
    delegate = nullptr;
    [native() applicationDidFinishLaunching:nil];
    [native() applicationDidBecomeActive:nil];
    [native() applicationWillTerminate:nil];
    EXPECT_FALSE([native() applicationShouldTerminateAfterLastWindowClosed:nil]);
}

TEST_F(ApplicationTest, KnowsTheEventOfTheMoment) {
    EXPECT_EQ(shell.application.currentEvent(), std::nullopt);
    fakeApplication().currentEvent =
        (NSEvent*)(id)[[EventOfType alloc] initWithType:NSEventTypeRightMouseUp];
    EXPECT_EQ(shell.application.currentEvent(), EventType::rightMouseUp);
}

TEST_F(ApplicationTest, IsRepairedWhenItBecomesActive) {
    shell.launch();
    NSButton* const button = shell.button();
    const id target = [button target];
    [button setAlphaValue:0.01];
    [button setToolTip:nil];
    [button setTarget:nil];
    [button setAction:nullptr];
    [button setEnabled:NO];
    [button setRefusesFirstResponder:YES];
    [button sendActionOn:0];
    [button setAlignment:NSTextAlignmentRight];
    shell.delegate->applicationDidBecomeActive();
    EXPECT_EQ([button alphaValue], 1);
    EXPECT_STREQ([[button toolTip] UTF8String], "Open Quillon — Right-click for menu");
    EXPECT_EQ([button target], target);
    EXPECT_STREQ(sel_getName([button action]), "statusBarButtonPressed:");
    EXPECT_TRUE([button isEnabled]);
    EXPECT_FALSE([button refusesFirstResponder]);
    EXPECT_EQ([button sendActionOn:0], NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp);
    EXPECT_EQ([button alignment], NSTextAlignmentCenter);
}

TEST_F(ApplicationTest, TerminatesWithoutSender) {
    shell.application.terminate(nullptr);
    ASSERT_EQ(fakeApplication().terminations.size(), 1U);
    EXPECT_TRUE(fakeApplication().terminations[0] == nil);
}

TEST(AlertsTest, IsRunAsItIsDescribed) {
    VisibleShell shell;
    shell.launch();
    shell.desktop.loginItem.failure = "Operation not permitted";
    shell.delegate->toggleLaunchAtLogin(nullptr);
    ASSERT_EQ(fakeAlerts().size(), 1U);
    EXPECT_EQ(fakeAlerts()[0].style, NSAlertStyleWarning);
    EXPECT_EQ(fakeAlerts()[0].messageText, "Could Not Update Launch at Login");
    EXPECT_EQ(fakeAlerts()[0].informativeText, "Operation not permitted");
    EXPECT_EQ(fakeAlerts()[0].buttons, std::vector<std::string>{"OK"});
}

TEST(AlertsTest, EachStyleIsTheSystems) {
    VisibleShell shell;
    shell.alerts.runModal({.style = AlertStyle::informational});
    shell.alerts.runModal({.style = AlertStyle::critical});
    ASSERT_EQ(fakeAlerts().size(), 2U);
    EXPECT_EQ(fakeAlerts()[0].style, NSAlertStyleInformational);
    EXPECT_EQ(fakeAlerts()[1].style, NSAlertStyleCritical);
}

} // namespace
} // namespace quillon
