#include "support/ToolScreenFixture.h"

#include <map>

namespace quillon {
namespace {

const QStringList edgeBars{"Top edge", "Bottom edge", "Left edge", "Right edge"};

struct ToolScreenKeyboard : ToolScreenFixture {
    [[nodiscard]] QString focused() const {
        auto* const item = known(view.activeFocusItem());
        const QString name = item->text(QAccessible::Name);
        return name == "Slider" ? item->text(QAccessible::Description).section(':', 0, 0) : name;
    }
    [[nodiscard]] double top() const { return place(toggle("Top edge")).top(); }
};

TEST_F(ToolScreenKeyboard, TabReachesEveryControlAndShowsIt) {
    const std::map<std::string_view, QStringList> reached{
        {windowTool, edgeBars + QStringList{"Edge sensitivity", "Scroll sensitivity",
                                            "App name (e.g. Slack)", "Add", "Remove A"}},
        {mediaTool,
         edgeBars + QStringList{"Edge sensitivity", "Middle mouse button", "Left mouse button"}},
        {trackpadTool, {}},
        {desktopTool, edgeBars + QStringList{"Edge sensitivity", "Scroll sensitivity"}},
        {volumeTool, edgeBars + QStringList{"Edge sensitivity", "Step size"}},
        {scrollTool, {"Reverse trackpad", "Reverse mouse wheel"}}};
    simulated.managers.windowSwitcher().setExcludedAppNames({"A"});
    for (const std::string_view tool : allTools) {
        SCOPED_TRACE(tool);
        open(tool, popover);
        const QStringList expected = QStringList{"Back"} + reached.at(tool) + QStringList{"Back"};
        for (const QString& name : expected) {
            key(Qt::Key_Tab);
            EXPECT_EQ(focused(), name);
            const QRectF shown = place(view.activeFocusItem());
            EXPECT_GE(shown.top(), 0) << name.toStdString();
            EXPECT_LE(shown.bottom(), view.height()) << name.toStdString();
            EXPECT_EQ(focusRings(), 1U) << name.toStdString();
        }
        for (auto name = expected.rbegin() + 1; name != expected.rend(); ++name) {
            key(Qt::Key_Tab, Qt::ShiftModifier);
            EXPECT_EQ(focused(), *name);
        }
    }
}

TEST_F(ToolScreenKeyboard, ScreenItselfHasTheKeysAtFirst) {
    open(volumeTool, popover);
    EXPECT_EQ(view.activeFocusItem(), &root());
    EXPECT_EQ(focused(), "Volume+");
    EXPECT_EQ(known(&root())->role(), QAccessible::Pane);
}

TEST_F(ToolScreenKeyboard, PageKeysScroll) {
    open(volumeTool, popover);
    for (const bool atAControl : {false, true}) {
        if (atAControl) {
            focus(toggle("Top edge"));
        }
        const double before = top();
        key(Qt::Key_PageDown);
        EXPECT_LT(top(), before - 100);
        key(Qt::Key_PageUp);
        EXPECT_EQ(top(), before);
    }
    focus(button("Back"));
    const double before = top();
    key(Qt::Key_PageDown);
    EXPECT_LT(top(), before);
}

TEST_F(ToolScreenKeyboard, ArrowsAndEndsScrollWhereNothingElseTakesThem) {
    open(volumeTool, popover);
    const double before = top();
    key(Qt::Key_Down);
    EXPECT_EQ(top(), before - 40);
    key(Qt::Key_Up);
    EXPECT_EQ(top(), before);
    key(Qt::Key_End);
    EXPECT_LT(place(slider("Step size")).bottom(), view.height());
    key(Qt::Key_Home);
    EXPECT_EQ(top(), before);
}

TEST_F(ToolScreenKeyboard, KeysGoToTheSliderThatWasDragged) {
    open(volumeTool);
    focus(slider("Edge sensitivity"));
    EXPECT_EQ(focusRings(), 1U);
    click(slider("Step size"));
    EXPECT_EQ(focusRings(), 0U) << "who drags need not be shown where";
    const int steps = set("volumeSteps").toInt();
    key(Qt::Key_Right);
    EXPECT_EQ(set("volumeSteps"), steps + 1);
    EXPECT_EQ(focusRings(), 1U);
}

TEST_F(ToolScreenKeyboard, AHeldKeyPressesOnce) {
    open(volumeTool);
    focus(toggle("Left edge"));
    for (const bool isRepeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, {}, " ", isRepeated);
        QCoreApplication::sendEvent(&view, &press);
        EXPECT_TRUE(press.isAccepted());
        EXPECT_TRUE(set("leftEdgeEnabled").toBool());
    }
}

TEST_F(ToolScreenKeyboard, WheelScrollsUpToBothEnds) {
    open(volumeTool, popover);
    const double before = top();
    quint64 time = 1000; // milliseconds
    const auto wheel = [&](int delta) {
        QWheelEvent event(QPointF(180, 300), view.mapToGlobal(QPointF(180, 300)), {}, {0, delta},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        event.setTimestamp(time += 20);
        QCoreApplication::sendEvent(&view, &event);
        settle();
    };
    wheel(-120);
    EXPECT_TRUE(QTest::qWaitFor([&] { return top() < before; }));
    for (int i = 0; i < 30; ++i) {
        wheel(-120);
    }
    const QString last = "Step size";
    EXPECT_TRUE(QTest::qWaitFor([&] { return place(slider(last)).bottom() < view.height() - 20; }));
    for (int i = 0; i < 60; ++i) {
        wheel(120);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return top() == before; }));
    EXPECT_EQ(set("volumeSteps"), 1) << "the wheel sets nothing";
}

TEST_F(ToolScreenKeyboard, EscapeIsLeftToWhatIsAround) {
    for (const std::string_view tool : allTools) {
        open(tool);
        const int controls = 12;
        for (int i = 0; i < controls; ++i) {
            key(Qt::Key_Tab);
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
            QCoreApplication::sendEvent(&view, &escape);
            EXPECT_FALSE(escape.isAccepted()) << tool << ' ' << focused().toStdString();
        }
    }
}

} // namespace
} // namespace quillon
