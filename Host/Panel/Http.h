#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** The parts of a request's header that the panel uses. */
struct HttpHead {
    std::string method;
    std::string target; ///< path and query as sent
    std::string host{};
    std::string origin{}; ///< empty if none was sent
};

struct HttpRequest {
    HttpHead head;
    std::string body{};
};

struct HttpReply {
    int status = 200;
    std::string type = "text/plain; charset=utf-8";
    std::string body{};
    std::vector<std::pair<std::string, std::string>> headers{}; ///< besides those the server sets
};

} // namespace Kerovane::Host
