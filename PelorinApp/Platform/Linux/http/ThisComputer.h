#pragma once

#include <string_view>

namespace quillon {

/// Whether a host, as it is written in an address (IPv6 in brackets or not), is this computer by
/// its very name: nobody is asked.
[[nodiscard]] bool isThisComputer(std::string_view host);

} // namespace quillon
