#include "Platform/Linux/windows/QuickPopover.h"

#include "Platform/Linux/x11/X11Properties.h"
#include "WindowsFixture.h"
#include "support/TemporaryFolder.h"

#include <QQuickItem>

#include <gtest/gtest.h>

namespace quillon {
namespace {

constexpr Rect anchorAtTop{600, 776, 24, 24};

constexpr const char* screenSource = R"(
import QtQuick
Item {
    implicitWidth: 200
    implicitHeight: 120
    property bool composited: true
    property real cornerRadius: 12
    property bool sheetAttached: false
    property int steps: 0
    property string typed: ""
    function goBack(): bool { if (steps === 0) return false; steps -= 1; return true }
    Keys.onPressed: event => typed += event.text
    Rectangle { anchors.fill: parent; color: "#204060" }
}
)";

struct FixedPanel final : PanelPlace {
    std::optional<Rect> place;
    bool vertical = false;
    [[nodiscard]] std::optional<Rect> panelOnScreen() const override { return place; }
    [[nodiscard]] bool isVertical() const override { return vertical; }
};

struct PopoverDesktop : WindowsFixture {
    explicit PopoverDesktop(const std::string& resources = {}, const std::string& managerName = {},
                            const std::string& source = screenSource,
                            const std::string& command = "true")
        : WindowsFixture(resources, managerName, command) {
        writeFile(folder.path() / "Screen.qml", source);
        popover = popovers.make("Screen", [this] { ++escapes; });
        quick = dynamic_cast<QuickPopover*>(popover.get());
    }

    void show(Rect anchor = anchorAtTop) {
        AnchorView view(anchor);
        popover->show(view, RectEdge::minY);
        EXPECT_TRUE(waitUntil([&] { return isMapped(id()); }));
        QObject::connect(quick->window(), &PopoverWindow::closeRequested, quick->window(),
                         [this] { ++closeRequests; });
    }

    void requestClose() {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = id();
        event.type = atom("_NET_CLOSE_WINDOW");
        event.data.data32[1] = 2;
        xcb_send_event(other->get(), 0, other->root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        other->sync();
    }

    [[nodiscard]] xcb_window_t id() const {
        return static_cast<xcb_window_t>(quick->window()->winId());
    }
    [[nodiscard]] QQuickItem& root() const { return *quick->window()->rootObject(); }
    [[nodiscard]] bool isAt(PixelRect place) const {
        return waitUntil([&] { return frame(id()) == place; });
    }
    [[nodiscard]] bool hasKeyboard() const {
        return waitUntil([&] { return QGuiApplication::focusWindow() == quick->window(); });
    }

    TemporaryFolder folder;
    FixedPanel panel;
    std::uint32_t inputTime = 0;
    QuickPopovers popovers{{displays, &panel, [this] { return inputTime; },
                            [this](std::string_view name) {
                                return QuickScreen{
                                    QUrl::fromLocalFile(QString::fromStdString(
                                        (folder.path() / (std::string(name) + ".qml")).string())),
                                    {}};
                            }}};
    std::unique_ptr<Popover> popover;
    QuickPopover* quick = nullptr;
    int escapes = 0;
    int closeRequests = 0;
};

TEST(QuickPopover, IsMadeAheadButNotBeforeTheProgramIsIdle) {
    PopoverDesktop desktop;
    EXPECT_EQ(desktop.quick->window(), nullptr);
    ASSERT_TRUE(waitUntil([&] {
        return desktop.quick->window() != nullptr && desktop.quick->window()->handle() != nullptr;
    }));
    EXPECT_FALSE(desktop.popover->isShown());
    EXPECT_FALSE(desktop.isMapped(desktop.id()));
}

TEST(QuickPopover, ShownBelowItsAnchorAndTakenAway) {
    PopoverDesktop desktop;
    desktop.show();
    EXPECT_TRUE(desktop.popover->isShown());
    EXPECT_TRUE(desktop.isAt({512, 30, 200, 120}));
    desktop.popover->close();
    EXPECT_FALSE(desktop.popover->isShown());
    EXPECT_TRUE(waitUntil([&] { return !desktop.isMapped(desktop.id()); }));
    desktop.show();
    EXPECT_TRUE(desktop.popover->isShown());
    EXPECT_TRUE(desktop.isMapped(desktop.id()));
}

TEST(QuickPopover, AskedToShowWhileItIsShownItMoves) {
    PopoverDesktop desktop;
    desktop.show();
    desktop.show({100, 776, 24, 24});
    EXPECT_TRUE(desktop.isAt({12, 30, 200, 120}));
}

TEST(QuickPopover, OffItsPanel) {
    PopoverDesktop desktop;
    desktop.panel.place = Rect{0, 0, 1280, 40};
    desktop.show({600, 8, 24, 24});
    EXPECT_TRUE(desktop.isAt({512, 800 - 40 - 6 - 120, 200, 120}));
    desktop.panel.place = Rect{0, 0, 40, 800};
    desktop.panel.vertical = true;
    desktop.show({8, 400, 24, 24});
    EXPECT_TRUE(desktop.isAt({46, 800 - 412 - 60, 200, 120}));
}

TEST(QuickPopover, WithoutAnAnchorAtTheTopRight) {
    PopoverDesktop desktop;
    desktop.popover->show(AnchorView(), RectEdge::minY);
    EXPECT_TRUE(desktop.isAt({1280 - 6 - 200, 6, 200, 120}));
}

TEST(QuickPopover, InPixelsOfAScaledDesktop) {
    PopoverDesktop desktop("Xft.dpi:\t192\n");
    desktop.show({300, 388, 12, 12});
    EXPECT_TRUE(desktop.isAt({612 - 200, 24 + 12, 400, 240}));
}

TEST(QuickPopover, OnTheScreenOfItsAnchor) {
    PopoverDesktop desktop("Xft.dpi:\t192\n", {}, screenSource,
                           "xrandr --setmonitor LEFT 640/100x800/200+0+0 screen && "
                           "xrandr --setmonitor '*RIGHT' 640/100x800/200+640+0 none");
    ASSERT_EQ(desktop.displays.screens().size(), 2U);
    desktop.show({-300, 388, 12, 12});
    EXPECT_TRUE(desktop.isAt({12, 36, 400, 240}));
    desktop.show({100, 388, 12, 12});
    EXPECT_TRUE(desktop.isAt({640 + 12, 36, 400, 240}));
}

TEST(QuickPopover, CornersAreCutWhereNothingIsBlended) {
    PopoverDesktop desktop;
    desktop.show();
    EXPECT_GT(desktop.shapeRectangles(desktop.id()), 8);
    EXPECT_FALSE(desktop.root().property("composited").toBool());
    desktop.popover->close();

    const auto compositor = desktop.atom("_NET_WM_CM_S0");
    const xcb_window_t owner = desktop.openOtherWindow();
    xcb_set_selection_owner(desktop.other->get(), owner, compositor, XCB_CURRENT_TIME);
    desktop.other->sync();
    desktop.show();
    EXPECT_EQ(desktop.shapeRectangles(desktop.id()), 1);
    EXPECT_TRUE(desktop.root().property("composited").toBool());
}

TEST(QuickPopover, EscapeGoesBackInTheContentThenOut) {
    PopoverDesktop desktop;
    desktop.show();
    ASSERT_TRUE(desktop.hasKeyboard());
    desktop.root().setProperty("steps", 1);
    desktop.press(escapeKey);
    ASSERT_TRUE(waitUntil([&] { return desktop.root().property("steps").toInt() == 0; }));
    EXPECT_EQ(desktop.escapes, 0);
    desktop.press(escapeKey);
    EXPECT_TRUE(waitUntil([&] { return desktop.escapes == 1; }));
    EXPECT_TRUE(desktop.popover->isShown()) << "whether it closes is for others to say";
}

TEST(QuickPopover, EscapeLeavesContentThatCannotGoBack) {
    PopoverDesktop desktop({}, {}, "import QtQuick\nItem { implicitWidth: 9; implicitHeight: 9 }");
    desktop.show();
    ASSERT_TRUE(desktop.hasKeyboard());
    desktop.press(escapeKey);
    EXPECT_TRUE(waitUntil([&] { return desktop.escapes == 1; }));
}

TEST(QuickPopover, TellsOfASheet) {
    PopoverDesktop desktop;
    EXPECT_FALSE(desktop.popover->hasAttachedSheet());
    desktop.show();
    EXPECT_FALSE(desktop.popover->hasAttachedSheet());
    desktop.root().setProperty("sheetAttached", true);
    EXPECT_TRUE(desktop.popover->hasAttachedSheet());
}

TEST(QuickPopover, FollowsTheSizeOfItsContent) {
    PopoverDesktop desktop;
    desktop.panel.place = Rect{0, 0, 1280, 40};
    desktop.show({600, 8, 24, 24});
    desktop.root().setProperty("implicitHeight", 300);
    EXPECT_TRUE(desktop.isAt({512, 800 - 40 - 6 - 300, 200, 300}));
}

TEST(QuickPopover, AScreenThatIsNotThereDoesNoHarm) {
    PopoverDesktop desktop;
    const auto popover = desktop.popovers.make("Nowhere", [] {});
    popover->show(AnchorView(anchorAtTop), RectEdge::minY);
    EXPECT_TRUE(popover->isShown());
    EXPECT_FALSE(popover->hasAttachedSheet());
    popover->close();
    EXPECT_FALSE(popover->isShown());
}

struct PopoverOnManager : testing::TestWithParam<const char*> {};

TEST_P(PopoverOnManager, HasTheKeyboardOnOpeningAndGivesItBack) {
    PopoverDesktop desktop({}, GetParam());
    const xcb_window_t other = desktop.openOtherWindow();
    ASSERT_TRUE(waitUntil([&] { return desktop.focus() == other; }));
    desktop.press('x'); // somebody is just typing there
    desktop.show();
    ASSERT_TRUE(desktop.hasKeyboard());
    desktop.press('a');
    EXPECT_TRUE(waitUntil([&] { return desktop.root().property("typed").toString() == "a"; }));
    desktop.popover->close();
    EXPECT_TRUE(waitUntil([&] { return desktop.focus() == other; }));
}

TEST_P(PopoverOnManager, StaysWhenTheKeyboardGoesElsewhere) {
    PopoverDesktop desktop({}, GetParam());
    desktop.show();
    ASSERT_TRUE(desktop.hasKeyboard());
    const xcb_window_t other = desktop.openOtherWindow();
    ASSERT_TRUE(waitUntil([&] { return desktop.focus() == other; }));
    EXPECT_TRUE(desktop.popover->isShown());
    EXPECT_TRUE(desktop.isMapped(desktop.id()));
    desktop.popover->makeKeyWindow();
    EXPECT_TRUE(desktop.hasKeyboard());
}

TEST_P(PopoverOnManager, IsWhereItBelongsAndUnknownToTaskbars) {
    PopoverDesktop desktop({}, GetParam());
    for (int i = 0; i < 20; ++i) { // hidden and shown faster than a window manager follows
        desktop.show();
        ASSERT_TRUE(waitUntil([&] {
            return desktop.hasState(desktop.id(), "_NET_WM_STATE_SKIP_TASKBAR") &&
                   desktop.hasState(desktop.id(), "_NET_WM_STATE_SKIP_PAGER") &&
                   desktop.hasState(desktop.id(), "_NET_WM_STATE_ABOVE") &&
                   cardinal(*desktop.other, desktop.id(), desktop.atom("_NET_WM_DESKTOP")) ==
                       0xFFFFFFFF;
        })) << i;
        ASSERT_TRUE(desktop.isAt({512, 30, 200, 120})) << i;
        desktop.popover->close();
    }
}

TEST_P(PopoverOnManager, ARequestToCloseCountsAsEscapeButNotWithASheet) {
    PopoverDesktop desktop({}, GetParam());
    desktop.show();
    desktop.root().setProperty("sheetAttached", true);
    desktop.requestClose();
    ASSERT_TRUE(waitUntil([&] { return desktop.closeRequests == 1; }));
    EXPECT_EQ(desktop.escapes, 0);
    desktop.root().setProperty("sheetAttached", false);
    desktop.requestClose();
    ASSERT_TRUE(waitUntil([&] { return desktop.escapes == 1; }));
    EXPECT_TRUE(desktop.popover->isShown()) << "what closes it is whoever made it";
}

INSTANTIATE_TEST_SUITE_P(Managers, PopoverOnManager,
                         testing::Values("openbox", "icewm", "xfwm4", "metacity"),
                         [](const auto& manager) { return std::string(manager.param); });

} // namespace
} // namespace quillon
