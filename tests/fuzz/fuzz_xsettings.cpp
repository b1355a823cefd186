#include "Platform/Linux/looks/DesktopLooks.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    (void)quillon::lookOf(quillon::XSettings::parse(bytes));
    return 0;
}
