#include "Resources/Symbols.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

// The resources of a static library are known only once they have been asked for, which no
// namespace may hold.
static void initSymbols() { Q_INIT_RESOURCE(quillon_symbols); }

namespace quillon {

namespace {

struct Symbol {
    std::string_view name;
    const char* drawing;
};

constexpr std::array symbols{
    Symbol{"1.circle.fill", "number-circle-one-fill"},
    Symbol{"2.circle.fill", "number-circle-two-fill"},
    Symbol{"3.circle.fill", "number-circle-three-fill"},
    Symbol{"arrow.down", "arrow-down"},
    Symbol{"arrow.down.circle", "arrow-circle-down"},
    Symbol{"arrow.down.circle.fill", "arrow-circle-down-fill"},
    Symbol{"arrow.left", "arrow-left"},
    Symbol{"arrow.right", "arrow-right"},
    Symbol{"arrow.up", "arrow-up"},
    Symbol{"arrow.up.arrow.down", "arrows-down-up"},
    Symbol{"arrow.up.circle.fill", "arrow-circle-up-fill"},
    Symbol{"bolt.fill", "lightning-fill"},
    Symbol{"chevron.down", "caret-down"},
    Symbol{"chevron.left", "caret-left"},
    Symbol{"computermouse.fill", "mouse-fill"},
    Symbol{"cup.and.saucer.fill", "coffee-fill"},
    Symbol{"exclamationmark.triangle.fill", "warning-fill"},
    Symbol{"externaldrive.fill", "hard-drive-fill"},
    Symbol{"hand.raised.fill", "hand-palm-fill"},
    Symbol{"plus", "plus"},
    Symbol{"power", "power"},
    Symbol{"slider.horizontal.3", "sliders-horizontal"},
    Symbol{"speaker.wave.2.fill", "speaker-high-fill"},
    Symbol{"square.and.pencil", "note-pencil"},
    Symbol{"star.fill", "star-fill"},
    Symbol{"wrench.and.screwdriver", "toolbox"},
    Symbol{"xmark", "x"},
};

} // namespace

QString symbolDrawing(std::string_view name) {
    const auto* const found = std::find_if(
        symbols.begin(), symbols.end(), [&](const Symbol& symbol) { return symbol.name == name; });
    if (found == symbols.end()) {
        return {};
    }
    initSymbols();
    return QStringLiteral(":/quillon/symbols/%1.svg").arg(QLatin1String(found->drawing));
}

} // namespace quillon
