#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A server on this computer that keeps what it is asked and answers as the test says. Runs in the
/// event loop of the test's thread.
class FeedServer {
  public:
    enum class Kind { plain, secure };

    /// Called with a whole request's first line. What is written later than this call must not
    /// outlive the socket.
    using Answer = std::function<void(const std::string& request, QTcpSocket& client)>;

    explicit FeedServer(Answer answer, Kind kind = Kind::plain);

    /// With the path, which begins with a slash.
    [[nodiscard]] std::string address(const std::string& path) const;
    [[nodiscard]] std::size_t connections() const { return open_; }

    std::vector<std::string> requests; // all lines of each

  private:
    void serve(QTcpSocket& client);

    Answer answer_;
    std::string scheme_;
    std::size_t open_ = 0;
    std::unique_ptr<QTcpServer> server_; // goes first: what it still says finds the rest
};

/// A whole answer of a server, after which the connection is closed.
[[nodiscard]] QByteArray httpAnswer(const std::string& status, const std::string& body,
                                    const std::string& headers = {});

} // namespace quillon
