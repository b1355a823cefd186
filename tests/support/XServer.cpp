#include "support/XServer.h"

#include "Platform/Linux/x11/LeftPressGrab.h"
#include "Platform/Linux/x11/PanicChord.h"
#include "Platform/Linux/x11/WheelGrabs.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xtest.h>

namespace quillon {

namespace {

constexpr std::chrono::seconds limit{8};

/// Servers that look for a free number at the same time may end up with the same one: one of them
/// has its socket in the file system, the other in the abstract name space. So one does at a time,
/// whichever test starts it.
class DisplayNumbers {
  public:
    DisplayNumbers()
        : lock_(open((std::filesystem::temp_directory_path() / "quillon-test-displays").c_str(),
                     O_CREAT | O_RDWR | O_CLOEXEC, 0600)) {
        flock(lock_, LOCK_EX);
    }
    DisplayNumbers(const DisplayNumbers&) = delete;
    DisplayNumbers& operator=(const DisplayNumbers&) = delete;
    ~DisplayNumbers() { close(lock_); }

  private:
    int lock_;
};

/// Reads the display number that the server writes once it is ready.
std::string readDisplay(int descriptor) {
    std::string number;
    char c = 0;
    while (read(descriptor, &c, 1) == 1 && c != '\n') {
        number += c;
    }
    return number;
}

/// The device that is the pointer, for a client that speaks the input extension.
xcb_input_device_id_t pointer(const X11Connection& connection) {
    const XcbOwned<xcb_input_xi_get_client_pointer_reply_t> reply(
        xcb_input_xi_get_client_pointer_reply(
            connection.get(), xcb_input_xi_get_client_pointer(connection.get(), XCB_NONE),
            nullptr));
    return reply ? reply->deviceid : xcb_input_device_id_t{0};
}

} // namespace

XServer::XServer(const std::vector<std::string>& extraArguments) {
    std::array<int, 2> ready{};
    if (pipe(ready.data()) != 0) {
        throw std::runtime_error("pipe");
    }
    const DisplayNumbers numbers;
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        close(ready[0]);
        const std::string descriptor = std::to_string(ready[1]);
        std::vector<std::string> words{"Xvfb",        "-displayfd", descriptor, "-screen", "0",
                                       "1280x800x24", "-nolisten",  "tcp",      "-noreset"};
        words.insert(words.end(), extraArguments.begin(), extraArguments.end());
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    close(ready[1]);
    const std::string number = readDisplay(ready[0]);
    close(ready[0]);
    if (number.empty()) {
        throw std::runtime_error("Xvfb did not start");
    }
    setenv("DISPLAY", (":" + number).c_str(), 1);
}

XServer::~XServer() { kill(); }

void XServer::kill() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = -1;
        unsetenv("DISPLAY");
    }
}

XClient::XClient() : connection_(X11Connection::open()) {
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS |
                                                     XCB_EVENT_MASK_BUTTON_RELEASE};
    const xcb_window_t window = xcb_generate_id(connection_->get());
    xcb_create_window(connection_->get(), XCB_COPY_FROM_PARENT, window, connection_->root(), 0, 0,
                      1280, 800, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(connection_->get(), window);
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_->get(), xcb_input_xi_query_version(connection_->get(), 2, 3), nullptr));
    connection_->sync();
}

void XClient::movePointer(int x, int y) const {
    xcb_test_fake_input(connection_->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                        connection_->root(), static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    connection_->sync();
}

void XClient::pressWheel(std::uint8_t button) const {
    for (const std::uint8_t type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE}) {
        fakeButton(type, button);
    }
}

void XClient::fakeButton(std::uint8_t type, std::uint8_t button) const {
    xcb_test_fake_input(connection_->get(), type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection_->get());
}

bool XClient::canGrabPointer() const {
    const XcbOwned<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        connection_->get(),
        xcb_grab_pointer(connection_->get(), 0, connection_->root(), 0, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    xcb_ungrab_pointer(connection_->get(), XCB_CURRENT_TIME);
    connection_->sync();
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::pressPanicChord() const {
    constexpr std::array<xcb_keysym_t, 3> keys{0xFFE3, 0xFFEB, 0xFF1B}; // Control, Super, Escape
    xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(connection_->get());
    for (const std::uint8_t type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
        for (const xcb_keysym_t key : keys) {
            const XcbOwned<xcb_keycode_t> code(xcb_key_symbols_get_keycode(symbols, key));
            xcb_test_fake_input(connection_->get(), type, *code, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                0);
        }
    }
    xcb_key_symbols_free(symbols);
    connection_->sync();
}

bool XClient::canGrabPanicChord() const {
    xcb_grab_server(connection_->get());
    PanicChord chord(*connection_);
    const bool all = chord.take();
    chord.release();
    xcb_ungrab_server(connection_->get());
    connection_->sync();
    return all;
}

int XClient::wheelPresses() {
    const auto& all = buttons();
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [](const std::string& each) { return each.starts_with("press"); }));
}

const std::vector<std::string>& XClient::buttons() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        const bool isPress = event->response_type == XCB_BUTTON_PRESS;
        if (isPress || event->response_type == XCB_BUTTON_RELEASE) {
            const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(*event);
            buttons_.push_back((isPress ? "press " : "release ") + std::to_string(button.detail));
            latestState_ = button.state;
        }
    }
    return buttons_;
}

unsigned XClient::buttonsDown() const {
    constexpr unsigned every = 0x1F00;
    const XcbOwned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_->get(), xcb_query_pointer(connection_->get(), connection_->root()), nullptr));
    return reply ? reply->mask & every : ~0U;
}

bool XClient::canGrabLeft() const {
    xcb_grab_server(connection_->get());
    LeftPressGrab grab(*connection_);
    const bool can = grab.take(pointer(*connection_));
    grab.release();
    xcb_ungrab_server(connection_->get());
    connection_->sync();
    return can;
}

void XClient::grabLeft() const { LeftPressGrab(*connection_).take(pointer(*connection_)); }

bool XClient::canGrabWheel() const {
    // Nobody else gets a turn meanwhile, or the question itself would be in their way.
    xcb_grab_server(connection_->get());
    WheelGrabs grabs(*connection_);
    const bool all = grabs.take().empty();
    grabs.release();
    xcb_ungrab_server(connection_->get());
    connection_->sync();
    return all;
}

void XClient::grabWheel() const { WheelGrabs(*connection_).take(); }

bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

} // namespace quillon
