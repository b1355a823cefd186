#include "support/ToolScreenFixture.h"

#include <QFontInfo>

namespace quillon {
namespace {

const QStringList edges{"Active edges", "Top edge",
                        "Bottom edge",  "Left edge",
                        "Right edge",   "Click a highlighted border to enable that edge."};
const QStringList edgeSymbols{"arrow.up", "arrow.down", "arrow.left", "arrow.right"};

struct ScreenCase {
    std::string_view tool;
    QString name;
    QString subtitle;
    QString icon;
    QStringList texts;   // beneath the head, in their order
    QStringList symbols; // likewise
};

const std::array<ScreenCase, 6> cases{{
    {windowTool, "Window+", "Scroll near screen edges to cycle windows", "square.and.pencil",
     edges + QStringList{"Edge sensitivity", "50 px", "10", "100", "Scroll sensitivity", "4 steps",
                         "1", "10", "Higher values require more scroll before switching windows.",
                         "Next", "Previous", "App exclusions",
                         "Edge switching is ignored in these apps.", "App name (e.g. Slack)", "Add",
                         "0 excluded", "0 detected"},
     edgeSymbols + QStringList{"arrow.up", "arrow.right", "arrow.down", "arrow.left"}},
    {mediaTool, "Media+", "Play/pause and track changes from edge clicks", "slider.horizontal.3",
     edges + QStringList{"Sensitivity & triggers", "Edge sensitivity", "30 px", "10", "100",
                         "Middle mouse button", "Left mouse button",
                         "Which buttons count as a middle-click at the edge.", "Play/Pause", "Next",
                         "Previous"},
     edgeSymbols + QStringList{"1.circle.fill", "2.circle.fill", "3.circle.fill"}},
    {trackpadTool, "Trackpad+", "3-finger press maps to middle click", "bolt.fill",
     QStringList{"Three-finger press", "Middle click",
                 "Works globally once accessibility is granted. No extra toggles—enable the tool "
                 "from the hub to turn it on."},
     QStringList{"hand.raised.fill", "arrow.right", "computermouse.fill"}},
    {desktopTool, "Desktop+", "Scroll near edges to switch desktops", "star.fill",
     edges + QStringList{"Edge sensitivity", "40 px", "10", "100", "Scroll sensitivity", "4 steps",
                         "1", "10", "Higher values require more scroll before switching desktops.",
                         "Previous desktop", "Next desktop"},
     edgeSymbols + QStringList{"arrow.up.circle.fill", "arrow.down.circle.fill"}},
    {volumeTool, "Volume+", "Edge scrolling controls volume", "speaker.wave.2.fill",
     edges + QStringList{"Edge sensitivity", "40 px", "10", "100", "Volume up", "Volume down",
                         "Step size", "1 per scroll", "1", "10",
                         "Scales each edge-scroll adjustment: 1 is smallest, 10 is strongest. Uses "
                         "system volume when possible; otherwise volume keys."},
     edgeSymbols + QStringList{"arrow.up.circle.fill", "arrow.down.circle.fill"}},
    {scrollTool,
     "Scroll+",
     "Flip scroll direction for trackpad and mouse independently",
     "arrow.up.arrow.down",
     QStringList{"Scroll direction", "Reverse trackpad",
                 "Inverts natural scrolling for trackpad gestures only.", "Reverse mouse wheel",
                 "Inverts scroll direction for external mice."},
     {}},
}};

struct ToolScreenTexts : ToolScreenFixture {
    [[nodiscard]] std::vector<QQuickItem*> symbolItems() const {
        return items(root(), [](const QQuickItem& item) {
            return item.inherits("quillon::Symbol") && item.property("name").toString() != "";
        });
    }
};

TEST_F(ToolScreenTexts, EveryTextAndSymbolInItsOrder) {
    for (const ScreenCase& screen : cases) {
        SCOPED_TRACE(screen.tool);
        open(screen.tool);
        const QStringList head{screen.name, screen.name, screen.subtitle};
        EXPECT_EQ(texts().join('\n').toStdString(), (head + screen.texts).join('\n').toStdString());
        QStringList symbols;
        for (const QQuickItem* symbol : symbolItems()) {
            symbols.append(symbol->property("name").toString());
        }
        EXPECT_EQ(symbols, (QStringList{"chevron.left", screen.icon} + screen.symbols));
    }
}

TEST_F(ToolScreenTexts, TheOrderIsAlsoTheOneOnTheScreen) {
    for (const std::string_view tool : allTools) {
        open(tool);
        double below = 0;
        const auto isCard = [](const QQuickItem& item) {
            return item.inherits("QQuickRectangle") && item.property("title").isValid();
        };
        const auto cards = items(root(), isCard);
        EXPECT_FALSE(cards.empty());
        for (const QQuickItem* card : cards) {
            EXPECT_GE(place(card).top(), below) << tool;
            below = place(card).bottom();
        }
    }
}

TEST_F(ToolScreenTexts, EveryTextIsReadByAssistiveTechnologyOnce) {
    for (const ScreenCase& screen : cases) {
        open(screen.tool);
        for (const QString& text : screen.texts) {
            QStringList names;
            for (QQuickItem* item : items(root(), [](const QQuickItem&) { return true; })) {
                const auto* const found = known(item);
                if (found != nullptr && found->text(QAccessible::Name) == text) {
                    names.append(text);
                }
            }
            if (!accessibles(QAccessible::Grouping, text).empty()) {
                continue; // a card is called as its title
            }
            bool isEnd = false; // of a slider, which says them itself
            text.toInt(&isEnd);
            EXPECT_EQ(names.size(), isEnd ? 0 : 1) << screen.tool << ' ' << text.toStdString();
        }
    }
}

TEST_F(ToolScreenTexts, BackRow) {
    for (const ScreenCase& screen : cases) {
        open(screen.tool);
        QQuickItem* back = button("Back");
        ASSERT_NE(back, nullptr);
        EXPECT_EQ(known(back)->text(QAccessible::Description), "Return to hub");
        const auto isTitle = [&](const QQuickItem& item) {
            return item.inherits("QQuickText") && item.property("text").toString() == screen.name;
        };
        const auto font = items(root(), isTitle).front()->property("font").value<QFont>();
        EXPECT_EQ(QFontInfo(font).family(), "Koulen");
        EXPECT_EQ(font.pixelSize(), 13);
        EXPECT_EQ(simulated.store->selectedToolId(), screen.tool);
        click(back);
        EXPECT_EQ(simulated.store->selectedToolId(), "settings");
    }
}

TEST_F(ToolScreenTexts, BackByAssistiveTechnology) {
    open(scrollTool);
    known(button("Back"))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(simulated.store->selectedToolId(), "settings");
}

} // namespace
} // namespace quillon
