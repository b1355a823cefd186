#include "Platform/MacOS/MacRunLoop.h"
#include "Platform/MacOS/MacUrlSession.h"

#include "fakes/FakeDispatch.h"
#include "fakes/FakeUrls.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeDispatch;
using fakes::fakeUrls;

constexpr const char* page = "https://quillon.example/tools/catalog";

class UrlSessionTest : public testing::Test {
  protected:
    UrlSessionTest() {
        fakeDispatch().reset();
        fakeUrls().reset();
    }

    std::unique_ptr<UrlTask> fetch(UrlRequest request) {
        return session.fetchData(
            std::move(request), [this](UrlResult result) { results.push_back(std::move(result)); });
    }
    std::unique_ptr<UrlTask> fetch(std::size_t largestBody = 100) {
        return fetch({.url = page, .largestBody = largestBody});
    }

    /// What the main thread is told, in a word.
    std::string told() {
        fakeDispatch().main.run();
        if (results.size() != 1) {
            return std::to_string(results.size()) + " results";
        }
        if (const auto* error = std::get_if<UrlError>(&results[0])) {
            return "error: " + error->description;
        }
        const auto& response = std::get<UrlResponse>(results[0]);
        return (response.statusCode ? std::to_string(*response.statusCode) : "no status") + ": " +
               *response.body;
    }

    MacRunLoop runLoop;
    MacUrlSession session{runLoop};
    std::vector<UrlResult> results;
};

TEST_F(UrlSessionTest, AFetchIsAPlainRequestOfASessionThatKeepsNothing) {
    const auto task = fetch({.url = page, .largestBody = 1, .patience = 20});
    ASSERT_EQ(fakeUrls().fetches.size(), 1U);
    const auto& made = fakeUrls().fetches[0];
    EXPECT_EQ(made.url, page);
    EXPECT_EQ(made.cachePolicy, 1U);
    EXPECT_EQ(made.requestTimeout, 20);
    EXPECT_EQ(made.timeoutForRequest, 20);
    EXPECT_EQ(made.timeoutForResource, 900);
    EXPECT_FALSE(made.isEphemeral);
    EXPECT_FALSE(made.hasDelegateQueue) << "a thread of its own, not the main one";
    EXPECT_TRUE(made.isResumed);
    EXPECT_TRUE(made.endsSession) << "or the session would live forever";
    EXPECT_EQ(made.cancels, 0);
}

TEST_F(UrlSessionTest, APatienceThatMakesNoSenseIsTheUsualOne) {
    const auto none = fetch({.url = page, .patience = 0});
    const auto endless = fetch({.url = page, .patience = std::numeric_limits<double>::infinity()});
    EXPECT_EQ(fakeUrls().fetches.at(0).requestTimeout, 60);
    EXPECT_EQ(fakeUrls().fetches.at(1).requestTimeout, 60);
}

TEST_F(UrlSessionTest, TheCompletionIsToldOnTheMainThreadOnce) {
    const auto task = fetch();
    EXPECT_TRUE(fakeUrls().respond(0, 200, 6));
    fakeUrls().send(0, "abc");
    fakeUrls().send(0, "def");
    fakeUrls().complete(0);
    EXPECT_EQ(results.size(), 0U) << "not on the thread of the exchange";
    EXPECT_EQ(told(), "200: abcdef");
    EXPECT_EQ(told(), "200: abcdef");
}

TEST_F(UrlSessionTest, AnyStatusIsAnAnswer) {
    const auto task = fetch();
    EXPECT_TRUE(fakeUrls().respond(0, 404));
    fakeUrls().complete(0);
    EXPECT_EQ(told(), "404: ");
}

TEST_F(UrlSessionTest, AnAnswerOfAnotherKindHasNoStatus) {
    const auto task = fetch();
    EXPECT_TRUE(fakeUrls().respond(0, std::nullopt));
    fakeUrls().send(0, "x");
    fakeUrls().complete(0);
    EXPECT_EQ(told(), "no status: x");
}

TEST_F(UrlSessionTest, AFailureIsTheSystemsDescription) {
    const auto task = fetch();
    fakeUrls().complete(0, "The Internet connection appears to be offline.");
    EXPECT_EQ(told(), "error: The Internet connection appears to be offline.");
}

TEST_F(UrlSessionTest, WhatIsNoAddressOfTheWebFailsAfterTheCallHasReturned) {
    for (const char* address : {"", "no address", "file:///etc/passwd", "ftp://quillon.example/"}) {
        results.clear();
        const auto task = fetch({.url = address});
        EXPECT_EQ(results.size(), 0U);
        EXPECT_EQ(told(), "error: the address is not one of the web") << address;
    }
    EXPECT_EQ(fakeUrls().fetches.size(), 0U);
}

TEST_F(UrlSessionTest, TheSchemeMayBeInCapitals) {
    const auto task = fetch({.url = "HTTP://quillon.example/"});
    EXPECT_EQ(fakeUrls().fetches.size(), 1U);
}

TEST_F(UrlSessionTest, AnAnswerIsTakenUpToItsLimit) {
    const auto task = fetch(6);
    EXPECT_TRUE(fakeUrls().respond(0, 200, 6));
    fakeUrls().send(0, "abcdef");
    EXPECT_EQ(fakeUrls().fetches[0].cancels, 0);
    fakeUrls().complete(0);
    EXPECT_EQ(told(), "200: abcdef");
}

TEST_F(UrlSessionTest, AnAnswerThatSaysItIsTooLargeIsRefused) {
    const auto task = fetch(6);
    EXPECT_FALSE(fakeUrls().respond(0, 200, 7));
    fakeUrls().complete(0, "cancelled");
    EXPECT_EQ(told(), "error: the server's answer is too large");
}

TEST_F(UrlSessionTest, AnAnswerThatGrowsTooLargeIsGivenUp) {
    const auto task = fetch(6);
    EXPECT_TRUE(fakeUrls().respond(0, 200));
    fakeUrls().send(0, "abcd");
    EXPECT_EQ(fakeUrls().fetches[0].cancels, 0);
    fakeUrls().send(0, "efg");
    EXPECT_EQ(fakeUrls().fetches[0].cancels, 1);
    fakeUrls().send(0, "h");
    fakeUrls().complete(0, "cancelled");
    EXPECT_EQ(told(), "error: the server's answer is too large");
}

TEST_F(UrlSessionTest, RedirectsAreFollowedToWhereItIsAsSecure) {
    const auto task = fetch();
    EXPECT_TRUE(fakeUrls().redirect(0, "http://a.example/", "http://b.example/"));
    EXPECT_TRUE(fakeUrls().redirect(0, "http://b.example/", "HTTPS://c.example/"));
    EXPECT_TRUE(fakeUrls().redirect(0, "https://c.example/", "https://d.example/"));
    fakeUrls().respond(0, 200);
    fakeUrls().complete(0);
    EXPECT_EQ(told(), "200: ");
}

TEST_F(UrlSessionTest, RedirectsToWhereItIsLessSecureAreNot) {
    for (const char* to : {"http://b.example/", "file:///etc/passwd", "ftp://b.example/"}) {
        fakeUrls().reset();
        results.clear();
        const auto task = fetch();
        EXPECT_FALSE(fakeUrls().redirect(0, "https://a.example/", to)) << to;
        EXPECT_EQ(fakeUrls().fetches[0].cancels, 1);
        fakeUrls().complete(0, "cancelled");
        EXPECT_EQ(told(), "error: the server refers to an address that is not secure");
    }
}

TEST_F(UrlSessionTest, TheRequestMayRefuseARedirect) {
    std::vector<std::string> asked;
    const auto task = fetch({.url = page, .mayRedirect = [&](const auto& from, const auto& to) {
                                 asked.push_back(from + " " + to);
                                 return false;
                             }});
    EXPECT_FALSE(fakeUrls().redirect(0, "https://a.example/1", "https://b.example/2"));
    EXPECT_EQ(asked, std::vector<std::string>{"https://a.example/1 https://b.example/2"});
}

TEST_F(UrlSessionTest, RedirectsAreCounted) {
    const auto task = fetch({.url = page, .mostRedirects = 2});
    EXPECT_TRUE(fakeUrls().redirect(0, page, page));
    EXPECT_TRUE(fakeUrls().redirect(0, page, page));
    EXPECT_FALSE(fakeUrls().redirect(0, page, page));
    fakeUrls().complete(0, "cancelled");
    EXPECT_EQ(told(), "error: the server refers from one address to the next without end");
}

TEST_F(UrlSessionTest, DestroyingATaskCancelsItAndNothingIsToldAnyMore) {
    const auto held = std::make_shared<int>(0);
    auto task = session.fetchData(
        {.url = page}, [this, held](UrlResult result) { results.push_back(std::move(result)); });
    task.reset();
    EXPECT_EQ(fakeUrls().fetches[0].cancels, 1);
    EXPECT_EQ(held.use_count(), 1) << "what the completion holds ends on the main thread";
    fakeUrls().complete(0, "cancelled");
    EXPECT_EQ(told(), "0 results");
}

TEST_F(UrlSessionTest, ATaskMayBeDestroyedWhileItsResultIsOnItsWayAndByItsCompletion) {
    auto task = fetch();
    fakeUrls().complete(0);
    task.reset();
    EXPECT_EQ(told(), "0 results");
    int calls = 0;
    task = session.fetchData({.url = page}, [&](const UrlResult&) {
        task.reset();
        ++calls;
    });
    fakeUrls().complete(1);
    fakeDispatch().main.run();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace quillon
