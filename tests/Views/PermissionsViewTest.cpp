#include "support/ScreenLooks.h"

namespace quillon {
namespace {

struct PermissionsView : ScreenFixture {
    PermissionsView() : ScreenFixture(false) {}
    ~PermissionsView() override { view.setSource({}); }

    void SetUp() override {}

    void open(bool trusted, const QVariantMap& found) {
        view.setSource({});
        simulated.desktop.accessibility.trusted = trusted;
        simulated.start();
        simulated.trust(trusted);
        QVariantMap properties = found;
        properties.insert("hub", QVariant::fromValue(simulated.hub.get()));
        view.setInitialProperties(properties);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setSource(screenUrl("PermissionsView"));
        ASSERT_NE(view.rootObject(), nullptr);
        root().setFocus(true); // as its window does
        view.show();
        settle();
        view.resize(QSizeF(root().implicitWidth(), root().implicitHeight()).toSize());
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        settle();
    }
    [[nodiscard]] bool says(const QString& part) const { return texts().join('\n').contains(part); }
};

TEST_F(PermissionsView, SaysWhatIsMissingAndWhatToDo) {
    open(false, {{"hasTestExtension", false}});
    EXPECT_TRUE(says("Quillon cannot see or send input here"));
    EXPECT_TRUE(says("XTEST is off"));
    EXPECT_TRUE(says("-extension XTEST"));
    EXPECT_FALSE(says("XInput 2.1 is missing"));
    EXPECT_FALSE(says("Wayland"));
    ScreenLooks::keepPicture(view.grabWindow(), "permissions-xtest");
    const ScreenLooks looks{view};
    looks.expectNoOverlap();
    looks.expectReadable(view.grabWindow());

    open(false, {{"hasInputExtension", false}, {"isWayland", true}});
    EXPECT_TRUE(says("XInput 2.1 is missing"));
    EXPECT_TRUE(says("This is a Wayland session"));
    EXPECT_FALSE(says("XTEST is off"));
}

TEST_F(PermissionsView, SaysSoWhenItIsGrantedMeanwhile) {
    open(false, {{"hasTestExtension", false}});
    simulated.trust(true);
    settle();
    EXPECT_TRUE(says("Quillon has all permissions that it needs"));
    EXPECT_FALSE(says("XTEST is off"));
}

TEST_F(PermissionsView, IsClosedByEscapeAndByItsButton) {
    open(false, {});
    EXPECT_EQ(view.activeFocusItem(), button("Close"));
    key(Qt::Key_Escape);
    EXPECT_FALSE(view.isVisible());
    open(false, {});
    click(button("Close"));
    EXPECT_FALSE(view.isVisible());
}

} // namespace
} // namespace quillon
