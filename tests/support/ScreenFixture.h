#pragma once

#include "Views/Screens.h"
#include "support/SimulatedHub.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace quillon {

inline constexpr std::string_view windowTool = "tool.windowSwitcher";
inline constexpr std::string_view mediaTool = "tool.mediaControl";
inline constexpr std::string_view trackpadTool = "tool.trackpadMiddleClick";
inline constexpr std::string_view desktopTool = "tool.desktopSwitcher";
inline constexpr std::string_view volumeTool = "tool.volumeControl";
inline constexpr std::string_view scrollTool = "tool.scrollReverse";
inline constexpr std::array allTools{windowTool,  mediaTool,  trackpadTool,
                                     desktopTool, volumeTool, scrollTool};

/// The application of all tests: a second one would do without accessibility, and one that is
/// static would go before what the toolkit keeps of it.
class ScreenEnvironment final : public testing::Environment {
  public:
    void SetUp() override {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        application_ = std::make_unique<QGuiApplication>(argc, argv);
        QAccessible::setActive(true);
    }
    void TearDown() override { application_.reset(); }

  private:
    std::unique_ptr<QGuiApplication> application_;
};
inline testing::Environment* const screenEnvironment =
    testing::AddGlobalTestEnvironment(new ScreenEnvironment);

/// The hub as the processor draws it, on no desktop, over a simulated one.
struct ScreenFixture : testing::Test {
    explicit ScreenFixture(bool trusted = true) : simulated(trusted) {}

    SimulatedHub simulated;
    QQuickView view;

    void SetUp() override {
        simulated.desktop.workspace.choose(
            {.shouldReduceMotion = true}); // changes are seen at once
        show();
    }

    void show() {
        view.setColor(Qt::transparent);
        view.setInitialProperties({{"hub", QVariant::fromValue(simulated.hub.get())}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        const QUrl screen = screenUrl("ContentView");
        view.setSource(screen);
        ASSERT_NE(view.rootObject(), nullptr);
        view.resize(QSizeF(root().implicitWidth(), root().implicitHeight()).toSize());
        root().setFocus(true); // as the program's windows do
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        settle();
    }

    [[nodiscard]] QQuickItem& root() const { return *view.rootObject(); }

    /// Until everything has been told of what has happened.
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    using Test = std::function<bool(const QQuickItem&)>;

    /// All items that are seen, from the outer to the inner, in the order in which they lie.
    static std::vector<QQuickItem*> items(QQuickItem& from, const Test& test) {
        std::vector<QQuickItem*> found;
        if (!from.isVisible()) {
            return found;
        }
        if (test(from)) {
            found.push_back(&from);
        }
        for (QQuickItem* child : from.childItems()) {
            for (QQuickItem* item : items(*child, test)) {
                found.push_back(item);
            }
        }
        return found;
    }

    /// The names of all drawings that are seen.
    [[nodiscard]] QStringList symbols() const {
        QStringList found;
        for (const QQuickItem* item : items(
                 root(), [](const QQuickItem& each) { return each.inherits("quillon::Symbol"); })) {
            found.append(item->property("name").toString());
        }
        return found;
    }

    /// The only item of which this is true; a test fails without it.
    [[nodiscard]] QQuickItem* item(const Test& test) const {
        const auto found = items(root(), test);
        EXPECT_EQ(found.size(), 1U);
        return found.empty() ? nullptr : found.front();
    }

    [[nodiscard]] std::size_t focusRings() const {
        return items(root(),
                     [](const QQuickItem& each) {
                         return each.property("target").isValid() &&
                                each.property("distance").isValid();
                     })
            .size();
    }

    /// Every text that is seen, from top to bottom as the screen was built.
    [[nodiscard]] QStringList texts(QQuickItem& from) const {
        QStringList found;
        for (const QQuickItem* item : items(from, [](const QQuickItem& each) {
                 return each.inherits("QQuickText") && !each.property("text").toString().isEmpty();
             })) {
            found.append(item->property("text").toString());
        }
        return found;
    }
    [[nodiscard]] QStringList texts() const { return texts(root()); }

    /// What assistive technology knows an item as; null when it is to know nothing of it.
    [[nodiscard]] static QAccessibleInterface* known(const QQuickItem* item) {
        auto* const found = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(item));
        const bool isThere = found != nullptr && found->parent() != nullptr &&
                             found->parent()->indexOfChild(found) >= 0;
        return isThere ? found : nullptr;
    }

    /// The items that assistive technology knows by this role and name.
    [[nodiscard]] std::vector<QQuickItem*> accessibles(QAccessible::Role role, const QString& name,
                                                       QQuickItem* from = nullptr) const {
        return items(from == nullptr ? root() : *from, [&](const QQuickItem& item) {
            const auto* const found = known(&item);
            return found != nullptr && found->role() == role &&
                   found->text(QAccessible::Name) == name;
        });
    }

    /// The only one; a test fails without it.
    [[nodiscard]] QQuickItem* accessible(QAccessible::Role role, const QString& name,
                                         QQuickItem* from = nullptr) const {
        const auto found = accessibles(role, name, from);
        EXPECT_EQ(found.size(), 1U) << name.toStdString();
        return found.empty() ? nullptr : found.front();
    }
    [[nodiscard]] QQuickItem* button(const QString& name, QQuickItem* from = nullptr) const {
        return accessible(QAccessible::Button, name, from);
    }
    [[nodiscard]] QQuickItem* card(const QString& name) const {
        return accessible(QAccessible::Grouping, name);
    }

    /// Things are where they belong only when they are drawn.
    void draw() { (void)view.grabWindow(); }

    /// As somebody does who looks for it.
    void bringIntoView(QQuickItem& item) {
        draw();
        for (QQuickItem* each = item.parentItem(); each != nullptr; each = each->parentItem()) {
            if (each->inherits("QQuickFlickable")) {
                QMetaObject::invokeMethod(each, "show",
                                          Q_ARG(QVariant, QVariant::fromValue(&item)));
                settle();
            }
        }
    }

    void click(QQuickItem* item) {
        ASSERT_NE(item, nullptr);
        bringIntoView(*item);
        draw();
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(&view, Qt::LeftButton, {}, centre.toPoint());
        settle();
    }

    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&view, which, modifiers);
        settle();
    }
};

} // namespace quillon
