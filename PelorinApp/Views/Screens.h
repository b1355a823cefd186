#pragma once

#include <QUrl>

#include <string_view>

namespace quillon {

/// Where the screen of this name is, compiled into the program; not valid when there is none.
[[nodiscard]] QUrl screenUrl(std::string_view name);

} // namespace quillon
