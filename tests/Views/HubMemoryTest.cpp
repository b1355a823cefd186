#include "support/ScreenFixture.h"

#include <malloc.h>

namespace quillon {
namespace {

#ifndef QUILLON_SANITIZED // whose allocator does not say what is in use
struct HubMemory : ScreenFixture {
    void openEveryScreen() {
        for (const ToolCatalogItem& item : builtInCatalog()) {
            simulated.hub->customize(QString::fromStdString(item.id));
            settle();
            draw();
            simulated.hub->showTools();
            settle();
        }
    }
    [[nodiscard]] std::size_t inUse() const {
        view.engine()->collectGarbage();
        settle();
        return mallinfo2().uordblks;
    }
};

TEST_F(HubMemory, ScreensThatAreClosedLeaveNothingBehind) {
    for (int i = 0; i < 5; ++i) { // what is made only once
        openEveryScreen();
    }
    const std::size_t before = inUse();
    for (int i = 0; i < 50; ++i) {
        openEveryScreen();
    }
    // Not a byte for byte count: caches of texts and glyphs turn over.
    EXPECT_LT(inUse(), before + std::size_t{256 * 1024}) << before;
}
#endif

} // namespace
} // namespace quillon
