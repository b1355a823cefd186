#include "Platform/Linux/windows/MessageWindow.h"

#include "Platform/Linux/windows/WidgetAlerts.h"
#include "WindowsFixture.h"

#include <QAbstractButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <set>

namespace quillon {
namespace {

bool hasKeyboard(MessageWindow& window) {
    return waitUntil([&] {
        return window.box().windowHandle() != nullptr &&
               QGuiApplication::focusWindow() == window.box().windowHandle();
    });
}

struct MessageDesktop : WindowsFixture {
    explicit MessageDesktop(const std::string& managerName = {})
        : WindowsFixture({}, managerName) {}

    [[nodiscard]] Message question() {
        return {AlertStyle::informational,
                "Version 2 is out",
                "You have version 1.",
                {{"Install", [this] { answers.emplace_back("Install"); }},
                 {"Later & never", [this] { answers.emplace_back("Later"); }}}};
    }

    std::vector<std::string> answers;
};

TEST(MessageWindow, SaysWhatItIsToldAndWaitsForNobody) {
    MessageDesktop desktop;
    MessageWindow window(desktop.question(), nullptr);
    EXPECT_TRUE(window.isOpen());
    const QMessageBox& box = window.box();
    EXPECT_EQ(box.windowTitle(), "Quillon");
    EXPECT_EQ(box.text(), "Version 2 is out");
    EXPECT_EQ(box.informativeText(), "You have version 1.");
    EXPECT_EQ(box.icon(), QMessageBox::Information);
    EXPECT_EQ(box.windowModality(), Qt::NonModal);
    ASSERT_EQ(box.buttons().size(), 2);
    std::set<QString> texts;
    for (const auto* button : box.buttons()) {
        texts.insert(button->text());
    }
    EXPECT_EQ(texts, (std::set<QString>{"Install", "Later && never"}));
}

TEST(MessageWindow, EnterIsTheFirstButton) {
    MessageDesktop desktop;
    MessageWindow window(desktop.question(), nullptr);
    ASSERT_TRUE(hasKeyboard(window));
    desktop.press(returnKey);
    EXPECT_TRUE(waitUntil([&] { return !window.isOpen(); }));
    EXPECT_EQ(desktop.answers, (std::vector<std::string>{"Install"}));
}

TEST(MessageWindow, EscapeIsTheLastButton) {
    MessageDesktop desktop;
    MessageWindow window(desktop.question(), nullptr);
    ASSERT_TRUE(hasKeyboard(window));
    desktop.press(escapeKey);
    EXPECT_TRUE(waitUntil([&] { return !window.isOpen(); }));
    EXPECT_EQ(desktop.answers, (std::vector<std::string>{"Later"}));
}

TEST(MessageWindow, ClosedByTheWindowManagerIsTheLastButton) {
    MessageDesktop desktop;
    MessageWindow window(desktop.question(), nullptr);
    window.box().close();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(desktop.answers, (std::vector<std::string>{"Later"}));
}

TEST(MessageWindow, AButtonMayDestroyIt) {
    MessageDesktop desktop;
    std::unique_ptr<MessageWindow> window;
    Message message = desktop.question();
    message.buttons[0].pressed = [&] {
        desktop.answers.emplace_back("gone");
        window.reset();
    };
    window = std::make_unique<MessageWindow>(std::move(message), nullptr);
    ASSERT_TRUE(hasKeyboard(*window));
    desktop.press(returnKey);
    EXPECT_TRUE(waitUntil([&] { return window == nullptr; }));
    EXPECT_EQ(desktop.answers, (std::vector<std::string>{"gone"}));
}

TEST(MessageWindow, TakenAwayItPressesNoButton) {
    MessageDesktop desktop;
    xcb_window_t id = 0;
    {
        MessageWindow window(desktop.question(), nullptr);
        id = static_cast<xcb_window_t>(window.box().winId());
        ASSERT_TRUE(waitUntil([&] { return desktop.isMapped(id); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !desktop.isMapped(id); }));
    EXPECT_TRUE(desktop.answers.empty());
}

TEST(WidgetAlerts, IsModalAndAnsweredByItsButton) {
    MessageDesktop desktop;
    WidgetAlerts alerts(nullptr);
    alerts.runModal({AlertStyle::warning, "It did not work", "There is no room.", {"OK"}});
    ASSERT_EQ(alerts.open().size(), 1U);
    MessageWindow& window = *alerts.open().front();
    EXPECT_EQ(window.box().icon(), QMessageBox::Warning);
    EXPECT_EQ(window.box().windowModality(), Qt::ApplicationModal);
    ASSERT_TRUE(hasKeyboard(window));
    desktop.press(returnKey);
    EXPECT_TRUE(waitUntil([&] { return alerts.open().empty(); }));
}

TEST(WidgetAlerts, WithoutButtonsThereIsOne) {
    MessageDesktop desktop;
    WidgetAlerts alerts(nullptr);
    alerts.runModal({AlertStyle::critical, "Hm", "", {}});
    const auto buttons = alerts.open().front()->box().buttons();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons.front()->text(), "OK");
}

TEST(WidgetAlerts, SeveralDoNotCoverEachOther) {
    MessageDesktop desktop;
    WidgetAlerts alerts(nullptr);
    std::set<std::pair<int, int>> places;
    for (int i = 0; i < 4; ++i) {
        alerts.runModal({AlertStyle::warning, "The same", "as before", {"OK"}});
        const QPoint place = alerts.open().back()->box().pos();
        places.insert({place.x(), place.y()});
    }
    EXPECT_EQ(places.size(), 4U);
}

struct AlertOnManager : testing::TestWithParam<const char*> {};

TEST_P(AlertOnManager, ComesToTheFrontWithTheKeyboard) {
    MessageDesktop desktop(GetParam());
    const xcb_window_t other = desktop.openOtherWindow();
    ASSERT_TRUE(waitUntil([&] { return desktop.focus() == other; }));
    desktop.press('x');
    WidgetAlerts alerts(nullptr);
    alerts.runModal({AlertStyle::warning, "It did not work", "There is no room.", {"OK"}});
    ASSERT_TRUE(hasKeyboard(*alerts.open().front()));
    EXPECT_TRUE(desktop.hasState(static_cast<xcb_window_t>(alerts.open().front()->box().winId()),
                                 "_NET_WM_STATE_ABOVE"));
    desktop.press(returnKey);
    EXPECT_TRUE(waitUntil([&] { return alerts.open().empty(); }));
}

INSTANTIATE_TEST_SUITE_P(Managers, AlertOnManager,
                         testing::Values("openbox", "icewm", "xfwm4", "metacity"),
                         [](const auto& manager) { return std::string(manager.param); });

} // namespace
} // namespace quillon
