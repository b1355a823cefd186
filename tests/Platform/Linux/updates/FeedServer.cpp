#include "Platform/Linux/updates/FeedServer.h"

#include "Platform/Linux/updates/TestCertificate.h"

#include <QHostAddress>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>

#include <stdexcept>

namespace quillon {

namespace {

std::unique_ptr<QTcpServer> serverOf(FeedServer::Kind kind) {
    if (kind == FeedServer::Kind::plain) {
        return std::make_unique<QTcpServer>();
    }
    auto server = std::make_unique<QSslServer>();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPrivateKey(QSslKey(testKey, QSsl::Ec));
    configuration.setLocalCertificate(QSslCertificate(testCertificate));
    server->setSslConfiguration(configuration);
    return server;
}

} // namespace

FeedServer::FeedServer(Answer answer, Kind kind)
    : answer_(std::move(answer)), scheme_(kind == Kind::plain ? "http" : "https"),
      server_(serverOf(kind)) {
    QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
        while (QTcpSocket* client = server_->nextPendingConnection()) {
            serve(*client);
        }
    });
    if (!server_->listen(QHostAddress::LocalHost)) {
        throw std::runtime_error("no port to listen on");
    }
}

void FeedServer::serve(QTcpSocket& client) {
    ++open_;
    QObject::connect(&client, &QTcpSocket::disconnected, server_.get(), [this] { --open_; });
    QObject::connect(&client, &QTcpSocket::disconnected, &client, &QObject::deleteLater);
    const auto received = std::make_shared<std::string>();
    const auto read = [this, received, &client] {
        *received += client.readAll().toStdString();
        if (received->ends_with("\r\n\r\n")) {
            requests.push_back(*received);
            received->clear();
            const std::string& request = requests.back();
            answer_(request.substr(0, request.find('\r')), client);
        }
    };
    QObject::connect(&client, &QTcpSocket::readyRead, &client, read);
    read();
}

std::string FeedServer::address(const std::string& path) const {
    return scheme_ + "://127.0.0.1:" + std::to_string(server_->serverPort()) + path;
}

QByteArray httpAnswer(const std::string& status, const std::string& body,
                      const std::string& headers) {
    return QByteArray::fromStdString(
        "HTTP/1.1 " + status + "\r\n" + headers +
        "Connection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
}

} // namespace quillon
