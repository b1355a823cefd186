#include "support/ToolScreenFixture.h"

namespace quillon {
namespace {

struct ToolScreenBanner : ToolScreenFixture {
    SimulatedHub untrusted{false};

    [[nodiscard]] bool isShown() const { return texts().contains("Permission required"); }
};

TEST_F(ToolScreenBanner, ComesBeforeTheSectionsAndSaysWhy) {
    for (const std::string_view tool : allTools) {
        open(untrusted, tool);
        const QStringList shown = texts();
        EXPECT_EQ(shown.indexOf("Permission required"), 3) << "after back row and header";
        EXPECT_TRUE(shown.at(4).startsWith("Needed to ")) << tool;
        EXPECT_EQ(shown.at(5), "Open System Settings");
        const auto isWarning = [](const QQuickItem& item) {
            return item.property("name").toString() == "exclamationmark.triangle.fill";
        };
        EXPECT_EQ(items(root(), isWarning).size(), 1U);
    }
}

TEST_F(ToolScreenBanner, GoesByItselfOnceThePermissionIsThere) {
    for (const std::string_view tool : allTools) {
        SimulatedHub fresh(false);
        open(fresh, tool);
        EXPECT_TRUE(isShown()) << tool;
        const QStringList with = texts();
        fresh.trust(true);
        settle();
        EXPECT_FALSE(isShown()) << tool;
        EXPECT_EQ(texts().size(), with.size() - 3) << "and nothing else";
        view.setSource(QUrl());
    }
}

TEST_F(ToolScreenBanner, ComesByItselfWhenThePermissionGoes) {
    open(scrollTool);
    EXPECT_FALSE(isShown());
    simulated.trust(false);
    settle();
    EXPECT_TRUE(isShown());
    simulated.trust(true);
    settle();
    EXPECT_FALSE(isShown());
}

TEST_F(ToolScreenBanner, LeadsToThePrivacySettings) {
    const std::vector<std::string> expected{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"};
    for (const std::string_view tool : allTools) {
        open(untrusted, tool);
        click(button("Open System Settings"));
        EXPECT_EQ(untrusted.took("open"), expected) << tool;
    }
}

TEST_F(ToolScreenBanner, SettingsCanBeChangedWithoutThePermission) {
    open(untrusted, desktopTool);
    click(toggle("Left edge"));
    EXPECT_TRUE(set("leftEdgeEnabled").toBool());
    focus(slider("Edge sensitivity"));
    key(Qt::Key_End);
    EXPECT_EQ(set("edgeSensitivity"), 100);
}

TEST_F(ToolScreenBanner, KeysGoOnWhenItGoes) {
    open(untrusted, desktopTool);
    focus(button("Open System Settings"));
    untrusted.trust(true);
    settle();
    key(Qt::Key_Space);
    EXPECT_EQ(untrusted.took("open").size(), 0U) << "what is not seen has no keys";
    key(Qt::Key_Tab);
    ASSERT_NE(view.activeFocusItem(), nullptr);
    EXPECT_TRUE(view.activeFocusItem()->isVisible());
}

} // namespace
} // namespace quillon
