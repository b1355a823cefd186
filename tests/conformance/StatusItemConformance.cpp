#include "Conformance.h"

namespace quillon {
namespace {

class StatusItemConformance : public Conformance {
  protected:
    void SetUp() override {
        item = platform().statusBar.statusItem(squareStatusItemLength);
        ASSERT_TRUE(item);
        ASSERT_TRUE(item->button());
        ButtonLook look = item->button()->look();
        look.image = platform().images.named("MenuBarLogo");
        look.imagePosition = ImagePosition::imageOnly;
        item->button()->setLook(look);
        listen(*item->button());
        ASSERT_TRUE(until([this] { return world->isStatusItemShown(); }));
    }

    void listen(Button& button) {
        button.setAction({"use:", [this](Sender* sender) {
                              senders.push_back(sender);
                              events.push_back(platform().application.currentEvent());
                          }});
    }

    std::shared_ptr<StatusItem> item;
    std::vector<Sender*> senders;
    std::vector<std::optional<EventType>> events; // current ones
};

TEST_F(StatusItemConformance, AClickPerformsTheActionOnce) {
    const auto button = item->button();
    world->clickStatusItem(MouseButton::left);
    ASSERT_TRUE(until([this] { return !senders.empty(); }));
    EXPECT_EQ(senders, std::vector<Sender*>{button.get()});
    EXPECT_EQ(events[0], EventType::leftMouseUp);
    EXPECT_EQ(platform().application.currentEvent(), std::nullopt) << "that was then";
}

TEST_F(StatusItemConformance, OnlyTheEventsOfItsMaskPerformTheAction) {
    const auto button = item->button();
    world->clickStatusItem(MouseButton::right); // at first it is for the left one
    world->clickStatusItem(MouseButton::left);
    ASSERT_TRUE(until([this] { return !events.empty(); }));
    EXPECT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0], EventType::leftMouseUp);
    button->setSendsActionOn(eventMask(EventType::leftMouseUp) |
                             eventMask(EventType::rightMouseUp));
    world->clickStatusItem(MouseButton::right);
    ASSERT_TRUE(until([this] { return events.size() == 2; }));
    EXPECT_EQ(events[1], EventType::rightMouseUp);
}

TEST_F(StatusItemConformance, ACustomViewTakesThePlaceOfTheButton) {
    auto view = std::make_shared<View>();
    auto within = std::make_shared<Button>();
    view->setFrame({0, 0, 40, 22});
    within->setFrame({0, 0, 40, 22});
    view->addSubview(within);
    listen(*within);
    item->setCustomView(view);
    EXPECT_EQ(item->customView(), view);
    EXPECT_EQ(item->button(), nullptr);
    ASSERT_TRUE(until([&] { return world->isStatusItemShown() && view->isInWindow(); }));
    world->clickStatusItem(MouseButton::left);
    ASSERT_TRUE(until([this] { return !senders.empty(); }));
    EXPECT_EQ(senders, std::vector<Sender*>{within.get()});

    item->setCustomView(nullptr);
    EXPECT_EQ(item->customView(), nullptr);
    const auto again = item->button(); // some systems make another one
    ASSERT_TRUE(again);
    listen(*again);
    ASSERT_TRUE(until([&] { return world->isStatusItemShown() && again->isInWindow(); }));
    EXPECT_FALSE(view->isInWindow());
    senders.clear();
    world->clickStatusItem(MouseButton::left);
    ASSERT_TRUE(until([this] { return !senders.empty(); }));
    EXPECT_EQ(senders, std::vector<Sender*>{again.get()});
}

TEST_F(StatusItemConformance, LettingGoOfItRemovesIt) {
    const auto button = item->button();
    item.reset();
    EXPECT_TRUE(until([this] { return !world->isStatusItemShown(); }));
    EXPECT_FALSE(button->isInWindow());
}

TEST_F(StatusItemConformance, ItKnowsWhereItIs) {
    ASSERT_TRUE(until([this] { return item->button()->isInWindow(); }));
    const auto place = item->button()->onScreen();
    ASSERT_TRUE(place);
    EXPECT_GT(place->width, 0);
    EXPECT_GT(place->height, 0);
    EXPECT_GT(platform().statusBar.thickness(), 0);
}

TEST_F(StatusItemConformance, TheItemOfAMenuThatTheUserTakesIsPerformed) {
    auto menu = std::make_shared<Menu>();
    int performed = 0;
    Sender* sender = nullptr;
    for (const char* title : {"First", "Second"}) {
        auto entry = std::make_shared<MenuItem>();
        entry->title = title;
        entry->action = {"take:", [&, wanted = std::string(title) == "First"](Sender* from) {
                             EXPECT_TRUE(wanted);
                             ++performed;
                             sender = from;
                         }};
        menu->items.push_back(entry);
    }
    world->willTakeFirstItem();
    platform().menus.popUp(menu, {0, 0}, *item->button());
    ASSERT_TRUE(until([&] { return performed > 0; }));
    EXPECT_EQ(performed, 1);
    EXPECT_EQ(sender, menu->items[0].get());
}

} // namespace
} // namespace quillon
