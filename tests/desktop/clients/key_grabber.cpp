// A program that gets keys, as one does that handles them for a desktop, or as one does whose
// window has the keyboard. It prints "ready", and then what it gets with the time, in nanoseconds
// of the monotonic clock:
//
//     down XF86AudioPlay 123456789
//     up XF86AudioPlay 123456790
//
//     key_grabber core KEYSYM...      by XGrabKey, without modifiers and with Lock and Num Lock
//     key_grabber xi2 KEYSYM...       by grabs of the input extension, the same
//     key_grabber focus               by the focus; every key
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>

namespace {

constexpr unsigned locks[] = {0, LockMask, Mod2Mask, LockMask | Mod2Mask};

class Grabber {
  public:
    Grabber(Display* display, const std::string& kind, std::vector<KeySym> keys)
        : display_(display), root_(DefaultRootWindow(display)), isCore_(kind == "core"),
          keys_(std::move(keys)) {
        if (kind == "focus") {
            openWindow();
        }
        grab();
    }

    void run() {
        int first = 0;
        int error = 0;
        int major = 2;
        int minor = 2;
        XQueryExtension(display_, "XInputExtension", &opcode_, &first, &error);
        XIQueryVersion(display_, &major, &minor);
        XSync(display_, False);
        std::puts("ready");
        std::fflush(stdout);
        while (true) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type == KeyPress || event.type == KeyRelease) {
                say(event.type == KeyPress, event.xkey.keycode);
            } else if (event.type == MappingNotify) {
                XRefreshKeyboardMapping(&event.xmapping);
                ungrab();
                grab();
            } else if (event.type == GenericEvent) {
                readExtension(event.xcookie);
            }
        }
    }

  private:
    void openWindow() {
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True;
        attributes.event_mask = KeyPressMask | KeyReleaseMask | ExposureMask;
        const Window window =
            XCreateWindow(display_, root_, 0, 0, 200, 100, 0, CopyFromParent, InputOutput,
                          CopyFromParent, CWOverrideRedirect | CWEventMask, &attributes);
        XMapRaised(display_, window);
        XEvent event;
        XWindowEvent(display_, window, ExposureMask, &event);
        XSetInputFocus(display_, window, RevertToPointerRoot, CurrentTime);
    }

    void grab() {
        for (const KeySym key : keys_) {
            const KeyCode keycode = XKeysymToKeycode(display_, key);
            if (keycode == 0) {
                continue;
            }
            keycodes_.push_back(keycode);
            if (isCore_) {
                for (const unsigned modifiers : locks) {
                    XGrabKey(display_, keycode, modifiers, root_, False, GrabModeAsync,
                             GrabModeAsync);
                }
            } else {
                grabByExtension(keycode);
            }
        }
        XFlush(display_);
    }

    void grabByExtension(KeyCode keycode) {
        unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
        XISetMask(bits, XI_KeyPress);
        XISetMask(bits, XI_KeyRelease);
        XIEventMask mask{XIAllMasterDevices, sizeof bits, bits};
        XIGrabModifiers modifiers[4] = {};
        for (int i = 0; i < 4; ++i) {
            modifiers[i].modifiers = static_cast<int>(locks[i]);
        }
        XIGrabKeycode(display_, XIAllMasterDevices, keycode, root_, XIGrabModeAsync,
                      XIGrabModeAsync, False, &mask, 4, modifiers);
    }

    void ungrab() {
        for (const KeyCode keycode : keycodes_) {
            if (isCore_) {
                XUngrabKey(display_, keycode, AnyModifier, root_);
            } else {
                XIGrabModifiers any{static_cast<int>(XIAnyModifier), 0};
                XIUngrabKeycode(display_, XIAllMasterDevices, keycode, root_, 1, &any);
            }
        }
        keycodes_.clear();
    }

    void readExtension(XGenericEventCookie& cookie) {
        if (cookie.extension == opcode_ && XGetEventData(display_, &cookie)) {
            const auto& event = *static_cast<XIDeviceEvent*>(cookie.data);
            if (cookie.evtype == XI_KeyPress || cookie.evtype == XI_KeyRelease) {
                say(cookie.evtype == XI_KeyPress, static_cast<unsigned>(event.detail));
            }
            XFreeEventData(display_, &cookie);
        }
    }

    void say(bool isDown, unsigned keycode) {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        int count = 0;
        KeySym* keysyms = XGetKeyboardMapping(display_, static_cast<KeyCode>(keycode), 1, &count);
        const char* name = count > 0 ? XKeysymToString(keysyms[0]) : nullptr;
        std::printf("%s %s %lld\n", isDown ? "down" : "up", name == nullptr ? "nothing" : name,
                    now.tv_sec * 1'000'000'000LL + now.tv_nsec);
        std::fflush(stdout);
        XFree(keysyms);
    }

    Display* display_;
    Window root_;
    bool isCore_;
    std::vector<KeySym> keys_;
    std::vector<KeyCode> keycodes_;
    int opcode_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr || argc < 2) {
        std::fputs("usage: key_grabber core|xi2|focus [KEYSYM...]\n", stderr);
        return 2;
    }
    std::vector<KeySym> keys;
    for (int i = 2; i < argc; ++i) {
        keys.push_back(XStringToKeysym(argv[i]));
        if (keys.back() == NoSymbol) {
            std::fprintf(stderr, "no such keysym: %s\n", argv[i]);
            return 2;
        }
    }
    Grabber(display, argv[1], keys).run();
}
