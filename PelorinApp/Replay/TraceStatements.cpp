#include "Replay/TraceStatements.h"

#include "Replay/DesktopStatements.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillon {

namespace {

TraceAction readPointer(StatementReader& reader) {
    PointerMove move;
    move.to.x = reader.number("X");
    move.to.y = reader.number("Y");
    reader.finish();
    return move;
}

TraceAction readWheel(StatementReader& reader) {
    ScrollInput scroll;
    scroll.lineDeltaAxis1 = reader.number("DY");
    scroll.lineDeltaAxis2 = reader.numberOr(0, "DX");
    reader.finish();
    return scroll;
}

int phaseOption(const StatementReader& reader, const StatementOptions& options,
                std::string_view name) {
    const auto found = options.find(name);
    return found == options.end()
               ? 0
               : reader.toInteger(found->second, name, std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max());
}

TraceAction readScroll(StatementReader& reader) {
    static constexpr std::array<OptionForm, 5> forms{
        {{"fixed"}, {"continuous"}, {"lines", true}, {"phase", true}, {"momentum", true}}};
    ScrollInput scroll;
    const double py = reader.number("PY");
    const double px = reader.numberOr(0, "PX");
    const StatementOptions options = reader.options(forms);
    if (options.contains("fixed")) {
        scroll.fixedPointDeltaAxis1 = py;
        scroll.fixedPointDeltaAxis2 = px;
    } else {
        scroll.pointDeltaAxis1 = py;
        scroll.pointDeltaAxis2 = px;
    }
    scroll.isContinuous = options.contains("continuous");
    if (const auto lines = options.find("lines"); lines != options.end()) {
        const std::vector<TraceWord> deltas = listItems(lines->second);
        if (deltas.size() != 2) {
            reader.fail(lines->second, "lines takes two numbers: lines=DY,DX");
        }
        scroll.lineDeltaAxis1 = reader.toNumber(deltas[0], "DY");
        scroll.lineDeltaAxis2 = reader.toNumber(deltas[1], "DX");
    }
    scroll.phase = phaseOption(reader, options, "phase");
    scroll.momentumPhase = phaseOption(reader, options, "momentum");
    return scroll;
}

ButtonInput readButton(StatementReader& reader, bool pressed) {
    static constexpr std::array<MouseButton, 3> buttons{MouseButton::left, MouseButton::right,
                                                        MouseButton::middle};
    const int number = reader.integer("the button", 0, static_cast<int>(buttons.size()) - 1);
    reader.finish();
    return {buttons[static_cast<std::size_t>(number)], pressed};
}

TraceAction readPress(StatementReader& reader) { return readButton(reader, true); }

TraceAction readRelease(StatementReader& reader) { return readButton(reader, false); }

TraceAction readTapDisabled(StatementReader& reader) {
    return TapsDisabled{reader.either("the reason", {"timeout", "user"})};
}

TraceAction readTaps(StatementReader& reader) {
    return TapGrants{reader.either("the answer", {"refuse", "allow"})};
}

TraceAction readDrop(StatementReader& reader) {
    TapDrop drop{reader.tool()};
    reader.finish();
    return drop;
}

TraceAction readScript(StatementReader& reader) {
    static constexpr std::array<std::string_view, 1> results{"fail"};
    reader.choice("the result", results);
    return ScriptFailure{reader.text("the error description").text};
}

TraceAction readClose(StatementReader& reader) {
    const ApplicationEnd end{reader.processId()};
    reader.finish();
    return end;
}

TraceAction readSet(StatementReader& reader) {
    PropertyChange change;
    change.tool = reader.tool();
    const TraceWord property = reader.word("the property");
    change.property = property.text;
    change.propertyPosition = reader.line().position(property.offset);
    JsonArgument value = reader.json();
    change.value = std::move(value.object);
    change.valuePosition = reader.line().position(value.offset);
    return change;
}

TraceAction readToolSwitch(StatementReader& reader) {
    ToolSwitch toolSwitch;
    toolSwitch.tool = reader.tool();
    toolSwitch.on = reader.either("the state", {"off", "on"});
    return toolSwitch;
}

template <auto read>
TraceAction asAction(StatementReader& reader) {
    return read(reader);
}

struct TimedForm {
    std::string_view name;
    ReadAction read;
};

constexpr std::array timedForms{
    TimedForm{"pointer", readPointer},
    TimedForm{"wheel", readWheel},
    TimedForm{"scroll", readScroll},
    TimedForm{"press", readPress},
    TimedForm{"release", readRelease},
    TimedForm{"tapdisabled", readTapDisabled},
    TimedForm{"taps", readTaps},
    TimedForm{"drop", readDrop},
    TimedForm{"script", readScript},
    TimedForm{"trust", asAction<readTrust>},
    TimedForm{"contacts", asAction<readContacts>},
    TimedForm{"device", asAction<readDevice>},
    TimedForm{"front", asAction<readFront>},
    TimedForm{"window", asAction<readWindow>},
    TimedForm{"close", readClose},
    TimedForm{"set", readSet},
    TimedForm{"tool", readToolSwitch},
};

} // namespace

ReadAction timedStatement(std::string_view name) {
    for (const TimedForm& form : timedForms) {
        if (form.name == name) {
            return form.read;
        }
    }
    return nullptr;
}

std::span<const std::string_view> timedStatementNames() {
    static constexpr auto names = [] {
        std::array<std::string_view, timedForms.size() + 1> all{"end"};
        std::transform(timedForms.begin(), timedForms.end(), all.begin() + 1,
                       [](const TimedForm& form) { return form.name; });
        return all;
    }();
    return names;
}

} // namespace quillon
