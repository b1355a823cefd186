#include "Platform/Linux/updates/FeedAddress.h"

#include "Platform/Linux/http/ThisComputer.h"

#include <QString>

namespace quillon {

namespace {

constexpr QStringView secure = u"https";

} // namespace

QUrl feedUrl(std::string_view address) {
    return QUrl(
        QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())).trimmed());
}

bool mayFetch(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == secure ||
            (url.scheme() == u"http" && isThisComputer(url.host().toStdString())));
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
    return mayFetch(to) && (from.scheme() != secure || to.scheme() == secure);
}

} // namespace quillon
