#include "Platform/Simulated/SimulatedDesktop.h"

namespace quillon {

class SimulatedScripting::SimulatedScript final : public Script {
  public:
    SimulatedScript(SimulatedScripting& service, std::string_view source)
        : service_(service), source_(source) {}

    std::optional<std::string> execute() override {
        service_.sink_("script", source_);
        return service_.failure;
    }

  private:
    SimulatedScripting& service_;
    std::string source_;
};

std::unique_ptr<Script> SimulatedScripting::compile(std::string_view source) {
    if (!compiles) {
        return nullptr;
    }
    return std::make_unique<SimulatedScript>(*this, source);
}

std::optional<std::string> SimulatedBundle::infoString(std::string_view key) const {
    const auto found = info.find(key);
    return found == info.end() ? std::nullopt : std::optional(found->second);
}

SimulatedDesktop::SimulatedDesktop(const ActionSink& sink)
    : events(displays, sink), scripting(sink), diagnostics(sink), monitors(sink), windows(sink),
      audio(sink), application(sink), statusBar(sink), popovers(sink), menus(sink), updaters(sink),
      workspace(sink), platform{.runLoop = runLoop,
                                .events = events,
                                .displays = displays,
                                .accessibility = accessibility,
                                .scripting = scripting,
                                .userDefaults = userDefaults,
                                .bundle = bundle,
                                .diagnostics = diagnostics,
                                .monitors = monitors,
                                .applications = windows,
                                .windowServer = windows,
                                .accessibilityElements = windows,
                                .libraries = touchLibrary,
                                .audio = audio,
                                .urls = urls,
                                .files = files,
                                .application = application,
                                .statusBar = statusBar,
                                .images = images,
                                .animator = animator,
                                .popovers = popovers,
                                .menus = menus,
                                .alerts = alerts,
                                .loginItem = loginItem,
                                .updaters = updaters,
                                .workspace = workspace} {}

} // namespace quillon
