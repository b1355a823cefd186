#include "Platform/Linux/updates/UpdateChoice.h"

#include "Platform/Linux/updates/Version.h"

#include <QString>
#include <QUrl>

#include <initializer_list>

namespace quillon {

namespace {

constexpr qsizetype longestAddress = 2000;

struct Candidate {
    std::string_view readable;
    std::string_view build;
};

/// The first that is given, since an item's own elements speak for all its enclosures.
std::string_view either(const std::string& first, const std::string& second) {
    return first.empty() ? second : first;
}

std::optional<Candidate> candidate(std::string_view version, std::string_view shortVersion) {
    const std::string_view readable = isVersion(shortVersion) ? shortVersion : version;
    return isVersion(readable) ? std::optional(Candidate{readable, version}) : std::nullopt;
}

bool isForThisSystem(const AppcastEnclosure& enclosure) {
    return !enclosure.os ||
           QString::fromStdString(*enclosure.os).compare(u"linux", Qt::CaseInsensitive) == 0;
}

std::optional<Candidate> candidate(const AppcastItem& item) {
    if (item.isOnChannel) {
        return std::nullopt;
    }
    if (item.enclosures.empty()) {
        return candidate(item.version, item.shortVersion);
    }
    for (const auto& enclosure : item.enclosures) {
        if (isForThisSystem(enclosure)) {
            return candidate(either(item.version, enclosure.version),
                             either(item.shortVersion, enclosure.shortVersion));
        }
    }
    return std::nullopt;
}

bool isNewer(const Candidate& candidate, const Candidate& than) {
    const auto order = compareVersions(candidate.readable, than.readable);
    return std::is_gt(std::is_eq(order) ? compareVersions(candidate.build, than.build) : order);
}

/// The first that may be given to a browser.
std::string page(std::initializer_list<std::string_view> links) {
    for (const auto link : links) {
        const QUrl url(QString::fromUtf8(link.data(), static_cast<qsizetype>(link.size())));
        const bool isWeb = url.scheme() == u"https" || url.scheme() == u"http";
        const QByteArray encoded = url.toEncoded();
        if (url.isValid() && isWeb && !url.host().isEmpty() && encoded.size() <= longestAddress) {
            return encoded.toStdString();
        }
    }
    return {};
}

} // namespace

std::optional<PublishedVersion> newestVersion(const Appcast& appcast) {
    const AppcastItem* newest = nullptr;
    Candidate best;
    for (const auto& item : appcast.items) {
        const auto offered = candidate(item);
        if (offered && (newest == nullptr || isNewer(*offered, best))) {
            newest = &item;
            best = *offered;
        }
    }
    if (newest == nullptr) {
        return std::nullopt;
    }
    return PublishedVersion{std::string(best.readable),
                            page({newest->link, newest->releaseNotesLink, appcast.link})};
}

std::string plainText(std::string_view utf8, int longest) {
    QString text;
    const auto decoded = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    for (const char32_t c : decoded.toUcs4()) {
        switch (QChar::category(c)) {
        case QChar::Other_Format:
        case QChar::Other_Surrogate:
        case QChar::Other_PrivateUse:
        case QChar::Other_NotAssigned:
            break;
        case QChar::Other_Control:
            text += u' ';
            break;
        default:
            text += QChar::fromUcs4(c);
        }
    }
    text = text.simplified();
    auto characters = text.toUcs4();
    if (characters.size() > longest) {
        characters.resize(longest - 1);
        text = QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.constData()),
                                 characters.size()) +
               u'…';
    }
    return text.toStdString();
}

} // namespace quillon
