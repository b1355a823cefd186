#include "HttpFixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <sys/socket.h>

namespace quillon {

void HttpFixture::begin(const std::string& address) {
    result.reset();
    request.url = address;
    running = session->fetchData(request, [this](UrlResult ended) {
        EXPECT_FALSE(result) << "completed twice";
        result = std::move(ended);
        running.reset(); // as callers do
    });
    EXPECT_FALSE(result) << "completed too early";
}

void HttpFixture::runUntil(const std::function<bool()>& condition) {
    MainThreadGaps gaps(loop);
    const TimerRef guard = loop.asyncAfter(limit, [this] { loop.quit(99); });
    const TimerRef look = loop.scheduleRepeating(0.005, [&] {
        if (condition()) {
            loop.quit(0);
        }
    });
    EXPECT_EQ(loop.run(), 0) << "it never came";
    look->cancel();
    guard->cancel();
    longestGap = std::max(longestGap, gaps.longest());
    EXPECT_LT(longestGap, stall);
}

void HttpFixture::runOn() {
    bool over = false;
    const TimerRef moment = loop.asyncAfter(0.1, [&] { over = true; });
    runUntil([&] { return over; });
}

std::string HttpFixture::outcome() const {
    if (!result) {
        return "nothing";
    }
    if (const auto* error = std::get_if<UrlError>(&*result)) {
        return "[" + error->description + "]";
    }
    const auto& response = std::get<UrlResponse>(*result);
    return std::to_string(response.statusCode.value_or(0)) + " " + *response.body;
}

std::string HttpFixture::fetch(const std::string& address) {
    begin(address);
    runUntil([this] { return result.has_value(); });
    return outcome();
}

std::string HttpFixture::fetchAnswer(const QByteArray& answer) {
    FeedServer server([&](const std::string&, QTcpSocket& client) {
        client.write(answer);
        client.disconnectFromHost();
    });
    return fetch(server.address("/file"));
}

void writeForEver(QTcpSocket& client, const QByteArray& piece) {
    QObject::connect(&client, &QTcpSocket::bytesWritten, &client, [&client, piece] {
        if (client.bytesToWrite() < piece.size()) {
            client.write(piece);
        }
    });
    client.write(piece);
}

void reset(QTcpSocket& client) {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(client.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                 sizeof atOnce);
    client.abort();
}

int httpThreads() {
    int count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string threadName;
        std::ifstream(thread.path() / "comm") >> threadName;
        count += threadName == "http" ? 1 : 0;
    }
    return count -
           HeldNames::held(); // those have taken the name on from the thread that began them
}

} // namespace quillon
