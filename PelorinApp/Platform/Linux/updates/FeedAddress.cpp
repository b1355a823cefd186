#include "Platform/Linux/updates/FeedAddress.h"

#include <QHostAddress>
#include <QString>

namespace quillon {

namespace {

constexpr QStringView secure = u"https";

bool isThisComputer(const QString& host) {
    if (host == u"localhost") {
        return true;
    }
    const QHostAddress address(host);
    return address == QHostAddress(QHostAddress::LocalHostIPv6) ||
           address.isInSubnet(QHostAddress(QStringLiteral("127.0.0.0")), 8);
}

} // namespace

QUrl feedUrl(std::string_view address) {
    return QUrl(
        QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())).trimmed());
}

bool mayFetch(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == secure || (url.scheme() == u"http" && isThisComputer(url.host())));
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
    return mayFetch(to) && (from.scheme() != secure || to.scheme() == secure);
}

} // namespace quillon
