// Windows that say of themselves what they are told to, and do nothing. Each is reported as
// "window ID" once it is made. Reads commands, a line each: "close INDEX"; ends with its input.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>
#include <xcb/xcb.h>

namespace {

constexpr const char* usage = R"(usage: plain_windows TITLE COUNT X Y WIDTH HEIGHT [NAME=VALUE...]
  class=INSTANCE/CLASS   its window class
  pid=NUMBER             what it says its process is, instead of the true number; 0: nothing
  machine=NAME           where it says it runs
  type=ATOM, state=ATOM  such as _NET_WM_WINDOW_TYPE_DOCK
  application=ID         the desktop entry that it says is its own
)";

class Windows {
  public:
    Windows(xcb_connection_t* connection, std::map<std::string, std::string> said)
        : connection_(connection),
          screen_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data),
          said_(std::move(said)) {}

    void make(const std::string& title, std::array<int, 4> place) {
        const xcb_window_t window = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root,
                          static_cast<std::int16_t>(place[0]), static_cast<std::int16_t>(place[1]),
                          static_cast<std::uint16_t>(place[2]),
                          static_cast<std::uint16_t>(place[3]), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &screen_->white_pixel);
        text(window, XCB_ATOM_WM_NAME, title);
        // Where it is, is where the user wants it; and it takes the keyboard.
        const std::array<std::uint32_t, 18> size{1};
        values(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, size);
        const std::array<std::uint32_t, 9> hints{1, 1};
        values(window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, hints);
        if (said_.contains("class")) {
            std::string names = said_["class"] + '/';
            for (char& c : names) {
                c = c == '/' ? '\0' : c;
            }
            text(window, XCB_ATOM_WM_CLASS, names);
        }
        const auto process = static_cast<std::uint32_t>(
            said_.contains("pid") ? std::atoi(said_["pid"].c_str()) : getpid());
        if (process != 0) {
            values(window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, std::array{process});
        }
        if (said_.contains("machine")) {
            text(window, XCB_ATOM_WM_CLIENT_MACHINE, said_["machine"]);
        }
        if (said_.contains("application")) {
            text(window, atom("_GTK_APPLICATION_ID"), said_["application"]);
        }
        if (said_.contains("type")) {
            values(window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                   std::array{atom(said_["type"])});
        }
        if (said_.contains("state")) {
            values(window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, std::array{atom(said_["state"])});
        }
        xcb_map_window(connection_, window);
        windows_.push_back(window);
        std::printf("window 0x%08x\n", window);
    }

    void close(std::size_t index) const {
        xcb_destroy_window(connection_, windows_.at(index));
        xcb_flush(connection_);
    }

  private:
    xcb_atom_t atom(std::string_view name) {
        auto* reply = xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const xcb_atom_t found = reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
        std::free(reply);
        return found;
    }

    void text(xcb_window_t window, xcb_atom_t property, const std::string& value) const {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(value.size()), value.data());
    }

    template <class Values>
    void values(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                const Values& numbers) const {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
    }

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
    std::map<std::string, std::string> said_;
    std::vector<xcb_window_t> windows_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 7) {
        std::fputs(usage, stderr);
        return 2;
    }
    std::map<std::string, std::string> said;
    for (int i = 7; i < argc; ++i) {
        const std::string word = argv[i];
        said[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::fputs("plain_windows: no X display\n", stderr);
        return 3;
    }
    Windows windows(connection, said);
    for (int i = 0; i < std::atoi(argv[2]); ++i) {
        windows.make(argv[1], {std::atoi(argv[3]) + 10 * i % 400, std::atoi(argv[4]) + 7 * i % 300,
                               std::atoi(argv[5]), std::atoi(argv[6])});
    }
    xcb_flush(connection);
    std::fflush(stdout);
    std::string word;
    for (std::size_t index = 0; std::cin >> word >> index && word == "close";) {
        windows.close(index);
    }
    xcb_disconnect(connection);
    return 0;
}
