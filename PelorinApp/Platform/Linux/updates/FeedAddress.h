#pragma once

#include <QUrl>

#include <string_view>

namespace quillon {

[[nodiscard]] QUrl feedUrl(std::string_view address);

/// Whether a feed may come from there: over HTTPS, or from this computer over plain HTTP.
[[nodiscard]] bool mayFetch(const QUrl& url);

/// Whether a server may send us on: to where we may fetch, and never from HTTPS to less.
[[nodiscard]] bool mayRedirect(const QUrl& from, const QUrl& to);

} // namespace quillon
