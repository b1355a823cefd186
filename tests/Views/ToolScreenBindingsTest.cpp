#include "support/ToolScreenFixture.h"

namespace quillon {
namespace {

struct SwitchCase {
    std::string_view tool;
    const char* name;
    const char* property;
    const char* key;
};

constexpr std::array switches{
    SwitchCase{windowTool, "Top edge", "topEdgeEnabled", "WindowSwitcher_TopEdge"},
    SwitchCase{windowTool, "Bottom edge", "bottomEdgeEnabled", "WindowSwitcher_BottomEdge"},
    SwitchCase{windowTool, "Left edge", "leftEdgeEnabled", "WindowSwitcher_LeftEdge"},
    SwitchCase{windowTool, "Right edge", "rightEdgeEnabled", "WindowSwitcher_RightEdge"},
    SwitchCase{mediaTool, "Top edge", "topEdgeEnabled", "MediaControlTopEdge"},
    SwitchCase{mediaTool, "Bottom edge", "bottomEdgeEnabled", "MediaControlBottomEdge"},
    SwitchCase{mediaTool, "Left edge", "leftEdgeEnabled", "MediaControlLeftEdge"},
    SwitchCase{mediaTool, "Right edge", "rightEdgeEnabled", "MediaControlRightEdge"},
    SwitchCase{mediaTool, "Middle mouse button", "middleButtonEnabled", "MediaControlMiddleButton"},
    SwitchCase{mediaTool, "Left mouse button", "leftButtonEnabled", "MediaControlLeftButton"},
    SwitchCase{desktopTool, "Top edge", "topEdgeEnabled", "Tool4TopEdge"},
    SwitchCase{desktopTool, "Bottom edge", "bottomEdgeEnabled", "Tool4BottomEdge"},
    SwitchCase{desktopTool, "Left edge", "leftEdgeEnabled", "Tool4LeftEdge"},
    SwitchCase{desktopTool, "Right edge", "rightEdgeEnabled", "Tool4RightEdge"},
    SwitchCase{volumeTool, "Top edge", "topEdgeEnabled", "Tool5TopEdge"},
    SwitchCase{volumeTool, "Bottom edge", "bottomEdgeEnabled", "Tool5BottomEdge"},
    SwitchCase{volumeTool, "Left edge", "leftEdgeEnabled", "Tool5LeftEdge"},
    SwitchCase{volumeTool, "Right edge", "rightEdgeEnabled", "Tool5RightEdge"},
    SwitchCase{scrollTool, "Reverse trackpad", "reverseTrackpad", "ScrollReverseTrackpad"},
    SwitchCase{scrollTool, "Reverse mouse wheel", "reverseMouse", "ScrollReverseMouse"},
};

struct ToolScreenSwitches : ToolScreenFixture {
    /// Nothing else has changed but this property.
    [[nodiscard]] QVariantMap switched() const {
        QVariantMap found;
        for (const SwitchCase& one : switches) {
            if (manager->metaObject()->indexOfProperty(one.property) >= 0) {
                found[one.property] = set(one.property);
            }
        }
        return found;
    }
};

TEST_F(ToolScreenSwitches, EachDrivesItsPropertyAndNoOther) {
    for (const SwitchCase& one : switches) {
        SCOPED_TRACE(testing::Message() << one.tool << ' ' << one.name);
        open(one.tool);
        const bool before = set(one.property).toBool();
        QVariantMap expected = switched();
        EXPECT_EQ(isChecked(one.name), before);
        expected[one.property] = !before;
        click(toggle(one.name));
        EXPECT_EQ(switched(), expected);
        EXPECT_EQ(isChecked(one.name), !before);
        EXPECT_EQ(stored(one.key), DefaultsObject(!before)) << "at once";
        click(toggle(one.name));
        EXPECT_EQ(set(one.property), before);
        EXPECT_EQ(stored(one.key), DefaultsObject(before));
    }
}

TEST_F(ToolScreenSwitches, EachShowsWhatOthersSet) {
    for (const SwitchCase& one : switches) {
        open(one.tool);
        for (const bool on : {true, false, true}) {
            manager->setProperty(one.property, on);
            settle();
            EXPECT_EQ(isChecked(one.name), on) << one.tool << ' ' << one.name;
        }
        click(toggle(one.name));
        manager->setProperty(one.property, true);
        settle();
        EXPECT_TRUE(isChecked(one.name)) << "also once it was pressed";
    }
}

TEST_F(ToolScreenSwitches, EachByKeyAndByAssistiveTechnology) {
    for (const SwitchCase& one : switches) {
        open(one.tool);
        const bool before = set(one.property).toBool();
        focus(toggle(one.name));
        for (const Qt::Key press : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            const bool last = set(one.property).toBool();
            key(press);
            EXPECT_EQ(set(one.property), !last) << one.tool << ' ' << one.name;
        }
        const auto* const control = known(toggle(one.name));
        EXPECT_TRUE(control->state().checkable);
        EXPECT_TRUE(control->state().focusable);
        EXPECT_TRUE(control->state().focused);
        for (const QString& action : {QAccessibleActionInterface::toggleAction(),
                                      QAccessibleActionInterface::pressAction()}) {
            const bool last = set(one.property).toBool();
            known(toggle(one.name))->actionInterface()->doAction(action);
            EXPECT_EQ(set(one.property), !last) << one.name << ' ' << action.toStdString();
            EXPECT_EQ(isChecked(one.name), !last);
        }
        EXPECT_NE(set(one.property).toBool(), before);
    }
}

TEST_F(ToolScreenSwitches, HelpOfASwitchBelongsToIt) {
    open(scrollTool);
    EXPECT_EQ(known(toggle("Reverse trackpad"))->text(QAccessible::Description),
              "Inverts natural scrolling for trackpad gestures only.");
}

TEST_F(ToolScreenSwitches, AllEdgesMayBeOff) {
    open(desktopTool);
    const QStringList names{"Top edge", "Bottom edge", "Left edge", "Right edge"};
    for (const int times : {1, 2}) {
        for (const QString& name : names) {
            click(toggle(name));
            EXPECT_EQ(isChecked(name), times == 1);
        }
    }
    EXPECT_FALSE(simulated.managers.desktopSwitcher().isMouseAtEnabledEdge());
}

TEST_F(ToolScreenSwitches, EnabledEdgesAreBrightAndDisabledOnesFaint) {
    open(desktopTool);
    const auto bar = [&](const QString& name) {
        const QRectF area = place(toggle(name));
        const bool isLeft = name == "Left edge";
        const QPointF at = isLeft ? QPointF(area.left() + 10, area.center().y())
                                  : QPointF(area.center().x(), area.top() + 10);
        const QPointF pixel = at * view.devicePixelRatio();
        return view.grabWindow().pixelColor(pixel.toPoint()).lightness();
    };
    for (const QString& name : {QString("Top edge"), QString("Left edge")}) {
        EXPECT_GT(bar(name), 80);
        EXPECT_LT(bar(name), 160);
        click(toggle(name));
        QTest::mouseMove(&view, QPoint(2, 2));
        settle();
        EXPECT_EQ(bar(name), 255);
    }
}

TEST_F(ToolScreenSwitches, ArrowKeysGoToTheBarInTheirDirection) {
    open(volumeTool);
    focus(toggle("Left edge"));
    for (const bool mirrored : {false, true}) {
        if (mirrored) {
            mirror();
        }
        for (const auto& [pressed, name] :
             {std::pair{Qt::Key_Right, "Right edge"}, std::pair{Qt::Key_Up, "Top edge"},
              std::pair{Qt::Key_Down, "Bottom edge"}, std::pair{Qt::Key_Left, "Left edge"}}) {
            key(pressed);
            EXPECT_EQ(view.activeFocusItem(), toggle(name)) << name;
        }
        EXPECT_LT(place(toggle("Left edge")).left(), place(toggle("Right edge")).left())
            << "a picture of the screen";
    }
    key(Qt::Key_Space);
    EXPECT_TRUE(set("leftEdgeEnabled").toBool());
}

} // namespace
} // namespace quillon
