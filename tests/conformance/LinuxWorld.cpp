#include "World.h"

#include "ObedientManager.h"

#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/session/LinuxSession.h"
#include "Platform/Linux/tray/FakeTray.h"
#include "Platform/Linux/updates/FeedServer.h"
#include "support/SoundServer.h"
#include "support/XServer.h"

#include <QApplication>
#include <QTcpServer>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr int screenWidth = 1280; // of the X server, in pixels
constexpr int screenHeight = 800;

/// The environment that a program is started in: a user without settings, and no message bus.
class LinuxEnvironment {
  public:
    explicit LinuxEnvironment(const Circumstances& circumstances) {
        for (const char* variable : {"XDG_DATA_HOME", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"}) {
            ::unsetenv(variable);
        }
        ::setenv("XDG_DATA_DIRS", "/nowhere", 1);
        // Without an address the toolkit would have a bus launched.
        ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
        nlohmann::json information(circumstances.information);
        information["identifier"] = "com.pelorin.PelorinApp";
        if (!circumstances.numberKey.empty()) {
            information[circumstances.numberKey] = 7;
        }
        const auto file = folder_.path() / "Info.json";
        writeFile(file, information.dump());
        ::setenv("QUILLON_INFO", file.c_str(), 1);
        fs::create_directory(files());
    }

    [[nodiscard]] fs::path files() const { return folder_.path() / "files"; }

  private:
    TemporaryFolder folder_;
};

class SilentDiagnostics final : public Diagnostics {
  public:
    void line(std::string_view /*text*/) override {}
};

class LinuxWorld final : public World {
  public:
    explicit LinuxWorld(const Circumstances& circumstances)
        : environment_(circumstances),
          server_(circumstances.isTrusted ? std::vector<std::string>{}
                                          : std::vector<std::string>{"-extension", "XTEST"}) {
        if (circumstances.hasSound) {
            sound_.start();
        }
        QApplication::setQuitOnLastWindowClosed(false);
    }

    [[nodiscard]] Platform& platform() override { return platform_.services(); }

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) override {
        constexpr std::chrono::seconds limit{8};
        QTimer wakeUp;
        wakeUp.start(2);
        const auto deadline = std::chrono::steady_clock::now() + limit;
        for (tend(); !condition(); tend()) {
            if (std::chrono::steady_clock::now() > deadline) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    [[nodiscard]] std::optional<std::string> refusal(Act act) const override {
        return act == Act::tapRightPresses
                   ? std::optional("of the buttons only the left one and the wheel are tapped")
                   : std::nullopt;
    }

    void movePointer(Point place) override {
        client_.movePointer(static_cast<int>(place.x) + mainX_,
                            screenHeight - static_cast<int>(place.y));
    }
    void press(MouseButton button) override {
        client_.fakeButton(XCB_BUTTON_PRESS, numberOf(button));
    }
    void release(MouseButton button) override {
        client_.fakeButton(XCB_BUTTON_RELEASE, numberOf(button));
    }
    void scroll(int lines) override { client_.pressWheel(lines > 0 ? wheelUp : wheelDown); }

    [[nodiscard]] bool awaitTaps(std::uint64_t mask) override {
        return runUntil([&] {
            const bool scrolls = (mask & eventMask(EventType::scrollWheel)) != 0;
            const bool presses = (mask & eventMask(EventType::leftMouseDown)) != 0;
            return !(scrolls && client_.canGrabWheel()) && !(presses && client_.canGrabLeft());
        });
    }

    [[nodiscard]] std::vector<std::string> received() override {
        std::vector<std::string> all;
        for (const std::string& button : client_.buttons()) {
            const auto blank = button.find(' ');
            const int number = std::stoi(button.substr(blank));
            if (number != wheelUp && number != wheelDown) {
                all.push_back(button.substr(0, blank + 1) + std::to_string(buttonOf(number)));
            } else if (button.starts_with("press")) {
                all.emplace_back(number == wheelUp ? "scroll 1" : "scroll -1");
            }
        }
        return all;
    }

    [[nodiscard]] Rect mainScreen() override {
        return {0, 0, static_cast<double>(screenWidth - mainX_), screenHeight};
    }
    void splitScreen() override {
        for (const char* command : {"xrandr --setmonitor LEFT 640/100x800/200+0+0 screen",
                                    "xrandr --setmonitor '*RIGHT' 640/100x800/200+640+0 none"}) {
            if (std::system(command) != 0) {
                throw std::runtime_error(command);
            }
        }
        mainX_ = screenWidth / 2;
        // Monitors that are declared by hand are announced with the next change of the desktop.
        const char* resources = "Xft.dpi:\t96\n";
        xcb_change_property(client_.connection().get(), XCB_PROP_MODE_REPLACE,
                            client_.connection().root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(std::strlen(resources)), resources);
        client_.connection().sync();
    }

    void openWindow(ProcessId process, const std::string& name) override {
        manager().open(static_cast<std::uint32_t>(process), name);
    }
    void endProgram(ProcessId process) override {
        manager().end(static_cast<std::uint32_t>(process));
    }

    [[nodiscard]] double outputVolume() override {
        return static_cast<double>(SoundServer::volumes().at(0)) / wholeVolume;
    }
    void setOutputVolume(double volume) override {
        SoundServer::pactl("set-sink-volume speakers " +
                           std::to_string(static_cast<int>(volume * wholeVolume)));
    }
    [[nodiscard]] bool isOutputMuted() override { return SoundServer::isMuted(); }
    void setOutputMuted(bool muted) override {
        SoundServer::pactl(muted ? "set-sink-mute speakers 1" : "set-sink-mute speakers 0");
    }

    [[nodiscard]] UserDefaultsStores& restartedDefaults() override {
        if (!session_.userDefaults.flush()) {
            throw std::runtime_error("settings are not on the disk");
        }
        return restarted_.emplace(configHome(), session_.bundle.identifier(), session_.runLoop,
                                  diagnostics_);
    }

    [[nodiscard]] std::string serve(const Serving& serving) override {
        servers_.push_back(
            std::make_unique<FeedServer>([serving](const std::string&, QTcpSocket& client) {
                if (!serving.isSilent) {
                    client.write(httpAnswer(
                        std::to_string(serving.status) + " Said", serving.body,
                        serving.location.empty() ? "" : "Location: " + serving.location + "\r\n"));
                }
            }));
        return servers_.back()->address("/file");
    }
    [[nodiscard]] std::string deadAddress() override {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return "http://127.0.0.1:" + std::to_string(server.serverPort()) + "/"; // once it is gone
    }

    [[nodiscard]] fs::path folder() override { return environment_.files(); }
    void putFile(const fs::path& path, const std::string& content) override {
        writeFile(path, content);
    }
    void putLink(const fs::path& path, const fs::path& target) override {
        fs::create_symlink(target, path);
    }
    [[nodiscard]] std::optional<std::string> fileContent(const fs::path& path) override {
        return fs::is_regular_file(fs::symlink_status(path)) ? std::optional(readFile(path))
                                                             : std::nullopt;
    }

    [[nodiscard]] std::string brokenScript() override { return "tell nobody to"; }
    [[nodiscard]] int desktopsMovedRight() override { return manager().desktop(); }
    void failScripts() override { manager().disobey(); }

    void clickStatusItem(MouseButton button) override {
        constexpr int x = 1211; // the middle of the place that the tray gives
        constexpr int y = 14;
        client_.movePointer(x, y);
        press(button);
        release(button);
    }
    [[nodiscard]] bool isStatusItemShown() override {
        return tray_.hasItem() && tray_.exists(tray_.item());
    }

    void willTakeFirstItem() override { takesFirstItem_ = true; }

  private:
    static constexpr std::uint8_t wheelUp = 4;
    static constexpr std::uint8_t wheelDown = 5;
    static constexpr int wholeVolume = 65536;

    static std::uint8_t numberOf(MouseButton button) {
        constexpr std::array<std::uint8_t, 3> numbers{1, 3, 2};
        return numbers.at(static_cast<std::size_t>(button));
    }
    static std::uint32_t buttonOf(int number) {
        const MouseButton button = number == 1   ? MouseButton::left
                                   : number == 3 ? MouseButton::right
                                                 : MouseButton::middle;
        return static_cast<std::uint32_t>(button);
    }

    /// The other programs and the user do what is theirs.
    void tend() {
        if (manager_) {
            manager_->obey();
        }
        // A menu is open when it has the pointer.
        if (takesFirstItem_ && !client_.canGrabPointer()) {
            takesFirstItem_ = false;
            constexpr xcb_keysym_t down = 0xFF54;
            constexpr xcb_keysym_t enter = 0xFF0D;
            pressKey(down);
            pressKey(enter);
        }
    }

    void pressKey(xcb_keysym_t key) const {
        xcb_connection_t* const x = client_.connection().get();
        xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(x);
        const XcbOwned<xcb_keycode_t> code(xcb_key_symbols_get_keycode(symbols, key));
        xcb_key_symbols_free(symbols);
        for (const std::uint8_t type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
            xcb_test_fake_input(x, type, *code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        }
        client_.connection().sync();
    }

    ObedientManager& manager() {
        if (!manager_) {
            manager_.emplace();
        }
        return *manager_;
    }

    int mainX_ = 0; // where the main screen begins, in pixels
    bool takesFirstItem_ = false;
    SoundServer sound_; // first: it changes the environment
    LinuxEnvironment environment_;
    XServer server_;
    XClient client_;
    FakeTray tray_;
    std::optional<ObedientManager> manager_;
    int argc_ = 1;
    std::string name_ = "conformance";
    std::array<char*, 2> argv_{name_.data(), nullptr};
    QApplication application_{argc_, argv_.data()};
    std::vector<std::unique_ptr<FeedServer>> servers_;
    SilentDiagnostics diagnostics_;
    LinuxSession session_{diagnostics_};
    std::optional<FileUserDefaultsStores> restarted_;
    LinuxPlatform platform_{session_, [](std::string_view) { return QuickScreen{}; }};
};

} // namespace

std::unique_ptr<World> makeWorld(const Circumstances& circumstances) {
    return std::make_unique<LinuxWorld>(circumstances);
}

} // namespace quillon
