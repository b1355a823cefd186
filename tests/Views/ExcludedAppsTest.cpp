#include "support/ToolScreenFixture.h"

namespace quillon {
namespace {

struct ExcludedApps : ToolScreenFixture {
    void SetUp() override {
        ToolScreenFixture::SetUp();
        open(windowTool);
    }

    [[nodiscard]] QStringList names() {
        return simulated.managers.windowSwitcher().excludedAppNames();
    }
    void setNames(const QStringList& names) {
        simulated.managers.windowSwitcher().setExcludedAppNames(names);
        settle();
        view.grabWindow(); // lays the chips out
    }
    [[nodiscard]] QString typed() const { return root().property("newExcludedAppName").toString(); }

    /// What is shown beneath the count of this kind, up to the next count.
    [[nodiscard]] QStringList chips(const QString& kind) const {
        QStringList found;
        bool isBeneath = false;
        for (const QString& text : texts()) {
            const bool isCount = text.endsWith(" excluded") || text.endsWith(" detected");
            if (isBeneath && !isCount) {
                found.append(text);
            }
            isBeneath = isCount ? text.endsWith(kind) : isBeneath;
        }
        return found;
    }

    void type(const QString& name) {
        focus(field());
        QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&view, Qt::Key_Delete);
        for (const QChar letter : name) {
            QTest::sendKeyEvent(QTest::Click, &view, Qt::Key_unknown, letter, Qt::NoModifier);
        }
        EXPECT_EQ(typed(), name);
    }

    /// A switch finds these applications.
    void detect(const QStringList& applications) {
        ProcessId process = 100;
        for (const QString& name : applications) {
            simulated.desktop.windows.add(
                {++process, name.toStdString(), 0, Rect{100, 100, 800, 600}, true});
        }
        simulated.managers.windowSwitcher().switchToNextWindow();
        simulated.desktop.runLoop.drain();
        settle();
    }
};

TEST_F(ExcludedApps, TypedNameIsAddedByTheButton) {
    type("Mail");
    click(button("Add"));
    EXPECT_EQ(names(), QStringList{"Mail"});
    EXPECT_EQ(stored("WindowSwitcher_ExcludedAppNames"), DefaultsObject(StringList{"Mail"}));
    EXPECT_EQ(chips("excluded"), QStringList{"Mail"});
    EXPECT_TRUE(texts().contains("1 excluded"));
    EXPECT_EQ(typed(), "");
}

TEST_F(ExcludedApps, AndByReturnSoThatTheNextCanBeTyped) {
    for (const QString& name : {QString("Zeichnen"), QString("Ärger & Söhne"), QString("Ab c")}) {
        type(name);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(names(), (QStringList{"Zeichnen", "Ärger & Söhne", "Ab c"})) << "behind the others";
    EXPECT_EQ(chips("excluded"), names());
    EXPECT_EQ(view.activeFocusItem(), field());
    EXPECT_TRUE(texts().contains("3 excluded"));
}

TEST_F(ExcludedApps, SpaceAndLineBreaksAroundItDoNotBelongToTheName) {
    root().setProperty("newExcludedAppName", "\n\t Mail \u00a0\u2029\r\n");
    click(button("Add"));
    EXPECT_EQ(names(), QStringList{"Mail"});
    type("  Two words  ");
    click(button("Add"));
    EXPECT_EQ(names(), (QStringList{"Mail", "Two words"}));
}

TEST_F(ExcludedApps, NothingAndWhatIsThereChangeNothing) {
    setNames({"Mail"});
    const auto writes = simulated.desktop.userDefaults.suite("com.pelorin.shared")->writes();
    for (const QString& name :
         {QString(), QString("   "), QString("Mail"), QString(" Mail "), QString("mAIL")}) {
        type(name);
        click(button("Add"));
        EXPECT_EQ(names(), QStringList{"Mail"}) << name.toStdString();
        EXPECT_EQ(typed(), name) << "to be corrected";
    }
    EXPECT_EQ(simulated.desktop.userDefaults.suite("com.pelorin.shared")->writes(), writes);
}

TEST_F(ExcludedApps, ChipsRemoveTheirName) {
    setNames({"A", "B", "C"});
    click(button("Remove B"));
    EXPECT_EQ(names(), (QStringList{"A", "C"}));
    EXPECT_EQ(stored("WindowSwitcher_ExcludedAppNames"), DefaultsObject(StringList{"A", "C"}));
    known(button("Remove A"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(names(), QStringList{"C"});
    settle();
    EXPECT_EQ(chips("excluded"), QStringList{"C"});
    EXPECT_TRUE(texts().contains("1 excluded"));
}

TEST_F(ExcludedApps, KeysStayAtTheNextChipAndThenAtTheField) {
    setNames({"A", "B", "C"});
    focus(button("Remove B"));
    key(Qt::Key_Space);
    EXPECT_EQ(view.activeFocusItem(), button("Remove C"));
    key(Qt::Key_Space);
    EXPECT_EQ(view.activeFocusItem(), button("Remove A"));
    key(Qt::Key_Return);
    EXPECT_EQ(names(), QStringList{});
    EXPECT_EQ(view.activeFocusItem(), field());
}

TEST_F(ExcludedApps, ShowsWhatOthersSet) {
    setNames({"A", "B"});
    EXPECT_EQ(chips("excluded"), (QStringList{"A", "B"}));
    setNames({"B"});
    EXPECT_EQ(chips("excluded"), QStringList{"B"});
}

TEST_F(ExcludedApps, DetectedOnesAreOfferedUntilTheyAreExcluded) {
    EXPECT_TRUE(texts().contains("0 detected"));
    detect({"Editor", "Mail", "Terminal"});
    EXPECT_TRUE(texts().contains("3 detected"));
    QStringList detected = root().property("detectedApps").toStringList();
    EXPECT_EQ(chips("detected"), detected);
    detected.sort();
    EXPECT_EQ(detected, (QStringList{"Editor", "Mail", "Terminal"}));

    click(button("Add Mail"));
    EXPECT_EQ(names(), QStringList{"Mail"});
    EXPECT_EQ(chips("excluded"), QStringList{"Mail"});
    EXPECT_FALSE(button("Add Mail")->isEnabled());
    EXPECT_TRUE(button("Add Editor")->isEnabled());
    EXPECT_TRUE(texts().contains("3 detected")) << "they are still there";
    click(button("Remove Mail"));
    EXPECT_TRUE(button("Add Mail")->isEnabled());
}

TEST_F(ExcludedApps, KeysStayAtTheNextOffer) {
    detect({"A", "B"});
    const QStringList offered = chips("detected");
    focus(button("Add " + offered[0]));
    key(Qt::Key_Space);
    EXPECT_EQ(view.activeFocusItem(), button("Add " + offered[1]));
    key(Qt::Key_Space);
    EXPECT_EQ(view.activeFocusItem(), field());
    EXPECT_EQ(names(), offered);
}

TEST_F(ExcludedApps, SymbolsSayWhatAChipDoes) {
    setNames({"A"});
    detect({"B"});
    EXPECT_EQ(symbols().mid(symbols().size() - 2), (QStringList{"xmark", "plus"}));
}

TEST_F(ExcludedApps, NamesAreNoMarkup) {
    setNames({"<b>bold</b>"});
    const auto isChip = [](const QQuickItem& item) {
        return item.property("text").toString() == "<b>bold</b>";
    };
    ASSERT_EQ(items(root(), isChip).size(), 1U);
    EXPECT_EQ(items(root(), isChip).front()->property("textFormat").toInt(), Qt::PlainText);
}

TEST_F(ExcludedApps, AHundredNamesOfAnyLength) {
    QStringList many;
    for (int i = 0; i < 100; ++i) {
        many.append(QString("Application %1").arg(i) + QString("…").repeated(i));
    }
    setNames(many);
    EXPECT_EQ(chips("excluded"), many);
    EXPECT_TRUE(texts().contains("100 excluded"));
    view.resize(popover);
    settle();
    double last = 0;
    for (const QString& name : many) {
        QQuickItem* remove = button("Remove " + name);
        focus(remove);
        const QRectF shown = place(remove);
        EXPECT_GE(shown.left(), 0);
        EXPECT_LE(shown.right(), view.width());
        EXPECT_GE(shown.top(), 0) << name.toStdString();
        EXPECT_LE(shown.bottom(), view.height()) << name.toStdString();
        last = std::max(last, shown.width());
    }
    EXPECT_GT(last, 0);
    type("One more");
    key(Qt::Key_Return);
    EXPECT_EQ(names().size(), 101);
}

} // namespace
} // namespace quillon
