#include "Platform/MacOS/MacAccessibility.h"
#include "Platform/MacOS/MacAccessibilityElements.h"

#include "ServicesTest.h"

#include <optional>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeAccessibility;
using Calls = std::vector<fakes::FakeAccessibility::Call>;

class MacAccessibilityTest : public ServicesTest {
  protected:
    MacAccessibilityTest() { fakeAccessibility().windows[42] = {"A", "B"}; }

    /// All calls but those that say how long to wait.
    static Calls calls() {
        Calls calls = fakeAccessibility().calls;
        std::erase_if(calls, [](const auto& call) {
            return call.function == "AXUIElementSetMessagingTimeout";
        });
        return calls;
    }

    MacAccessibilityElements elements;
};

TEST_F(MacAccessibilityTest, TrustIsAskedForWithoutAPrompt) {
    MacAccessibility accessibility;
    EXPECT_TRUE(accessibility.isProcessTrusted());
    fakeAccessibility().isTrusted = false;
    EXPECT_FALSE(accessibility.isProcessTrusted());
    EXPECT_EQ(fakeAccessibility().trustQueries, (std::vector<std::optional<bool>>{false, false}));
}

TEST_F(MacAccessibilityTest, FirstWindowOfAnApplicationIsRaised) {
    const auto application = elements.application(42);
    const auto windows = application->elements("AXWindows");
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    EXPECT_TRUE(application->setElement("AXFocusedWindow", (*windows)[0]));
    EXPECT_TRUE((*windows)[0]->setBool("AXMain", true));
    EXPECT_TRUE((*windows)[0]->performAction("AXRaise"));
    EXPECT_EQ(calls(), (Calls{
                           {"AXUIElementCopyAttributeValue", "application 42", "AXWindows", ""},
                           {"AXUIElementSetAttributeValue", "application 42", "AXFocusedWindow",
                            "window A of 42"},
                           {"AXUIElementSetAttributeValue", "window A of 42", "AXMain", "true"},
                           {"AXUIElementPerformAction", "window A of 42", "AXRaise", ""},
                       }));
}

TEST_F(MacAccessibilityTest, BooleansAreSetAsTheyAre) {
    EXPECT_TRUE(elements.application(42)->setBool("AXHidden", false));
    EXPECT_EQ(calls(),
              (Calls{{"AXUIElementSetAttributeValue", "application 42", "AXHidden", "false"}}));
}

TEST_F(MacAccessibilityTest, NoElementWaitsLongForAProgramThatHangs) {
    const auto windows = elements.application(42)->elements("AXWindows");
    const char* function = "AXUIElementSetMessagingTimeout";
    Calls waits = fakeAccessibility().calls;
    std::erase_if(waits, [&](const auto& call) { return call.function != function; });
    EXPECT_EQ(waits, (Calls{{function, "application 42", "", "0.25"},
                            {function, "window A of 42", "", "0.25"},
                            {function, "window B of 42", "", "0.25"}}));
}

TEST_F(MacAccessibilityTest, WindowsOutliveTheListAndTheApplication) {
    auto application = elements.application(42);
    auto windows = application->elements("AXWindows");
    const auto second = windows->at(1);
    windows.reset();
    application.reset();
    EXPECT_TRUE(second->performAction("AXRaise"));
    EXPECT_EQ(calls().back().element, "window B of 42");
}

TEST_F(MacAccessibilityTest, ApplicationWithoutWindowsHasAnEmptyList) {
    fakeAccessibility().windows[42] = {};
    const auto windows = elements.application(42)->elements("AXWindows");
    ASSERT_TRUE(windows);
    EXPECT_TRUE(windows->empty());
}

TEST_F(MacAccessibilityTest, WhatCannotBeReadIsNothing) {
    EXPECT_FALSE(elements.application(43)->elements("AXWindows"));
    EXPECT_FALSE(elements.application(42)->elements("AXDrawers"));
    EXPECT_FALSE(elements.application(42)->elements("\xff"));
    fakeAccessibility().errors["AXUIElementCopyAttributeValue"] = kAXErrorCannotComplete;
    EXPECT_FALSE(elements.application(42)->elements("AXWindows"));
}

TEST_F(MacAccessibilityTest, WhatIsNoListOfElementsIsNothing) {
    using Answers = fakes::FakeAccessibility::Answers;
    for (const auto answers : {Answers::text, Answers::texts, Answers::nothing}) {
        fakeAccessibility().answers = answers;
        EXPECT_FALSE(elements.application(42)->elements("AXWindows"));
    }
}

TEST_F(MacAccessibilityTest, RefusalsAreToldOf) {
    const auto application = elements.application(42);
    const auto window = application->elements("AXWindows")->at(0);
    fakeAccessibility().errors = {
        {"AXUIElementSetAttributeValue", kAXErrorAttributeUnsupported},
        {"AXUIElementPerformAction", kAXErrorActionUnsupported},
    };
    EXPECT_FALSE(application->setElement("AXFocusedWindow", window));
    EXPECT_FALSE(window->setBool("AXMain", true));
    EXPECT_FALSE(window->performAction("AXRaise"));
}

TEST_F(MacAccessibilityTest, WhatIsNoNameOrNoElementIsRefusedUnasked) {
    const auto application = elements.application(42);
    EXPECT_FALSE(application->setElement("AXFocusedWindow", nullptr));
    EXPECT_FALSE(application->setBool("\xff", true));
    EXPECT_FALSE(application->performAction("\xff"));
    EXPECT_EQ(calls(), Calls{});
}

TEST_F(MacAccessibilityTest, ElementThatTheSystemDoesNotMakeAnswersNothing) {
    fakeAccessibility().makesElements = false;
    const auto none = elements.application(42);
    ASSERT_TRUE(none);
    EXPECT_FALSE(none->elements("AXWindows"));
    EXPECT_FALSE(none->setBool("AXMain", true));
    EXPECT_FALSE(none->performAction("AXRaise"));
    fakeAccessibility().makesElements = true;
    EXPECT_FALSE(none->setElement("AXFocusedWindow", elements.application(42)));
    EXPECT_FALSE(elements.application(42)->setElement("AXFocusedWindow", none));
    EXPECT_EQ(calls(), Calls{});
}

} // namespace
} // namespace quillon
