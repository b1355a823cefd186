#include "Probe.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <string_view>
#include <utility>

namespace {

struct Area {
    std::int16_t x, y;
    std::uint16_t width, height;
};

Owned<xcb_get_image_reply_t> picture(const Display& display, const Area& area) {
    return Owned<xcb_get_image_reply_t>(xcb_get_image_reply(
        display.connection,
        xcb_get_image(display.connection, XCB_IMAGE_FORMAT_Z_PIXMAP, display.root, area.x, area.y,
                      area.width, area.height, ~0U),
        nullptr));
}

std::string_view bytes(const xcb_get_image_reply_t& image) {
    return {reinterpret_cast<const char*>(xcb_get_image_data(&image)),
            static_cast<std::size_t>(xcb_get_image_data_length(&image))};
}

/// How far two pictures are apart, summed over all colour values.
unsigned long distance(std::string_view one, std::string_view other) {
    unsigned long sum = 0;
    for (std::size_t i = 0; i < one.size() && i < other.size(); ++i) {
        const int difference =
            static_cast<unsigned char>(one[i]) - static_cast<unsigned char>(other[i]);
        sum += static_cast<unsigned long>(difference < 0 ? -difference : difference);
    }
    return sum;
}

long long microseconds() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

/// Looks at an area of the screen as fast as it can and prints a line for each picture that is not
/// the one before: the monotonic clock in microseconds, how far it is from the first one, and its
/// hash. The first line stands for the first picture. Until it is killed.
int watchPixels(const Display& display, int x, int y, int width, int height) {
    const Area area{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                    static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height)};
    const auto first = picture(display, area);
    auto before = picture(display, area);
    if (!first || !before) {
        std::fputs("x11_probe: no such area on the screen\n", stderr);
        return 1;
    }
    const auto print = [&](const xcb_get_image_reply_t& image) {
        std::printf("%lld %lu %zx\n", microseconds(), distance(bytes(image), bytes(*first)),
                    std::hash<std::string_view>()(bytes(image)));
        std::fflush(stdout);
    };
    print(*first);
    while (auto now = picture(display, area)) {
        if (bytes(*now) != bytes(*before)) {
            print(*now);
            before = std::move(now);
        }
    }
    return 0;
}
