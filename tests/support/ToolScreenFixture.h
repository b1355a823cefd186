#pragma once

#include "support/ScreenFixture.h"

#include <QQmlEngine>
#include <QQmlExpression>
#include <QQmlProperty>

#include <array>
#include <optional>
#include <string_view>

namespace quillon {

/// One tool's settings alone in the window, over a simulated desktop.
struct ToolScreenFixture : ScreenFixture {
    static constexpr QSize everything{360, 1400}; // nothing of it has to be scrolled
    static constexpr QSize popover{360, 427};

    void SetUp() override {
        QObject::connect(view.engine(), &QQmlEngine::warnings, &view, [this](const auto& all) {
            for (const QQmlError& warning : all) {
                warnings.append(warning.toString());
            }
        });
    }

    void TearDown() override {
        EXPECT_TRUE(warnings.isEmpty()) << warnings.join('\n').toStdString();
        view.setSource(QUrl());
    }

    void open(std::string_view tool, const QSize& size = everything) {
        open(simulated, tool, size);
    }

    void open(SimulatedHub& hub, std::string_view tool, const QSize& size = everything) {
        hub.hub->customize(QString::fromStdString(std::string(tool)));
        const SelectedTool& selected = hub.hub->selected();
        manager = selected.manager;
        defaults = tool == windowTool ? hub.desktop.userDefaults.suite("com.pelorin.shared")
                                      : &hub.desktop.userDefaults.standard();
        view.setInitialProperties({{"hub", QVariant::fromValue(hub.hub.get())},
                                   {"manager", QVariant::fromValue(manager)}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(size);
        view.setSource(selected.screen);
        ASSERT_NE(view.rootObject(), nullptr) << tool;
        setTheme("movesLess", true);
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        root().forceActiveFocus();
        settle();
    }

    /// The hub's window does that for its screens.
    void setTheme(const QString& option, bool isOn) {
        QQmlExpression(qmlContext(&root()), &root(),
                       QString("Theme.%1 = %2").arg(option, isOn ? "true" : "false"))
            .evaluate();
    }

    /// As for people who write from right to left.
    void mirror() {
        QQmlProperty::write(&root(), "LayoutMirroring.childrenInherit", true, qmlContext(&root()));
        QQmlProperty::write(&root(), "LayoutMirroring.enabled", true, qmlContext(&root()));
        settle();
    }

    [[nodiscard]] std::optional<DefaultsObject> stored(std::string_view key) const {
        return defaults->object(key);
    }
    [[nodiscard]] QVariant set(const char* property) const { return manager->property(property); }

    [[nodiscard]] QQuickItem* toggle(const QString& name) const {
        return accessible(QAccessible::CheckBox, name);
    }
    [[nodiscard]] bool isChecked(const QString& name) const {
        return known(toggle(name))->state().checked;
    }
    [[nodiscard]] QQuickItem* field() const {
        return accessible(QAccessible::EditableText, "App name (e.g. Slack)");
    }

    /// The slider beneath this title.
    [[nodiscard]] QQuickItem* slider(const QString& title) const {
        for (QQuickItem* item : accessibles(QAccessible::Slider, "Slider")) {
            if (known(item)->text(QAccessible::Description).startsWith(title)) {
                return item;
            }
        }
        ADD_FAILURE() << "no slider " << title.toStdString();
        return nullptr;
    }

    /// What stands at the right of a slider's title.
    [[nodiscard]] QString amount(const QString& title) const {
        const QStringList all = texts();
        return all.value(all.indexOf(title) + 1);
    }

    [[nodiscard]] static QRectF place(const QQuickItem* item) {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }

    void focus(QQuickItem* item) {
        ASSERT_NE(item, nullptr);
        item->forceActiveFocus();
        settle();
    }

    QObject* manager = nullptr;
    const UserDefaults* defaults = nullptr;
    QStringList warnings;
};

} // namespace quillon
