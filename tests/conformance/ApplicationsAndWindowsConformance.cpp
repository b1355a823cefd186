#include "Conformance.h"

namespace quillon {
namespace {

constexpr ProcessId writer = 701;
constexpr ProcessId player = 702;
constexpr ProcessId nobody = 799;
constexpr auto everything = ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps;

class ApplicationsConformance : public Conformance {
  protected:
    /// The owners of the windows, front to back.
    [[nodiscard]] std::vector<ProcessId> owners() const {
        std::vector<ProcessId> found;
        const auto list =
            platform().windowServer.copyWindowList(WindowListOptions::excludeDesktopElements);
        EXPECT_TRUE(list);
        for (const WindowDescription& window : list.value_or(std::vector<WindowDescription>{})) {
            found.push_back(window.ownerProcess.value_or(0));
        }
        return found;
    }
    [[nodiscard]] ProcessId front() const {
        const auto application = platform().applications.frontmostApplication();
        return application ? application->processIdentifier() : 0;
    }
    [[nodiscard]] bool comesToFront(ProcessId process) const {
        return until([&] { return front() == process; });
    }
    /// The windows of a process as assistive programs see them.
    [[nodiscard]] std::optional<std::vector<AccessibilityElementRef>>
    windowsOf(ProcessId process) const {
        return platform().accessibilityElements.application(process)->elements("AXWindows");
    }
    /// What was asked of other programs takes its time: what comes next is not what is now.
    void letListsGo() const {
        bool turned = false;
        platform().runLoop.async([&] { turned = true; });
        EXPECT_TRUE(until([&] { return turned; }));
    }

    using Owners = std::vector<ProcessId>;
};

TEST_F(ApplicationsConformance, WindowsAreListedFrontToBackAndDescribed) {
    world->openWindow(writer, "Writer");
    world->openWindow(player, "Player");
    ASSERT_TRUE(until([&] { return owners() == Owners{player, writer}; }));
    const auto list =
        platform().windowServer.copyWindowList(WindowListOptions::excludeDesktopElements);
    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 2U);
    const WindowDescription& window = list->front();
    EXPECT_EQ(window.ownerName, "Player");
    EXPECT_EQ(window.layer, 0);
    EXPECT_EQ(window.isOnScreen, true);
    ASSERT_TRUE(window.bounds);
    EXPECT_GT(window.bounds->width, 0);
    EXPECT_GT(window.bounds->height, 0);
}

TEST_F(ApplicationsConformance, TheFrontmostApplicationGetsWhatIsTyped) {
    world->openWindow(writer, "Writer");
    EXPECT_TRUE(comesToFront(writer));
    world->openWindow(player, "Player");
    ASSERT_TRUE(comesToFront(player));
    const auto application = platform().applications.frontmostApplication();
    EXPECT_EQ(application->localizedName(), "Player");
    EXPECT_EQ(application->activationPolicy(), ActivationPolicy::regular);
}

TEST_F(ApplicationsConformance, RunningOnesAreFoundByTheirProcess) {
    world->openWindow(writer, "Writer");
    world->openWindow(player, "Player");
    ASSERT_TRUE(until([&] { return owners().size() == 2; }));
    const auto found = platform().applications.runningApplication(writer);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->processIdentifier(), writer);
    EXPECT_EQ(found->localizedName(), "Writer");
    EXPECT_EQ(platform().applications.runningApplication(nobody), nullptr);
}

TEST_F(ApplicationsConformance, ActivationBringsAnApplicationForward) {
    world->openWindow(writer, "Writer");
    world->openWindow(writer, "Writer");
    world->openWindow(player, "Player");
    ASSERT_TRUE(comesToFront(player));
    ASSERT_TRUE(until([&] { return owners() == Owners{player, writer, writer}; }));
    platform().applications.runningApplication(writer)->activate(everything);
    EXPECT_TRUE(comesToFront(writer));
    EXPECT_TRUE(until([&] { return owners() == Owners{writer, writer, player}; }));
}

TEST_F(ApplicationsConformance, OneThatHasEndedIsNoErrorAndNoMore) {
    world->openWindow(writer, "Writer");
    world->openWindow(player, "Player");
    ASSERT_TRUE(until([&] { return owners().size() == 2; }));
    const auto ended = platform().applications.runningApplication(player);
    ASSERT_TRUE(ended);
    world->endProgram(player);
    ended->activate(everything);
    EXPECT_TRUE(
        until([&] { return platform().applications.runningApplication(player) == nullptr; }));
    EXPECT_TRUE(until([&] { return owners() == Owners{writer}; }));
    EXPECT_EQ(ended->localizedName(), "Player") << "as it was when it was asked for";
}

TEST_F(ApplicationsConformance, ElementsAreTheWindowsOfAnApplication) {
    world->openWindow(writer, "Writer");
    world->openWindow(writer, "Writer");
    world->openWindow(player, "Player");
    ASSERT_TRUE(until([&] { return owners().size() == 3; }));
    const auto windows = windowsOf(writer);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    const auto application = platform().accessibilityElements.application(writer);
    EXPECT_TRUE(windows->front()->performAction("AXRaise"));
    EXPECT_TRUE(windows->front()->setBool("AXMain", true));
    EXPECT_TRUE(application->setElement("AXFocusedWindow", windows->front()));
}

TEST_F(ApplicationsConformance, ElementsRefuseWhatTheyDoNotHave) {
    world->openWindow(writer, "Writer");
    ASSERT_TRUE(until([&] { return owners().size() == 1; }));
    const auto application = platform().accessibilityElements.application(writer);
    ASSERT_TRUE(application);
    const auto windows = application->elements("AXWindows");
    ASSERT_TRUE(windows);
    EXPECT_EQ(application->elements("QuillonNothing"), std::nullopt);
    EXPECT_FALSE(application->performAction("QuillonNothing"));
    EXPECT_FALSE(application->setElement("AXFocusedWindow", nullptr));
    EXPECT_FALSE(application->setElement("QuillonNothing", windows->front()));
    EXPECT_FALSE(windows->front()->performAction("QuillonNothing"));
    EXPECT_FALSE(windows->front()->setBool("QuillonNothing", true));
}

TEST_F(ApplicationsConformance, ElementsOfWhatIsGoneAnswerNothing) {
    const auto none = platform().accessibilityElements.application(nobody);
    ASSERT_TRUE(none) << "never null";
    EXPECT_EQ(none->elements("AXWindows"), std::nullopt);

    world->openWindow(writer, "Writer");
    ASSERT_TRUE(until([&] { return owners().size() == 1; }));
    const auto application = platform().accessibilityElements.application(writer);
    const auto windows = application->elements("AXWindows");
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 1U);
    world->endProgram(writer);
    letListsGo();
    EXPECT_EQ(application->elements("AXWindows"), std::nullopt);
    EXPECT_FALSE(windows->front()->performAction("AXRaise"));
    EXPECT_FALSE(windows->front()->setBool("AXMain", true));
    EXPECT_FALSE(application->setElement("AXFocusedWindow", windows->front()));
}

} // namespace
} // namespace quillon
