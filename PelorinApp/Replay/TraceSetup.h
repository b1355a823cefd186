#pragma once

#include "Replay/StatementReader.h"

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {

/// Reads the statements without a time, which describe the desktop and the tools at the start.
class TraceSetup {
  public:
    explicit TraceSetup(Trace& trace);

    [[nodiscard]] static bool knows(std::string_view name);

    /// Reads one statement, whose first word has been read, into the trace.
    void read(StatementReader& reader, const TraceWord& name);

  private:
    struct Form {
        std::string_view name;
        void (TraceSetup::*read)(StatementReader&);
        bool onceOnly;
    };
    static std::span<const Form> forms();
    static const Form* formOf(std::string_view name);
    [[noreturn]] static void failUnknown(const StatementReader& reader, const TraceWord& name);

    void readStandardDefaults(StatementReader& reader) { readDefaults(reader, {}); }
    void readDefaults(StatementReader& reader, const std::string& suite);
    void readScreen(StatementReader& reader);
    void readTrust(StatementReader& reader);
    void readWindow(StatementReader& reader);
    void readFront(StatementReader& reader);
    void readDevice(StatementReader& reader);
    void readContacts(StatementReader& reader);
    void readTool(StatementReader& reader);
    void readShow(StatementReader& reader);

    Trace& trace_;
    std::set<std::string_view> given_;
    std::set<std::pair<std::string, std::string>> storedKeys_; // suite and key
};

} // namespace quillon
