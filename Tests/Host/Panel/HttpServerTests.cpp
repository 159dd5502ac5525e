#include "Host/Panel/HttpServer.h"

#include "Host/Panel/RateLimit.h"
#include "Tests/Host/Panel/RawClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace Kerovane::Host {
namespace {

using namespace std::chrono_literals;

/// Answers with the target and the body of the request.
class Echo : public HttpService {
public:
    std::optional<std::size_t> mostBody(const HttpHead& head) override {
        return head.target == "/secret" ? std::nullopt : std::optional<std::size_t>(100);
    }
    HttpReply answer(const HttpRequest& request) override {
        if (request.head.target == "/slow") {
            std::this_thread::sleep_for(100ms);
        }
        return {.body = request.head.target + ' ' + request.body +
                        (request.head.target == "/large" ? std::string(20U << 20U, 'x') : "")};
    }
};

class HttpServerTest : public testing::Test {
protected:
    ~HttpServerTest() override {
        mStop = true;
        mThread.join();
    }

    static std::string get(const std::string& target) {
        return "GET " + target + " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n";
    }

    static std::string post(const std::string& length, const std::string& body) {
        return "POST / HTTP/1.1\r\nHost: a\r\nConnection: close\r\nContent-Length: " + length +
               "\r\n\r\n" + body;
    }

    void expectAlive() { EXPECT_EQ(RawClient::statusOf(mServer.port(), get("/")), 200); }

    Echo mEcho;
    HttpServer mServer{0, mEcho,
                       ServerLimits{.connections = 120,
                                    .headBytes = 4096,
                                    .bodyBytes = 150,
                                    .idle = 300ms,
                                    .transfer = 500ms,
                                    .requestsPerSecond = 1000}};
    std::atomic<bool> mStop = false;
    std::thread mThread{[this] { mServer.run(mStop); }};
};

TEST_F(HttpServerTest, RefusesOversizedAndMalformedRequests) {
    struct Row {
        std::string request;
        int status; ///< 0: the connection just ends
    };
    const Row kRows[] = {
        {get("/"), 200},
        {post("3", "abc"), 200},
        {get("/secret"), 403},
        {post("101", ""), 413},
        {post("99999999999999999999999", ""), 400},
        {post("-1", ""), 400},
        {"POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n" +
             std::string("ff\r\n") + std::string(255, 'x') + "\r\n0\r\n\r\n",
         413},
        {get('/' + std::string(8000, 'a')), 431},
        {"nonsense\r\n\r\n", 400},
        {"GET / HTTP/1.1\r\nbroken header\r\n\r\n", 400},
        {std::string("\0\1\2\3\r\n\r\n", 8), 400},
    };
    for (const auto& [request, status] : kRows) {
        EXPECT_EQ(RawClient::statusOf(mServer.port(), request), status) << request.substr(0, 60);
    }
    expectAlive();
}

TEST_F(HttpServerTest, SendsSecurityHeaders) {
    const RawClient client(mServer.port());
    client.send(get("/secret"));
    const std::string answer = client.receive();
    for (const char* header : {"Cache-Control: no-store", "default-src 'none'",
                               "Referrer-Policy: no-referrer", "X-Content-Type-Options: nosniff"}) {
        EXPECT_NE(answer.find(header), std::string::npos) << header;
    }
}

TEST_F(HttpServerTest, ServesAHundredClientsAtOnce) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(std::make_unique<RawClient>(mServer.port()));
        clients.back()->send(get(i % 10 == 0 ? "/slow" : '/' + std::to_string(i)));
    }
    for (const auto& client : clients) {
        EXPECT_TRUE(client->receive().starts_with("HTTP/1.1 200")) << client->isConnected();
    }
}

TEST_F(HttpServerTest, ClosesExcessAndStalledConnections) {
    std::vector<std::unique_ptr<RawClient>> stalling;
    for (int i = 0; i < 150; ++i) {
        stalling.push_back(std::make_unique<RawClient>(mServer.port()));
        stalling.back()->send(i > 0 ? "GET / HT" : post("100", "only this"));
    }
    EXPECT_EQ(stalling.back()->receive(), ""); // closed at once
    std::this_thread::sleep_for(800ms);        // longer than a request may take to arrive
    EXPECT_EQ(stalling.front()->receive(100), "");
    expectAlive();
}

TEST_F(HttpServerTest, LimitsTheBodiesOfAllRequestsTogether) {
    const RawClient first(mServer.port());
    first.send(post("100", "some"));
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(RawClient::statusOf(mServer.port(), post("60", "")), 503);
    EXPECT_EQ(RawClient::statusOf(mServer.port(), post("3", "abc")), 200);
    std::this_thread::sleep_for(600ms); // by now the first request is dropped
    EXPECT_EQ(RawClient::statusOf(mServer.port(), post("60", std::string(60, 'x'))), 200);
}

TEST_F(HttpServerTest, SurvivesClientsThatDisconnect) {
    for (const char* target : {"/large", "/slow"}) {
        for (int i = 0; i < 10; ++i) {
            const RawClient client(mServer.port());
            client.send(get(target));
        }
    }
    RawClient(mServer.port()).send(post("100", "half"));
    expectAlive();
}

TEST_F(HttpServerTest, DropsClientsThatDoNotReadTheirAnswer) {
    const RawClient client(mServer.port());
    client.send(get("/large"));
    std::this_thread::sleep_for(900ms);
    EXPECT_LT(client.receive(100).size(), 20U << 20U);
    expectAlive();
}

TEST(RateLimit, PassesItsNumberPerSecond) {
    RateLimit limit(10);
    const RateLimit::Clock::time_point now = RateLimit::Clock::now();
    int passed = 0;
    for (int i = 0; i < 100; ++i) {
        passed += limit.pass(now + std::chrono::milliseconds(i * 20)) ? 1 : 0;
    }
    EXPECT_NEAR(passed, 10 + 20, 1); // 10 at once and 20 in two seconds
}

} // namespace
} // namespace Kerovane::Host
