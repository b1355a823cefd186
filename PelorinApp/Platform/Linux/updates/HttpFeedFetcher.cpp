#include "Platform/Linux/updates/HttpFeedFetcher.h"

#include "Platform/Linux/updates/FeedAddress.h"
#include "Platform/Linux/updates/HttpFailure.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

#include <utility>

namespace quillon {

namespace {

constexpr int mostRedirects = 5;
constexpr qint64 readAhead = 0x10000; // bytes; what may wait in memory beside what we have read

constexpr int firstSuccess = 200;
constexpr int firstRedirect = 300;
constexpr int firstError = 400;

QNetworkRequest requestFor(const QUrl& url, const std::string& userAgent) {
    QNetworkRequest request(url);
    request.setRawHeader("User-Agent", QByteArray::fromStdString(userAgent));
    // Left out, these would tell the user's language, and ask for compression, behind which a
    // small answer can hide a huge one.
    request.setRawHeader("Accept-Language", "*");
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return request;
}

class HttpFeedFetch final : public FeedFetch {
  public:
    HttpFeedFetch(RunLoop& runLoop, const QUrl& url, std::string userAgent,
                  std::function<void(FetchedFeed)> completion)
        : runLoop_(runLoop), userAgent_(std::move(userAgent)), completion_(std::move(completion)) {
        get(url);
    }
    HttpFeedFetch(const HttpFeedFetch&) = delete;
    HttpFeedFetch& operator=(const HttpFeedFetch&) = delete;
    ~HttpFeedFetch() override { drop(); }

  private:
    void get(const QUrl& url) {
        reply_ = manager_.get(requestFor(url, userAgent_));
        reply_->setReadBufferSize(readAhead);
        QObject::connect(reply_, &QNetworkReply::metaDataChanged, &context_, [this] { head(); });
        QObject::connect(reply_, &QNetworkReply::readyRead, &context_, [this] { body(); });
        QObject::connect(reply_, &QNetworkReply::finished, &context_, [this] { finished(); });
    }

    /// Ends the exchange. The reply may be in the middle of a signal, so it may not even be aborted
    /// before its deletion.
    void drop() {
        if (reply_ != nullptr) {
            QNetworkReply* const reply = std::exchange(reply_, nullptr);
            QObject::disconnect(reply, nullptr, &context_, nullptr);
            reply->deleteLater();
        }
    }

    [[nodiscard]] int status() const {
        return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }

    void head() {
        const int code = status();
        if (code >= firstError) {
            complete(FeedFailure{"the server answered with error " + std::to_string(code)});
        } else if (code >= firstRedirect) {
            redirect(QUrl::fromEncoded(reply_->rawHeader("Location")));
        } else if (const auto encoding = reply_->rawHeader("Content-Encoding").toLower();
                   !encoding.isEmpty() && encoding != "identity") {
            complete(FeedFailure{"the server sent it compressed"});
        } else if (reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() >
                   HttpFeedFetcher::largestFeed) {
            complete(tooLarge());
        }
    }

    void redirect(const QUrl& location) {
        const QUrl from = reply_->url();
        const QUrl to = from.resolved(location);
        if (location.isEmpty() || !location.isValid()) {
            complete(FeedFailure{"the server's answer makes no sense"});
        } else if (!mayRedirect(from, to)) {
            complete(FeedFailure{"the server refers to an address that is not secure"});
        } else if (++redirects_ > mostRedirects) {
            complete(FeedFailure{"the server refers from one address to the next without end"});
        } else {
            drop();
            get(to);
        }
    }

    void body() {
        feed_ += reply_->readAll().toStdString();
        if (feed_.size() > HttpFeedFetcher::largestFeed) {
            complete(tooLarge());
        }
    }

    void finished() {
        const auto error = reply_->error();
        if (error != QNetworkReply::NoError) {
            complete(FeedFailure{failureReason(error)});
            return;
        }
        if (status() < firstSuccess) {
            complete(FeedFailure{failureReason(QNetworkReply::ProtocolFailure)});
            return;
        }
        body();
        if (reply_ != nullptr) {
            complete(std::move(feed_));
        }
    }

    static FeedFailure tooLarge() { return FeedFailure{"it is too large"}; }

    void complete(FetchedFeed result) {
        drop();
        // Later, as it may destroy this, and thus the manager, in the middle of a signal.
        runLoop_.async([this, alive = std::weak_ptr(alive_), held = std::move(result)]() mutable {
            if (!alive.expired()) {
                const auto completion = std::move(completion_);
                completion(std::move(held));
            }
        });
    }

    RunLoop& runLoop_;
    std::string userAgent_;
    std::function<void(FetchedFeed)> completion_;
    QNetworkAccessManager manager_;
    QNetworkReply* reply_ = nullptr; // the manager's; null once it is of no more interest
    int redirects_ = 0;
    std::string feed_;
    QObject context_; // goes before the manager: its last signals find nobody
    std::shared_ptr<int> alive_ = std::make_shared<int>(); // what is queued holds it weakly
};

} // namespace

std::unique_ptr<FeedFetch> HttpFeedFetcher::fetch(const std::string& address,
                                                  std::function<void(FetchedFeed)> completion) {
    return std::make_unique<HttpFeedFetch>(runLoop_, feedUrl(address), userAgent_,
                                           std::move(completion));
}

} // namespace quillon
