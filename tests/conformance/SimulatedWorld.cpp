#include "World.h"

#include "Platform/Simulated/SimulatedDesktop.h"

#include <charconv>
#include <utility>

namespace quillon {
namespace {

namespace fs = std::filesystem;

/// What is done here other programs and the user do to the simulated desktop.
class SimulatedWorld final : public World {
  public:
    explicit SimulatedWorld(const Circumstances& circumstances) {
        desktop_.accessibility.trusted = circumstances.isTrusted;
        desktop_.events.setGranting(circumstances.isTrusted);
        if (!circumstances.hasSound) {
            desktop_.audio.device.reset();
        }
        for (const auto& [key, text] : circumstances.information) {
            desktop_.bundle.info.emplace(key, text);
        }
        desktop_.files.put(folder(), {SimulatedFileManager::Kind::folder});
    }

    [[nodiscard]] Platform& platform() override { return desktop_.platform; }

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) override {
        constexpr double step = 0.001;  // seconds
        constexpr double limit = 120.0; // of virtual time
        for (double passed = 0; passed < limit; passed += step) {
            desktop_.runLoop.drain();
            if (condition()) {
                return true;
            }
            desktop_.runLoop.advance(step);
        }
        return false;
    }

    [[nodiscard]] std::optional<std::string> refusal(Act act) const override {
        return act == Act::restart ? std::optional("its settings are gone with it") : std::nullopt;
    }

    void movePointer(Point place) override { desktop_.displays.pointer = place; }
    void press(MouseButton button) override {
        deliverButton(button, EventType::leftMouseDown, EventType::rightMouseDown,
                      EventType::otherMouseDown, "press ");
    }
    void release(MouseButton button) override {
        deliverButton(button, EventType::leftMouseUp, EventType::rightMouseUp,
                      EventType::otherMouseUp, "release ");
    }
    void scroll(int lines) override {
        FieldEvent event(EventType::scrollWheel, topLeftPointer(), MouseButton::left);
        event.setDoubleValueField(EventField::scrollLineDeltaAxis1, lines);
        if (deliver(EventType::scrollWheel, event)) {
            received_.push_back("scroll " + std::to_string(event.integerValueField(
                                                EventField::scrollLineDeltaAxis1)));
        }
    }
    [[nodiscard]] std::vector<std::string> received() override { return received_; }

    [[nodiscard]] Rect mainScreen() override { return desktop_.displays.frames[0]; }
    void splitScreen() override {
        const Rect whole = mainScreen();
        desktop_.displays.frames = {{0, 0, whole.width / 2, whole.height},
                                    {-whole.width / 2, 0, whole.width / 2, whole.height}};
    }

    void openWindow(ProcessId process, const std::string& name) override {
        desktop_.windows.addInFront({.ownerProcess = process,
                                     .ownerName = name,
                                     .layer = 0,
                                     .bounds = Rect{100, 50, 300, 200},
                                     .isOnScreen = true});
    }
    void endProgram(ProcessId process) override { desktop_.windows.close(process); }

    [[nodiscard]] double outputVolume() override { return desktop_.audio.device->volume; }
    void setOutputVolume(double volume) override { desktop_.audio.device->volume = volume; }
    [[nodiscard]] bool isOutputMuted() override { return desktop_.audio.device->muted; }
    void setOutputMuted(bool muted) override { desktop_.audio.device->muted = muted; }

    [[nodiscard]] UserDefaultsStores& restartedDefaults() override { return desktop_.userDefaults; }

    [[nodiscard]] std::string serve(const Serving& serving) override {
        const std::string url = "http://server.example/" + std::to_string(served_++);
        if (!serving.location.empty()) {
            desktop_.urls.redirect(url, serving.location);
        } else {
            constexpr double forever = 1e9; // seconds
            desktop_.urls.answer(url, serving.status, serving.body, serving.isSilent ? forever : 0);
        }
        return url;
    }
    [[nodiscard]] std::string deadAddress() override { return "http://nobody.example/"; }

    [[nodiscard]] fs::path folder() override { return "/home/user/files"; }
    void putFile(const fs::path& path, const std::string& content) override {
        desktop_.files.put(path, {SimulatedFileManager::Kind::file, content});
    }
    void putLink(const fs::path& path, const fs::path& /*target*/) override {
        desktop_.files.put(path, {SimulatedFileManager::Kind::link});
    }
    [[nodiscard]] std::optional<std::string> fileContent(const fs::path& path) override {
        return desktop_.files.content(path);
    }

    [[nodiscard]] std::string brokenScript() override {
        desktop_.scripting.compiles = false;
        return "tell nobody to";
    }
    [[nodiscard]] int desktopsMovedRight() override { return movedRight_; }
    void failScripts() override { desktop_.scripting.failure = "the desktop is stuck"; }

    void clickStatusItem(MouseButton button) override {
        const auto item = desktop_.statusBar.item.lock();
        const bool isLeft = button == MouseButton::left;
        View* shown = item->button().get();
        if (const auto custom = item->customView()) {
            shown = custom->subviews().front().get();
        }
        for (const auto event : {isLeft ? EventType::leftMouseDown : EventType::rightMouseDown,
                                 isLeft ? EventType::leftMouseUp : EventType::rightMouseUp}) {
            desktop_.application.event = event;
            dynamic_cast<Button&>(*shown).receive(event);
            desktop_.application.event.reset();
        }
    }
    [[nodiscard]] bool isStatusItemShown() override { return !desktop_.statusBar.item.expired(); }

    void willTakeFirstItem() override { takesFirstItem_ = true; }

  private:
    void reported(std::string_view kind, const std::string& detail) {
        if (kind == "click") {
            const bool isDown = detail.find(" down ") != std::string::npos;
            received_.push_back((isDown ? "press " : "release ") +
                                detail.substr(0, detail.find(' ')));
        } else if (kind == "script" && !desktop_.scripting.failure &&
                   detail.find("key code 124") != std::string::npos) {
            ++movedRight_;
        } else if (kind == "menu" && std::exchange(takesFirstItem_, false)) {
            desktop_.runLoop.async(
                [item = desktop_.menus.shown->items.front()] { item->action.perform(item.get()); });
        }
    }

    void deliverButton(MouseButton button, EventType left, EventType right, EventType other,
                       const char* verb) {
        const EventType type = button == MouseButton::left    ? left
                               : button == MouseButton::right ? right
                                                              : other;
        FieldEvent event(type, topLeftPointer(), button);
        if (deliver(type, event)) {
            received_.push_back(verb + std::to_string(static_cast<std::uint32_t>(button)));
        }
    }

    /// Through the taps, and then to the monitors and the programs. False when it was consumed.
    bool deliver(EventType type, FieldEvent& event) {
        if (desktop_.events.deliver(type, event) == SimulatedEventServices::Fate::consume) {
            return false;
        }
        desktop_.monitors.deliver(type, event);
        return true;
    }

    [[nodiscard]] Point topLeftPointer() const {
        return fromTopLeft(desktop_.displays.pointer, desktop_.displays.frames);
    }

    std::vector<std::string> received_;
    int movedRight_ = 0;
    int served_ = 0;
    bool takesFirstItem_ = false;
    SimulatedDesktop desktop_{
        [this](std::string_view kind, const std::string& detail) { reported(kind, detail); }};
};

} // namespace

std::unique_ptr<World> makeWorld(const Circumstances& circumstances) {
    return std::make_unique<SimulatedWorld>(circumstances);
}

} // namespace quillon
