#include "support/ToolScreenFixture.h"

#include <algorithm>
#include <cmath>

namespace quillon {
namespace {

struct SliderCase {
    std::string_view tool;
    const char* title;
    const char* property;
    const char* key;
    double lower;
    double upper;
    double step; // 0: any value
    const char* unit;
};

constexpr std::array sliders{
    SliderCase{windowTool, "Edge sensitivity", "edgeSensitivity", "WindowSwitcher_EdgeSensitivity",
               10, 100, 0, "px"},
    SliderCase{windowTool, "Scroll sensitivity", "edgeScrollSteps",
               "WindowSwitcher_EdgeScrollSteps", 1, 10, 1, "steps"},
    SliderCase{mediaTool, "Edge sensitivity", "edgeSensitivity", "MediaControlEdgeSensitivity", 10,
               100, 0, "px"},
    SliderCase{desktopTool, "Edge sensitivity", "edgeSensitivity", "Tool4EdgeSensitivity", 10, 100,
               0, "px"},
    SliderCase{desktopTool, "Scroll sensitivity", "scrollSensitivity", "Tool4ScrollSensitivity", 1,
               10, 1, "steps"},
    SliderCase{volumeTool, "Edge sensitivity", "edgeSensitivity", "Tool5EdgeSensitivity", 10, 100,
               0, "px"},
    SliderCase{volumeTool, "Step size", "volumeSteps", "Tool5VolumeSteps", 1, 10, 1, "per scroll"},
};

constexpr double thumbSize = 16;

struct ToolScreenSlider : ToolScreenFixture {
    /// The place on the screen at this distance from the slider's left end.
    [[nodiscard]] static QPoint at(const QQuickItem* slider, double x) {
        return slider->mapToScene(QPointF(x, slider->height() / 2)).toPoint();
    }

    /// What the slider is to say with the pointer there.
    [[nodiscard]] static double expected(const SliderCase& one, const QQuickItem* slider,
                                         QPoint pointer) {
        const double x = slider->mapFromScene(QPointF(pointer)).x();
        const double f = std::clamp((x - thumbSize / 2) / (slider->width() - thumbSize), 0.0, 1.0);
        const double raw = one.lower + f * (one.upper - one.lower);
        return one.step == 0 ? raw : one.lower + std::round(raw - one.lower);
    }

    [[nodiscard]] double value(const SliderCase& one) const { return set(one.property).toDouble(); }

    [[nodiscard]] QAccessibleValueInterface* values(const char* title) const {
        return known(slider(title))->valueInterface();
    }

    void press(QPoint where) { QTest::mousePress(&view, Qt::LeftButton, {}, where); }
    void move(QPoint where) { QTest::mouseMove(&view, where); }
    void release(QPoint where) { QTest::mouseRelease(&view, Qt::LeftButton, {}, where); }
};

TEST_F(ToolScreenSlider, RangeStepAndNameForAssistiveTechnology) {
    for (const SliderCase& one : sliders) {
        SCOPED_TRACE(testing::Message() << one.tool << ' ' << one.title);
        open(one.tool);
        const auto* const element = known(slider(one.title));
        EXPECT_EQ(element->text(QAccessible::Name), "Slider");
        EXPECT_EQ(element->childCount(), 0);
        EXPECT_EQ(values(one.title)->minimumValue(), one.lower);
        EXPECT_EQ(values(one.title)->maximumValue(), one.upper);
        EXPECT_EQ(values(one.title)->minimumStepSize(), 1);
        EXPECT_EQ(values(one.title)->currentValue(), value(one));
        EXPECT_EQ(element->text(QAccessible::Description),
                  QString::asprintf("%s: %.2f", one.title, value(one)));
        EXPECT_TRUE(accessibles(QAccessible::StaticText, "10").empty()) << "its ends are its own";
    }
}

TEST_F(ToolScreenSlider, DragWritesEveryMovementToTheManagerAndItsDefaults) {
    for (const SliderCase& one : sliders) {
        SCOPED_TRACE(testing::Message() << one.tool << ' ' << one.title);
        open(one.tool);
        const QQuickItem* element = slider(one.title);
        const auto isWritten = [&](QPoint pointer) {
            const double wanted = expected(one, element, pointer);
            EXPECT_DOUBLE_EQ(value(one), wanted) << pointer.x();
            EXPECT_EQ(stored(one.key), DefaultsObject(value(one)));
            EXPECT_EQ(amount(one.title),
                      QString("%1 %2").arg(std::lround(wanted)).arg(QString(one.unit)));
        };
        const QPoint start = at(element, element->width() / 3);
        press(start);
        isWritten(start);
        for (int x = -30; x < element->width() + 30; ++x) {
            const QPoint pointer = at(element, x);
            move(pointer);
            isWritten(pointer);
        }
        EXPECT_EQ(value(one), one.upper);
        move({1, 1});
        EXPECT_EQ(value(one), one.lower) << "also from beside it";
        release({1, 1});
        move(at(element, 100));
        EXPECT_EQ(value(one), one.lower) << "the drag is over";
    }
}

TEST_F(ToolScreenSlider, DragBeginsAnywhereOnTheControl) {
    open(desktopTool);
    const QQuickItem* element = slider("Edge sensitivity");
    press(at(element, -15)); // on what says "10"
    EXPECT_EQ(set("edgeSensitivity"), 10);
    move(at(element, 60));
    EXPECT_GT(set("edgeSensitivity").toDouble(), 20);
    release(at(element, 60));
    press(at(element, element->width() + 15)); // "100"
    EXPECT_EQ(set("edgeSensitivity"), 100);
    release(at(element, element->width()));
    press(at(element, 60) - QPoint(0, 11)); // at its upper rim
    EXPECT_LT(set("edgeSensitivity").toDouble(), 50);
    release(at(element, 60));
}

TEST_F(ToolScreenSlider, StepSlidersTakeTheWholeNumbersOfOneToTenAndNoOther) {
    open(volumeTool);
    const QQuickItem* element = slider("Step size");
    QList<double> seen;
    press(at(element, 0));
    for (int x = 0; x <= element->width(); ++x) {
        move(at(element, x));
        if (!seen.contains(set("volumeSteps").toDouble())) {
            seen.append(set("volumeSteps").toDouble());
        }
    }
    release(at(element, element->width()));
    EXPECT_EQ(seen, (QList<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(ToolScreenSlider, DragIsNotTakenForScrolling) {
    open(desktopTool, popover);
    const QQuickItem* element = slider("Edge sensitivity");
    const double y = place(element).y();
    press(at(element, 50));
    for (int i = 0; i < 40; ++i) {
        move(at(element, 50 + i) - QPoint(0, 3 * i));
    }
    EXPECT_EQ(place(element).y(), y);
    EXPECT_DOUBLE_EQ(set("edgeSensitivity").toDouble(),
                     expected(sliders[3], element, at(element, 89)));
    release(at(element, 89));
}

TEST_F(ToolScreenSlider, RunsFromTheRightWhereWritingDoes) {
    open(desktopTool);
    mirror();
    const QQuickItem* element = slider("Scroll sensitivity");
    press(at(element, 4));
    EXPECT_EQ(set("scrollSensitivity"), 10);
    move(at(element, element->width() - 4));
    EXPECT_EQ(set("scrollSensitivity"), 1);
    release(at(element, element->width() - 4));
    focus(slider("Scroll sensitivity"));
    key(Qt::Key_Left);
    EXPECT_EQ(set("scrollSensitivity"), 2);
    key(Qt::Key_Right);
    EXPECT_EQ(set("scrollSensitivity"), 1);
    key(Qt::Key_Up);
    EXPECT_EQ(set("scrollSensitivity"), 2);
}

TEST_F(ToolScreenSlider, ByKeys) {
    for (const SliderCase& one : sliders) {
        SCOPED_TRACE(testing::Message() << one.tool << ' ' << one.title);
        open(one.tool);
        focus(slider(one.title));
        const double page = one.step == 0 ? 9 : 1;
        manager->setProperty(one.property, one.lower + 4);
        const auto after = [&](Qt::Key pressed) {
            key(pressed);
            EXPECT_EQ(stored(one.key), DefaultsObject(value(one)));
            return value(one) - one.lower;
        };
        EXPECT_EQ(after(Qt::Key_Right), 5);
        EXPECT_EQ(after(Qt::Key_Up), 6);
        EXPECT_EQ(after(Qt::Key_Left), 5);
        EXPECT_EQ(after(Qt::Key_Down), 4);
        EXPECT_EQ(after(Qt::Key_PageUp), 4 + page);
        EXPECT_EQ(after(Qt::Key_PageDown), 4);
        EXPECT_EQ(after(Qt::Key_End), one.upper - one.lower);
        EXPECT_EQ(after(Qt::Key_Right), one.upper - one.lower);
        EXPECT_EQ(after(Qt::Key_Home), 0);
        EXPECT_EQ(after(Qt::Key_Left), 0);
    }
}

TEST_F(ToolScreenSlider, ByAssistiveTechnologyThroughTheSameSteps) {
    for (const SliderCase& one : sliders) {
        SCOPED_TRACE(testing::Message() << one.tool << ' ' << one.title);
        open(one.tool);
        values(one.title)->setCurrentValue(5.678);
        EXPECT_EQ(value(one), one.step == 0 ? 10 : 6);
        EXPECT_EQ(stored(one.key), DefaultsObject(value(one)));
        EXPECT_EQ(values(one.title)->currentValue(), value(one));
        values(one.title)->setCurrentValue(1000);
        EXPECT_EQ(value(one), one.upper);
        EXPECT_EQ(values(one.title)->currentValue(), one.upper);
        values(one.title)->setCurrentValue(std::nan(""));
        EXPECT_EQ(value(one), one.upper);
        auto* const actions = known(slider(one.title))->actionInterface();
        actions->doAction(QAccessibleActionInterface::decreaseAction());
        EXPECT_EQ(value(one), one.upper - 1);
        actions->doAction(QAccessibleActionInterface::increaseAction());
        EXPECT_EQ(value(one), one.upper);
        manager->setProperty(one.property, one.lower + 2);
        EXPECT_EQ(values(one.title)->currentValue(), one.lower + 2) << "and follows again";
    }
}

TEST_F(ToolScreenSlider, SaysItsValueWithTwoDecimals) {
    open(mediaTool);
    manager->setProperty("edgeSensitivity", 55.6789);
    EXPECT_DOUBLE_EQ(values("Edge sensitivity")->currentValue().toDouble(), 55.68);
    EXPECT_EQ(known(slider("Edge sensitivity"))->text(QAccessible::Description),
              "Edge sensitivity: 55.68");
    EXPECT_EQ(set("edgeSensitivity"), 55.6789) << "said is not set";
    EXPECT_EQ(amount("Edge sensitivity"), "56 px");
    manager->setProperty("edgeSensitivity", 42.5);
    EXPECT_EQ(amount("Edge sensitivity"), "43 px");
}

TEST_F(ToolScreenSlider, ShowsWhatIsOutOfItsRangeAndLeavesItAlone) {
    simulated.managers.desktopSwitcher().setEdgeSensitivity(7.25);
    simulated.managers.volumeControl().setVolumeSteps(400);
    open(desktopTool);
    EXPECT_EQ(amount("Edge sensitivity"), "7 px");
    EXPECT_EQ(set("edgeSensitivity"), 7.25);
    open(volumeTool);
    EXPECT_EQ(amount("Step size"), "400 per scroll");
    EXPECT_EQ(set("volumeSteps"), 400);
    focus(slider("Step size"));
    key(Qt::Key_Left);
    EXPECT_EQ(set("volumeSteps"), 10);
}

} // namespace
} // namespace quillon
