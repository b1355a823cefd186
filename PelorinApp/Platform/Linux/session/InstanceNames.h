#pragma once

namespace quillon {

/// What the program is called on the session bus.
struct InstanceNames {
    static constexpr const char* service = "com.pelorin.PelorinApp";
    static constexpr const char* path = "/com/pelorin/PelorinApp";
    static constexpr const char* application = "org.freedesktop.Application";
    static constexpr const char* tools = "com.pelorin.PelorinApp.Tools";
    static constexpr const char* development = "com.pelorin.PelorinApp.Development";

    /// The running instance's connection to the bus, by the toolkit's name for it.
    static constexpr const char* connection = "quillon-instance";
};

} // namespace quillon
