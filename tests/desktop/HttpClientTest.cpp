#include "platform/linux/http/QtHttpClient.h"

#include "desktop/support/Waiting.h"
#include "desktop/support/WebServer.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "support/Matching.h"

namespace quorvane::platform {
namespace {

class HttpClientTest : public testing::Test {
protected:
    static void SetUpTestSuite() { server = std::make_unique<WebServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    [[nodiscard]] static std::string url(const std::string& path, const std::string& host = "localhost") {
        return server->url(path, host);
    }

    /// The result, or a failure if the completion does not come, or comes twice.
    HttpResult ask(const HttpRequest& request, const std::string& certificates = server->authority()) {
        QtHttpClient client("Quorvane/1.2.0", certificates);
        std::vector<HttpResult> results;
        auto exchange = client.send(request, [&](const HttpResult& result) { results.push_back(result); });
        EXPECT_TRUE(results.empty()) << "before send has returned";
        if (!waitUntil([&] { return !results.empty(); })) return HttpFailure{.cause = "the completion never came"};
        EXPECT_TRUE(staysTrue([&] { return results.size() == 1; }, 0.01s));
        return results.front();
    }

    [[nodiscard]] HttpResponse answerTo(const HttpRequest& request) {
        const auto result = ask(request);
        if (const auto* failure = std::get_if<HttpFailure>(&result)) ADD_FAILURE() << failure->cause;
        const auto* const response = std::get_if<HttpResponse>(&result);
        return response ? *response : HttpResponse{};
    }

    static std::unique_ptr<WebServer> server;
    QtRunLoop runLoop;
};

std::unique_ptr<WebServer> HttpClientTest::server;

TEST_F(HttpClientTest, BringsStatusHeadersAndBytesAsTheyAre) {
    const auto response = answerTo({.url = url("ok")});
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.body, std::string("hello\0\xff", 7));
    EXPECT_THAT(response.headers, Contains(HttpHeader{"X-Kind", "greeting"}));

    const std::tuple<const char*, int, std::string> rows[] = {{"missing", 404, "no such page"},
                                                              {"password", 401, "who?"},
                                                              {"broken", 503, "later"},
                                                              {"moved", 302, "moved"},
                                                              {"packed", 200, "\x1f\x8b not packed at all"}};
    for (const auto& [path, status, body] : rows) {
        SCOPED_TRACE(path);
        const auto answer = answerTo({.url = url(path)});
        EXPECT_EQ(answer.status, status);
        EXPECT_EQ(answer.body, body);
    }
}

TEST_F(HttpClientTest, SendsABodyAndNoMoreAboutItselfThanItMust) {
    const auto posted = answerTo({.method = "POST",
                                  .url = url("in"),
                                  .headers = {{"Content-Type", "application/gzip"}},
                                  .body = std::string("\x1f\x8b\0x", 4)});
    EXPECT_EQ(posted.status, 202);
    EXPECT_EQ(posted.body, "application/gzip|" + std::string("\x1f\x8b\0x", 4));
    (void)answerTo({.url = url("ok")});  // brings a cookie
    EXPECT_EQ(answerTo({.url = url("headers")}).body,
              "Accept-Encoding: identity\nAccept-Language: *\nConnection: close\nUser-Agent: Quorvane/1.2.0");
}

TEST_F(HttpClientTest, FollowsRedirectsOfTheSameOriginAlone) {
    using enum HttpFailure::Kind;
    constexpr auto sameOrigin = HttpRequest::Redirects::sameOrigin;
    EXPECT_EQ(answerTo({.url = url("moved"), .redirects = sameOrigin}).body, std::string("hello\0\xff", 7));
    for (const char* path : {"plain", "elsewhere", "file", "round"}) {
        SCOPED_TRACE(path);
        const auto result = ask({.url = url(path), .redirects = sameOrigin});
        const auto* const failure = std::get_if<HttpFailure>(&result);
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->kind, refused) << failure->cause;
    }
}

TEST_F(HttpClientTest, EveryOtherEndIsAFailureThatSaysWhy) {
    using enum HttpFailure::Kind;
    const std::string none;
    const struct {
        const char* name;
        HttpRequest request;
        HttpFailure::Kind kind;
        const char* cause;
        std::string certificates = server->authority();
    } rows[] = {
        {"no TLS", {.url = "http://localhost:" + server->port() + "/ok"}, refused, "no https URL"},
        {"a file", {.url = "file:///etc/passwd"}, refused, "no https URL"},
        {"no URL", {.url = "https://"}, refused, "no https URL"},
        {"wrong name", {.url = url("ok", "127.0.0.1")}, insecure, "host name did not match"},
        {"unknown authority", {.url = url("ok")}, insecure, "certificate", none},
        {"nobody listens", {.url = "https://localhost:1/"}, unreachable, "refused"},
        {"reset", {.url = url("reset")}, unreachable, "closed"},
        {"cut off", {.url = url("cut")}, unreachable, "closed"},
        {"large", {.url = url("large"), .maximumBytes = 100'000}, tooLarge, "larger than 100000 bytes"},
        {"endless", {.url = url("endless"), .maximumBytes = 100'000}, tooLarge, "larger than 100000 bytes"},
        {"hangs", {.url = url("hang"), .timeout = 0.3s}, timedOut, "within 0.3 s"},
        {"drips", {.url = url("drip"), .timeout = 0.3s}, timedOut, "within 0.3 s"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = ask(row.request, row.certificates);
        const auto* const failure = std::get_if<HttpFailure>(&result);
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->kind, row.kind) << failure->cause;
        EXPECT_THAT(failure->cause, AllOf(HasSubstr(row.cause), Not(HasSubstr("\n"))));
    }
    EXPECT_EQ(answerTo({.url = url("large"), .maximumBytes = 100'001}).body.size(), 100'001U);
}

TEST_F(HttpClientTest, WhatIsDroppedStaysSilentAlsoInItsOwnCompletionAndAfterItsClient) {
    int completed = 0;
    std::unique_ptr<HttpExchange> exchange;
    std::unique_ptr<HttpExchange> cancelled;
    auto client = std::make_unique<QtHttpClient>("Quorvane", server->authority());
    cancelled = client->send({.url = url("ok")}, [&](const HttpResult&) { completed += 100; });
    cancelled.reset();
    cancelled = client->send({.url = "nothing"}, [&](const HttpResult&) { completed += 100; });
    cancelled.reset();
    exchange = client->send({.url = url("ok")}, [&](const HttpResult& result) {
        exchange.reset();
        completed += std::holds_alternative<HttpResponse>(result) ? 1 : 10;
    });
    client.reset();
    ASSERT_TRUE(waitUntil([&] { return completed > 0; }));
    std::unique_ptr<HttpExchange> late;
    late = QtHttpClient("Quorvane", server->authority())
               .send({.url = url("hang"), .timeout = 0.1s}, [&](const HttpResult&) {
                   late.reset();
                   ++completed;
               });
    ASSERT_TRUE(waitUntil([&] { return completed > 1; }));
    EXPECT_TRUE(staysTrue([&] { return completed == 2; }, 0.1s));
}

TEST_F(HttpClientTest, BetweenRequestsNothingWakesTheProcess) {
    (void)answerTo({.url = url("ok")});
    (void)wakeUpsDuring(0.1s);
    EXPECT_LE(wakeUpsDuring(0.4s), 2) << "the end of the measurement is one";
}

}  // namespace
}  // namespace quorvane::platform
