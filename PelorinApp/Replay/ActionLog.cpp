#include "Replay/ActionLog.h"

#include "Replay/TraceTime.h"

#include <algorithm>

namespace quillon {

void ActionLog::add(VirtualRunLoop::Microseconds time, std::string_view kind,
                    std::string_view detail) {
    if (!shown_.contains(kind)) {
        return;
    }
    std::string line = milliseconds(time);
    line += ' ';
    line += kind;
    if (!detail.empty()) {
        line += ' ';
        line += detail;
    }
    // An action is one line whatever its words hold.
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    lines_.push_back(std::move(line));
}

} // namespace quillon
