#include "Host/Panel/Gate.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(Gate, AdmitsOnlyRequestsOfItsOwnPage) {
    const AccessToken token;
    const Gate gate(token);
    const std::string path = '/' + token.text() + "/still?frame=1";
    std::string wrong = path;
    wrong[1] = wrong[1] == '0' ? '1' : '0';
    struct Row {
        HttpHead head;
        bool isIn;
    };
    const Row kRows[] = {
        {{"GET", path, "127.0.0.1:8080"}, true},
        // Through a tunnel, which may end at another port.
        {{"GET", path, "localhost:9", "http://localhost:9"}, true},
        {{"GET", path, "[::1]"}, true},
        {{"GET", "/still", "127.0.0.1"}, false},
        {{"GET", "/", "127.0.0.1"}, false},
        {{"GET", "", "127.0.0.1"}, false},
        {{"GET", '/' + token.text(), "127.0.0.1"}, false},
        {{"GET", '/' + token.text().substr(1) + "/", "127.0.0.1"}, false},
        {{"GET", wrong, "127.0.0.1"}, false},
        {{"GET", "http://127.0.0.1" + path, "127.0.0.1"}, false},
        {{"GET", path, ""}, false},
        {{"GET", path, "example.org"}, false},
        {{"GET", path, "127.0.0.1.example.org"}, false},
        {{"GET", path, "localhost:"}, false},
        {{"GET", path, "localhost:80@example.org"}, false},
        {{"POST", path, "127.0.0.1:8080", "http://example.org"}, false},
        {{"POST", path, "127.0.0.1:8080", "http://127.0.0.1:8081"}, false},
        {{"POST", path, "127.0.0.1:8080", "https://127.0.0.1:8080"}, false},
        {{"POST", path, "127.0.0.1:8080", "null"}, false},
    };
    for (const auto& [head, isIn] : kRows) {
        EXPECT_EQ(gate.admit(head).has_value(), isIn)
            << head.target << ' ' << head.host << ' ' << head.origin;
    }
}

TEST(ParseTarget, SplitsPathAndQuery) {
    const auto target = ParseTarget("a/b?x=1&name=a%20b%2F%C3%A4+c&empty");
    ASSERT_TRUE(target);
    EXPECT_EQ(target->path, "a/b");
    const std::map<std::string, std::string, std::less<>> kQuery{
        {"x", "1"}, {"name", "a b/\u00E4 c"}, {"empty", ""}};
    EXPECT_EQ(target->query, kQuery);
    for (const char* malformed : {"?a=%", "?a=%4", "?a=%zz", "?a=%00", "?a=1&a=2", "?%0a=1"}) {
        EXPECT_FALSE(ParseTarget(malformed)) << malformed;
    }
    EXPECT_FALSE(ParseTarget(std::string(5000, 'a')));
    std::string many = "?";
    for (int i = 0; i < 40; ++i) {
        many += std::to_string(i) + "=&";
    }
    EXPECT_FALSE(ParseTarget(many));
}

} // namespace
} // namespace Kerovane::Host
