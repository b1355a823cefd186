#pragma once

#include "HeldNames.h"
#include "MainThreadGaps.h"

#include "Platform/Linux/http/CurlUrlSession.h"
#include "Platform/Linux/session/QtRunLoop.h"
#include "Platform/Linux/updates/FeedServer.h"
#include "Platform/Linux/updates/TestCertificate.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillon {

inline constexpr const char* tooSlow = "[the server takes too long to answer]";

/// A session that trusts the servers of tests, beside a run loop that must not be held up.
struct HttpFixture : testing::Test {
    static constexpr double limit = 40; // seconds, that no passing test reaches

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtRunLoop loop;
    UrlSettings settings{.userAgent = "Quillon/0.1.0", .certificates = testCertificate};
    std::optional<CurlUrlSession> session{std::in_place, loop, settings};
    std::unique_ptr<UrlTask> running;
    std::optional<UrlResult> result;
    UrlRequest request{.largestBody = 1'000'000};
    double longestGap = 0; // seconds, of the main thread

    void begin(const std::string& address);

    /// Runs until it is so. The main thread must not stall on the way.
    void runUntil(const std::function<bool()>& condition);

    /// Runs for a moment in which nothing should happen.
    void runOn();

    /// "STATUS BODY", or the error in brackets.
    std::string fetch(const std::string& address);

    /// What becomes of an answer of these bytes, after which the server closes.
    std::string fetchAnswer(const QByteArray& answer);

    [[nodiscard]] std::string outcome() const;
};

/// Writes the same over and over, as fast as it is taken.
void writeForEver(QTcpSocket& client, const QByteArray& piece);

/// Ends the connection as a computer does that goes down.
void reset(QTcpSocket& client);

/// The threads of this process that exchange with servers; not those that wait for names.
[[nodiscard]] int httpThreads();

} // namespace quillon
