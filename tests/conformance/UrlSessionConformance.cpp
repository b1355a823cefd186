#include "Conformance.h"

namespace quillon {
namespace {

class UrlSessionConformance : public Conformance {
  protected:
    void begin(const std::string& url) {
        request.url = url;
        result.reset();
        task = platform().urls.fetchData(request, [this](UrlResult ended) {
            ++completions;
            result = std::move(ended);
            task.reset(); // as callers do
        });
        EXPECT_TRUE(task);
        EXPECT_FALSE(result) << "within the call";
    }

    /// "STATUS BODY", or "error".
    std::string fetch(const std::string& url) {
        begin(url);
        EXPECT_TRUE(until([this] { return result.has_value(); }));
        return outcome();
    }

    [[nodiscard]] std::string outcome() const {
        if (!result) {
            return "nothing";
        }
        if (const auto* error = std::get_if<UrlError>(&*result)) {
            EXPECT_FALSE(error->description.empty());
            return "error";
        }
        const auto& response = std::get<UrlResponse>(*result);
        return std::to_string(response.statusCode.value_or(0)) + " " + *response.body;
    }

    /// Some other exchange has come to its end meanwhile.
    void runOn() {
        std::optional<UrlResult> other;
        UrlRequest another{.url = world->serve({.body = "other"}), .largestBody = 100};
        const auto fetching = platform().urls.fetchData(
            another, [&other](UrlResult ended) { other = std::move(ended); });
        ASSERT_TRUE(until([&] { return other.has_value(); }));
    }

    UrlRequest request{.largestBody = 1000};
    std::unique_ptr<UrlTask> task;
    std::optional<UrlResult> result;
    int completions = 0;
};

TEST_F(UrlSessionConformance, AnswersComeWithTheirStatus) {
    EXPECT_EQ(fetch(world->serve({.body = "hello"})), "200 hello");
    EXPECT_EQ(fetch(world->serve({.body = ""})), "200 ");
    EXPECT_EQ(fetch(world->serve({.status = 404, .body = "not here"})), "404 not here");
    EXPECT_EQ(fetch(world->serve({.status = 500, .body = "broken"})), "500 broken");
    EXPECT_EQ(completions, 4);
}

TEST_F(UrlSessionConformance, BodiesAreTakenByteByByte) {
    std::string body;
    for (int byte = 0; byte < 256; ++byte) {
        body += static_cast<char>(byte);
    }
    EXPECT_EQ(fetch(world->serve({.body = body})), "200 " + body);
}

TEST_F(UrlSessionConformance, WhereNobodyAnswersItIsAnError) {
    EXPECT_EQ(fetch(world->deadAddress()), "error");
    EXPECT_EQ(fetch(""), "error");
    EXPECT_EQ(completions, 2);
}

TEST_F(UrlSessionConformance, ABodyMayBeAsLargeAsTheRequestSays) {
    const std::string largest(request.largestBody, 'x');
    EXPECT_EQ(fetch(world->serve({.body = largest})), "200 " + largest);
    EXPECT_EQ(fetch(world->serve({.body = largest + "x"})), "error");
}

TEST_F(UrlSessionConformance, ADestroyedTaskIsSilent) {
    begin(world->serve({.body = "hello"}));
    task.reset();
    runOn();
    EXPECT_EQ(completions, 0);
}

TEST_F(UrlSessionConformance, ASilentServerHoldsNobodyUp) {
    begin(world->serve({.isSilent = true}));
    runOn();
    EXPECT_EQ(completions, 0);
    task.reset();
    runOn();
    EXPECT_EQ(completions, 0);
}

TEST_F(UrlSessionConformance, SeveralAtATimeAreApart) {
    std::vector<std::string> bodies(3);
    std::vector<std::unique_ptr<UrlTask>> tasks;
    int done = 0;
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        UrlRequest one{.url = world->serve({.body = std::to_string(i)}), .largestBody = 10};
        tasks.push_back(platform().urls.fetchData(one, [&, i](const UrlResult& ended) {
            ++done;
            if (const auto* response = std::get_if<UrlResponse>(&ended)) {
                bodies[i] = *response->body;
            }
        }));
    }
    ASSERT_TRUE(until([&] { return done == 3; }));
    EXPECT_EQ(bodies, (std::vector<std::string>{"0", "1", "2"}));
}

TEST_F(UrlSessionConformance, RedirectsAreFollowed) {
    QUILLON_REQUIRE_ACT(Act::redirect);
    const std::string end = world->serve({.body = "the end"});
    const std::string middle = world->serve({.status = 302, .location = end});
    EXPECT_EQ(fetch(world->serve({.status = 301, .location = middle})), "200 the end");
}

TEST_F(UrlSessionConformance, RedirectsAreLimited) {
    QUILLON_REQUIRE_ACT(Act::redirect);
    const std::string end = world->serve({.body = "the end"});
    const std::string second = world->serve({.status = 302, .location = end});
    const std::string first = world->serve({.status = 302, .location = second});
    request.mostRedirects = 2;
    EXPECT_EQ(fetch(first), "200 the end");
    request.mostRedirects = 1;
    EXPECT_EQ(fetch(first), "error");
}

TEST_F(UrlSessionConformance, RedirectsAreFollowedOnlyAsTheRequestAllows) {
    QUILLON_REQUIRE_ACT(Act::redirect);
    const std::string end = world->serve({.body = "the end"});
    const std::string start = world->serve({.status = 302, .location = end});
    std::string askedFrom;
    std::string askedTo;
    request.mayRedirect = [&](const std::string& from, const std::string& to) {
        askedFrom = from;
        askedTo = to;
        return false;
    };
    EXPECT_EQ(fetch(start), "error");
    EXPECT_EQ(askedFrom, start);
    EXPECT_EQ(askedTo, end);
}

TEST_F(UrlSessionConformance, RedirectsLeaveTheWebForNothing) {
    QUILLON_REQUIRE_ACT(Act::redirect);
    EXPECT_EQ(fetch(world->serve({.status = 302, .location = "file:///etc/hostname"})), "error");
    EXPECT_EQ(fetch(world->serve({.status = 302, .location = "ftp://127.0.0.1/"})), "error");
}

} // namespace
} // namespace quillon
