#include "Platform/Button.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace quillon {
namespace {

class CountingHost final : public ViewHost {
  public:
    void viewChanged() override { ++changes; }
    void toolTipChanged() override { ++toolTips; }
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return std::nullopt; }

    int changes = 0;
    int toolTips = 0;
};

class ButtonOfHost : public testing::Test {
  protected:
    ButtonOfHost() { button.setHost(&host); }

    int changesBy(const std::function<void()>& change) {
        const int before = host.changes;
        change();
        return host.changes - before;
    }

    CountingHost host;
    Button button;
};

TEST_F(ButtonOfHost, TellsItOfEveryChange) {
    EXPECT_EQ(changesBy([&] { button.setLook({.title = "x"}); }), 1);
    EXPECT_EQ(changesBy([&] { button.setAction({"press:", [](Sender*) {}}); }), 1);
    EXPECT_EQ(changesBy([&] { button.setSendsActionOn(eventMask(EventType::rightMouseUp)); }), 1);
    EXPECT_EQ(changesBy([&] { button.setEnabled(false); }), 1);
    EXPECT_EQ(changesBy([&] { button.setRefusesFirstResponder(true); }), 1);
}

TEST_F(ButtonOfHost, SaysNothingOfWhatIsAsBefore) {
    EXPECT_EQ(changesBy([&] { button.setSendsActionOn(eventMask(EventType::leftMouseUp)); }), 0);
    EXPECT_EQ(changesBy([&] { button.setEnabled(true); }), 0);
    EXPECT_EQ(changesBy([&] { button.setRefusesFirstResponder(false); }), 0);
}

TEST_F(ButtonOfHost, IsAskedForItsStateWithinTheCall) {
    class AskingHost final : public ViewHost {
      public:
        explicit AskingHost(const Button& asked) : asked_(asked) {}
        void viewChanged() override { wasEnabled = asked_.isEnabled(); }
        [[nodiscard]] std::optional<Rect> rootOnScreen() const override { return std::nullopt; }
        bool wasEnabled = true;

      private:
        const Button& asked_;
    } asking(button);
    button.setHost(&asking);
    button.setEnabled(false);
    EXPECT_FALSE(asking.wasEnabled);
}

} // namespace
} // namespace quillon
