#include "HttpFixture.h"

#include <array>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace quillon {
namespace {

using HttpTasksTest = HttpFixture;

FeedServer::Answer silence() {
    return [](const std::string&, QTcpSocket&) {};
}

FeedServer::Answer half() {
    return [](const std::string&, QTcpSocket& client) {
        client.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    };
}

TEST_F(HttpTasksTest, CancelledAtAnyStageItIsSilentAndHangsUp) {
    FeedServer server(half());
    begin(server.address("/")); // nor one that has not even connected
    running.reset();
    runUntil([] { return httpThreads() == 0; });

    begin(server.address("/"));
    runUntil([&] { return server.requests.size() == 1; });
    running.reset();
    runUntil([&] { return server.connections() == 0 && httpThreads() == 0; });

    runOn();
    EXPECT_FALSE(result);
}

TEST_F(HttpTasksTest, CancelledBetweenTheAnswerAndItsTellingItIsSilent) {
    // Both have ended before either is told; whichever is told first cancels the other.
    std::array<std::unique_ptr<UrlTask>, 2> tasks;
    int told = 0;
    request.url = "no address";
    for (auto& task : tasks) {
        task = session->fetchData(request, [&](const UrlResult&) {
            ++told;
            tasks = {};
        });
    }
    while (httpThreads() > 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(told, 0);
    runOn();
    EXPECT_EQ(told, 1);
}

TEST_F(HttpTasksTest, TheThreadIsThereOnlyWhileSomethingIsFetched) {
    EXPECT_EQ(httpThreads(), 0);
    FeedServer server(silence());
    begin(server.address("/"));
    runUntil([&] { return server.requests.size() == 1; });
    EXPECT_EQ(httpThreads(), 1);
    running.reset();
    runUntil([] { return httpThreads() == 0; });
}

TEST_F(HttpTasksTest, TheSessionEndsAtOnceWhateverIsUnderWay) {
    FeedServer quiet(silence());
    FeedServer secure(half(), FeedServer::Kind::secure);
    std::vector<std::unique_ptr<UrlTask>> tasks;
    int told = 0;
    for (const FeedServer* server : {&quiet, &secure}) {
        request.url = server->address("/");
        tasks.push_back(session->fetchData(request, [&](const UrlResult&) { ++told; }));
    }
    runUntil([&] { return quiet.requests.size() + secure.requests.size() == 2; });
    MainThreadGaps gaps(loop);
    session.reset();
    EXPECT_LT(gaps.longest(), stall);
    runUntil([] { return httpThreads() == 0; });
    runUntil([&] { return quiet.connections() + secure.connections() == 0; });
    EXPECT_EQ(told, 0);
    tasks.clear(); // tasks may outlive the session
    session.emplace(loop, settings);
    request.url = quiet.address("/");
    tasks.push_back(session->fetchData(request, [&](const UrlResult&) { ++told; }));
    session.reset(); // before the thread has done anything
    tasks.clear();
    runOn();
    EXPECT_EQ(told, 0);
}

TEST_F(HttpTasksTest, WhatACompletionHoldsGoesWithTheTaskOnTheMainThread) {
    FeedServer server(silence());
    const auto mainThread = std::this_thread::get_id();
    std::thread::id endedOn;
    std::shared_ptr<int> holds(new int, [&](const int* gone) {
        endedOn = std::this_thread::get_id();
        delete gone;
    });
    request.url = server.address("/");
    running = session->fetchData(request, [holds](const UrlResult&) {});
    holds.reset();
    session.reset();
    EXPECT_EQ(endedOn, std::thread::id());
    running.reset();
    EXPECT_EQ(endedOn, mainThread);
}

TEST_F(HttpTasksTest, FiftyAtOnceAllComeToTheirEnds) {
    constexpr int count = 50;
    std::vector<std::unique_ptr<UrlTask>> tasks(count);
    std::vector<std::string> bodies(count);
    FeedServer server([](const std::string& asked, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", asked.substr(5, asked.rfind(' ') - 5)));
    });
    int left = count;
    for (int one = 0; one < count; ++one) {
        request.url = server.address("/" + std::to_string(one));
        tasks[one] = session->fetchData(request, [&, one](UrlResult ended) {
            if (const auto* response = std::get_if<UrlResponse>(&ended)) {
                bodies[one] = *response->body;
            }
            tasks[one].reset();
            --left;
        });
    }
    runUntil([&] { return left == 0; });
    for (int one = 0; one < count; ++one) {
        EXPECT_EQ(bodies[one], std::to_string(one));
    }
    runUntil([] { return httpThreads() == 0; });
}

TEST_F(HttpTasksTest, ACompletionMayBeginTheNextFetch) {
    FeedServer server([](const std::string& asked, QTcpSocket& client) {
        client.write(httpAnswer("200 OK", asked));
    });
    int done = 0;
    std::function<void()> next = [&] {
        request.url = server.address("/");
        running = session->fetchData(request, [&](const UrlResult& ended) {
            EXPECT_TRUE(std::holds_alternative<UrlResponse>(ended));
            if (++done < 20) {
                next();
            }
        });
    };
    next();
    runUntil([&] { return done == 20; });
}

TEST_F(HttpTasksTest, ConnectionsAreNotInherited) {
    FeedServer server(silence());
    begin(server.address("/"));
    runUntil([&] { return server.requests.size() == 1; });
    int connected = 0;
    for (int descriptor = 0; descriptor < 1000; ++descriptor) {
        sockaddr_in peer{};
        socklen_t size = sizeof peer;
        if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) == 0 &&
            peer.sin_family == AF_INET) {
            ++connected;
            EXPECT_TRUE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC);
        }
    }
    EXPECT_EQ(connected, 2); // ours and the server's
}

} // namespace
} // namespace quillon
