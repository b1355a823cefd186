#pragma once

#include <string>

namespace quillon {

/// What is the same for all exchanges of a session.
struct UrlSettings {
    std::string userAgent;

    /// Seconds for one exchange, with all its redirects, however busy the server is.
    double longestExchange = 15 * 60;

    /// The certificates to trust, as PEM, in the place of the system's.
    std::string certificates;
};

} // namespace quillon
