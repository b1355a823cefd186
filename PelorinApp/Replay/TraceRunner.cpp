#include "Replay/TraceRunner.h"

#include "Platform/Simulated/ActionNumber.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "Replay/ActionLog.h"
#include "Replay/ReplayTools.h"
#include "Replay/TraceEvents.h"

namespace quillon {

namespace {

class TraceRun {
  public:
    explicit TraceRun(const Trace& trace);

    std::vector<std::string> run();

    void operator()(const PointerMove& move) { desktop_.displays.pointer = move.to; }
    void operator()(const ScrollInput& scroll) {
        deliver(EventType::scrollWheel, scrollEvent(scroll));
    }
    void operator()(const ButtonInput& input) {
        deliver(eventType(input), FieldEvent(eventType(input), {}, input.button));
    }
    void operator()(const TapsDisabled& disabled) {
        desktop_.events.disableAll(eventType(disabled));
    }
    void operator()(const TapGrants& grants) {
        desktop_.events.setGranting(grants.allowed);
        desktop_.monitors.granting = grants.allowed;
    }
    void operator()(const TapDrop& drop) {
        desktop_.events.drop(drop.tool.id);
        desktop_.monitors.drop(drop.tool.id);
    }
    void operator()(const ScriptFailure& failure) {
        desktop_.scripting.failure = failure.description;
    }
    void operator()(const TrustAnswer& trust) { desktop_.accessibility.trusted = trust.granted; }
    void operator()(const PropertyChange& change) {
        tools_.setProperty(change.tool.id, change.property, change.value);
    }
    void operator()(const ToolSwitch& toolSwitch) {
        tools_.switchTool(toolSwitch.tool.id, toolSwitch.on);
    }

    void operator()(const RestingContacts& contacts) {
        desktop_.touchLibrary.touch(contacts.count);
    }
    void operator()(const FrontApplication& front) {
        desktop_.windows.setFront(front.process, front.name);
    }
    void operator()(const TraceWindow& window) {
        desktop_.windows.add(windowDescription(window), window.accessory
                                                            ? ActivationPolicy::accessory
                                                            : ActivationPolicy::regular);
    }
    void operator()(const ApplicationEnd& end) { desktop_.windows.close(end.process); }
    void operator()(const DeviceChange& change) { desktop_.audio.device = change.device; }

  private:
    void putUpDesktop();
    void store(const StoredDefault& stored);
    void deliver(EventType type, FieldEvent event);
    void log(std::string_view kind, std::string_view detail) {
        log_.add(desktop_.runLoop.time(), kind, detail);
    }

    const Trace& trace_;
    ActionLog log_;
    SimulatedDesktop desktop_;
    ReplayTools tools_;
};

TraceRun::TraceRun(const Trace& trace)
    : trace_(trace), log_(trace.shown),
      desktop_([this](std::string_view kind, const std::string& detail) { log(kind, detail); }),
      tools_(desktop_.platform, [this](float percent) { log("level", actionNumber(percent)); }) {}

void TraceRun::store(const StoredDefault& stored) {
    UserDefaults& defaults = stored.suite.empty() ? desktop_.userDefaults.standard()
                                                  : *desktop_.userDefaults.suite(stored.suite);
    defaults.set(stored.key, stored.object);
}

void TraceRun::putUpDesktop() {
    for (const StoredDefault& stored : trace_.defaults) {
        store(stored);
    }
    if (!trace_.screens.empty()) {
        const Rect& main = trace_.screens.front();
        desktop_.displays.frames = trace_.screens;
        desktop_.displays.pointer = {main.x + main.width / 2, main.y + main.height / 2};
    }
    desktop_.accessibility.trusted = trace_.trusted;
    for (const TraceWindow& window : trace_.windows) {
        (*this)(window);
    }
    if (trace_.front) {
        (*this)(*trace_.front);
    }
    (*this)(DeviceChange{trace_.device});
    (*this)(RestingContacts{trace_.contacts});
}

void TraceRun::deliver(EventType type, FieldEvent event) {
    switch (desktop_.events.deliver(type, event)) {
    case SimulatedEventServices::Fate::consume:
        log("consume", {});
        return;
    case SimulatedEventServices::Fate::rewrite:
        log("rewrite", deltaText(event));
        break;
    case SimulatedEventServices::Fate::pass:
        log("pass", {});
        break;
    }
    desktop_.monitors.deliver(type, event);
}

std::vector<std::string> TraceRun::run() {
    putUpDesktop();
    for (const ToolSwitch& toolSwitch : trace_.tools) {
        (*this)(toolSwitch);
    }
    desktop_.runLoop.drain();
    for (const TimedAction& timed : trace_.actions) {
        desktop_.runLoop.advanceTo(timed.time);
        std::visit(*this, timed.action);
        desktop_.runLoop.drain();
    }
    desktop_.runLoop.advanceTo(trace_.end);
    return log_.lines(); // a copy: what the tools do as they are taken down is no part of the run
}

} // namespace

std::vector<std::string> runTrace(const Trace& trace) { return TraceRun(trace).run(); }

} // namespace quillon
