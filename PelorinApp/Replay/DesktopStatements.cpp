#include "Replay/DesktopStatements.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <vector>

namespace quillon {

namespace {

constexpr int mostContacts = 255;

double fractionOption(const StatementReader& reader, const TraceWord& word, std::string_view what,
                      bool zeroAllowed) {
    const double value = reader.toNumber(word, what);
    if (value < 0 || value > 1 || (value == 0 && !zeroAllowed)) {
        reader.fail(word, std::string(what) + " is a fraction of the full volume, not " +
                              inQuotes(word.text));
    }
    return value;
}

OutputDevice deviceFrom(const StatementReader& reader, const StatementOptions& options,
                        const TraceWord& volume) {
    static constexpr std::array<std::string_view, 3> controls{"vmvc", "volm", "mute"};
    OutputDevice device;
    device.volume = fractionOption(reader, volume, "the volume", true);
    device.muted = options.contains("muted");
    device.readOnly = options.contains("readonly");
    if (const auto step = options.find("step"); step != options.end()) {
        device.step = fractionOption(reader, step->second, "the step", false);
    }
    const auto settable = options.find("settable");
    if (settable == options.end()) {
        return device;
    }
    device.settable.clear();
    if (settable->second.text.empty()) {
        return device;
    }
    for (const TraceWord& control : listItems(settable->second)) {
        if (std::find(controls.begin(), controls.end(), control.text) == controls.end()) {
            reader.failUnknown(control, "control", controls);
        }
        if (!device.settable.insert(control.text).second) {
            reader.fail(control, inQuotes(control.text) + " is given twice");
        }
    }
    return device;
}

} // namespace

TrustAnswer readTrust(StatementReader& reader) {
    return {reader.either("the answer", {"denied", "granted"})};
}

RestingContacts readContacts(StatementReader& reader) {
    const RestingContacts contacts{reader.integer("the number of contacts", 0, mostContacts)};
    reader.finish();
    return contacts;
}

DeviceChange readDevice(StatementReader& reader) {
    static constexpr std::array<OptionForm, 5> forms{
        {{"volume", true}, {"muted"}, {"settable", true}, {"step", true}, {"readonly"}}};
    StatementReader ahead = reader;
    const TraceWord first = reader.word("volume=V or none");
    if (first.text == "none" && !first.quoted) {
        reader.finish();
        return {};
    }
    const StatementOptions options = ahead.options(forms);
    const auto volume = options.find("volume");
    if (volume == options.end()) {
        reader.fail(first, "the device's volume=V is missing");
    }
    return {deviceFrom(ahead, options, volume->second)};
}

FrontApplication readFront(StatementReader& reader) {
    FrontApplication front;
    front.process = reader.processId();
    if (auto name = reader.nextWord()) {
        front.name = std::move(name->text);
    }
    reader.finish();
    return front;
}

TraceWindow readWindow(StatementReader& reader) {
    static constexpr std::array<OptionForm, 3> forms{
        {{"layer", true}, {"offscreen"}, {"accessory"}}};
    TraceWindow window;
    window.owner = reader.processId();
    window.ownerName = reader.word("the owner's name").text;
    window.frame = reader.frame(Extent::any);
    const StatementOptions options = reader.options(forms);
    if (const auto layer = options.find("layer"); layer != options.end()) {
        window.layer = reader.toInteger(layer->second, "the layer", std::numeric_limits<int>::min(),
                                        std::numeric_limits<int>::max());
    }
    window.onScreen = !options.contains("offscreen");
    window.accessory = options.contains("accessory");
    return window;
}

} // namespace quillon
