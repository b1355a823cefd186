#include "Replay/TraceSetup.h"

#include "Replay/DesktopStatements.h"
#include "Replay/TraceStatements.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillon {

namespace {
constexpr std::string_view suitePrefix = "defaults@";

bool contains(std::span<const std::string_view> words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}
} // namespace

TraceSetup::TraceSetup(Trace& trace) : trace_(trace) {
    trace_.shown.insert(actionKinds.begin(), actionKinds.end());
    trace_.shown.erase("pass");
    trace_.shown.erase("log");
}

std::span<const TraceSetup::Form> TraceSetup::forms() {
    static constexpr std::array all{
        Form{"defaults", &TraceSetup::readStandardDefaults, false},
        Form{"screen", &TraceSetup::readScreen, false},
        Form{"trust", &TraceSetup::readTrust, true},
        Form{"window", &TraceSetup::readWindow, false},
        Form{"front", &TraceSetup::readFront, true},
        Form{"device", &TraceSetup::readDevice, true},
        Form{"contacts", &TraceSetup::readContacts, true},
        Form{"tool", &TraceSetup::readTool, false},
        Form{"show", &TraceSetup::readShow, true},
    };
    return all;
}

const TraceSetup::Form* TraceSetup::formOf(std::string_view name) {
    for (const Form& form : forms()) {
        if (form.name == name) {
            return &form;
        }
    }
    return nullptr;
}

bool TraceSetup::knows(std::string_view name) {
    return formOf(name) != nullptr || name.starts_with(suitePrefix);
}

void TraceSetup::failUnknown(const StatementReader& reader, const TraceWord& name) {
    const auto timed = timedStatementNames();
    std::vector<std::string_view> all(timed.begin(), timed.end());
    for (const Form& form : forms()) {
        all.push_back(form.name);
    }
    reader.failUnknown(name, "statement", all);
}

void TraceSetup::read(StatementReader& reader, const TraceWord& name) {
    if (name.quoted) {
        failUnknown(reader, name);
    }
    if (name.text.starts_with(suitePrefix)) {
        const std::string suite = name.text.substr(suitePrefix.size());
        if (suite.empty()) {
            reader.fail(name, "the suite's name is missing after the @");
        }
        readDefaults(reader, suite);
        return;
    }
    const Form* form = formOf(name.text);
    if (form == nullptr && contains(timedStatementNames(), name.text)) {
        reader.fail(name, inQuotes(name.text) + " needs a time before it");
    }
    if (form == nullptr) {
        failUnknown(reader, name);
    }
    if (form->onceOnly && !given_.insert(form->name).second) {
        reader.fail(name, inQuotes(name.text) + " is given twice");
    }
    (this->*form->read)(reader);
}

void TraceSetup::readDefaults(StatementReader& reader, const std::string& suite) {
    const TraceWord key = reader.word("the key");
    if (!storedKeys_.emplace(suite, key.text).second) {
        reader.fail(key, "the object of " + inQuotes(key.text) + " is given twice");
    }
    trace_.defaults.push_back({suite, key.text, reader.json().object});
}

void TraceSetup::readScreen(StatementReader& reader) {
    trace_.screens.push_back(reader.frame(Extent::some));
    reader.finish();
}

void TraceSetup::readTrust(StatementReader& reader) {
    trace_.trusted = quillon::readTrust(reader).granted;
}

void TraceSetup::readWindow(StatementReader& reader) {
    trace_.windows.push_back(quillon::readWindow(reader));
}

void TraceSetup::readFront(StatementReader& reader) { trace_.front = quillon::readFront(reader); }

void TraceSetup::readDevice(StatementReader& reader) {
    trace_.device = quillon::readDevice(reader).device;
}

void TraceSetup::readContacts(StatementReader& reader) {
    trace_.contacts = quillon::readContacts(reader).count;
}

void TraceSetup::readTool(StatementReader& reader) {
    ToolSwitch toolSwitch{reader.tool(), true};
    if (const auto state = reader.nextWord()) {
        if (state->text != "off" || state->quoted) {
            reader.fail(*state, "only off may follow a tool's id at the start, not " +
                                    inQuotes(state->text));
        }
        toolSwitch.on = false;
    }
    reader.finish();
    trace_.tools.push_back(toolSwitch);
}

void TraceSetup::readShow(StatementReader& reader) {
    trace_.shown.clear();
    for (std::optional<TraceWord> next = reader.word("a kind of action"); next;
         next = reader.nextWord()) {
        if (next->quoted || !contains(actionKinds, next->text)) {
            reader.failUnknown(*next, "kind of action", actionKinds);
        }
        if (!trace_.shown.insert(next->text).second) {
            reader.fail(*next, inQuotes(next->text) + " is given twice");
        }
    }
}

} // namespace quillon
