#include "Platform/Linux/updates/Appcast.h"

#include <QByteArray>
#include <QXmlStreamReader>

namespace quillon {

namespace {

/// Far beyond what feeds need; the reader keeps a record of every open element.
constexpr int deepest = 100;

constexpr const char* noFeed = "it is not an update feed";
constexpr const char* webPage = "the server sent a web page instead";

bool isWebPage(std::string_view bytes) {
    const QByteArray start =
        QByteArray(bytes.data(), static_cast<qsizetype>(bytes.substr(0, 1000).size()))
            .trimmed()
            .toLower();
    return start.startsWith("<!doctype html") || start.startsWith("<html");
}

std::string attribute(const QXmlStreamAttributes& attributes, QStringView name) {
    for (const auto& one : attributes) {
        if (one.name() == name) {
            return one.value().trimmed().toUtf8().toStdString();
        }
    }
    return {};
}

class AppcastReader {
  public:
    explicit AppcastReader(std::string_view bytes)
        : xml_(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))) {}

    std::variant<Appcast, FeedFailure> read() {
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
            case QXmlStreamReader::DTD:
                // No feed has one, and what it may define grows without bounds.
                return FeedFailure{noFeed};
            case QXmlStreamReader::StartElement:
                ++depth_;
                if (depth_ > deepest || (depth_ == 1 && xml_.name() != u"rss")) {
                    return FeedFailure{noFeed};
                }
                begin();
                break;
            case QXmlStreamReader::Characters:
                if (depth_ == textDepth_) {
                    text_ += xml_.text();
                }
                break;
            case QXmlStreamReader::EndElement:
                end();
                --depth_;
                break;
            default:
                break;
            }
        }
        if (xml_.hasError()) {
            return FeedFailure{"it is damaged in line " + std::to_string(xml_.lineNumber())};
        }
        if (!sawChannel_) {
            return FeedFailure{noFeed};
        }
        return std::move(appcast_);
    }

  private:
    enum Depth { root = 1, channel = 2, channelChild = 3, itemChild = 4 };

    [[nodiscard]] bool isOwn(QStringView name) const {
        return xml_.name() == name && xml_.namespaceUri() == namespace_;
    }

    void begin() {
        switch (depth_) {
        case root:
            namespace_ = xml_.namespaceUri().toString();
            break;
        case channel:
            isChannel_ = isOwn(u"channel");
            sawChannel_ = sawChannel_ || isChannel_;
            break;
        case channelChild:
            isItem_ = isChannel_ && isOwn(u"item");
            if (isItem_) {
                appcast_.items.emplace_back();
            } else if (isChannel_ && isOwn(u"link")) {
                collect(&appcast_.link);
            }
            break;
        case itemChild:
            if (isItem_) {
                beginItemChild(appcast_.items.back());
            }
            break;
        default:
            break;
        }
    }

    void beginItemChild(AppcastItem& item) {
        if (isOwn(u"enclosure")) {
            const auto attributes = xml_.attributes();
            AppcastEnclosure enclosure{attribute(attributes, u"version"),
                                       attribute(attributes, u"shortVersionString"), std::nullopt};
            if (auto os = attribute(attributes, u"os"); !os.empty()) {
                enclosure.os = std::move(os);
            }
            item.enclosures.push_back(std::move(enclosure));
        } else if (isOwn(u"link")) {
            collect(&item.link);
        } else if (xml_.name() == u"releaseNotesLink") {
            collect(&item.releaseNotesLink);
        } else if (xml_.name() == u"version") {
            collect(&item.version);
        } else if (xml_.name() == u"shortVersionString") {
            collect(&item.shortVersion);
        } else if (xml_.name() == u"channel") {
            item.isOnChannel = true;
        }
    }

    /// The text of the element that begins goes there; of several the first counts.
    void collect(std::string* target) {
        if (target->empty()) {
            target_ = target;
            textDepth_ = depth_;
            text_.clear();
        }
    }

    void end() {
        if (depth_ == textDepth_) {
            *target_ = text_.trimmed().toUtf8().toStdString();
            textDepth_ = 0;
        }
    }

    QXmlStreamReader xml_;
    Appcast appcast_;
    QString namespace_;
    int depth_ = 0;
    bool sawChannel_ = false;
    bool isChannel_ = false;
    bool isItem_ = false;
    int textDepth_ = 0; // 0: no text is wanted
    std::string* target_ = nullptr;
    QString text_;
};

} // namespace

std::variant<Appcast, FeedFailure> parseAppcast(std::string_view bytes) {
    if (bytes.empty()) {
        return FeedFailure{"it is empty"};
    }
    if (isWebPage(bytes)) {
        return FeedFailure{webPage};
    }
    return AppcastReader(bytes).read();
}

} // namespace quillon
