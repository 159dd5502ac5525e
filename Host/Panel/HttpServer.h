#pragma once

#include "Host/Panel/Http.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace Kerovane::Host {

/// What a server bears. Connections beyond are closed, requests beyond refused.
struct ServerLimits {
    std::size_t connections = 128;
    std::uint32_t headBytes = 16U << 10U;
    std::size_t bodyBytes = 512U << 20U;        ///< of all requests at a time
    std::chrono::milliseconds idle{30000};      ///< between requests, and for a request's head
    std::chrono::milliseconds transfer{120000}; ///< of a body, or of an answer
    double requestsPerSecond = 1000;
};

/** What answers the requests of a server. Called on several threads at a time. */
class HttpService {
public:
    HttpService() = default;
    virtual ~HttpService() = default;
    HttpService(const HttpService&) = delete;
    HttpService& operator=(const HttpService&) = delete;

    /// Before its body is read: the most bytes that this may have, or nothing if the request is not
    /// to be answered.
    virtual std::optional<std::size_t> mostBody(const HttpHead& head) = 0;

    virtual HttpReply answer(const HttpRequest& request) = 0;
};

/**
 * Answers HTTP/1.1 on 127.0.0.1 alone. One thread serves all connections, so that slow ones cost
 * nobody anything; answers are made on a few others.
 */
class HttpServer {
public:
    /// `port` 0 takes a free one. `service` outlives the server. Throws Error if the port can't be
    /// had.
    HttpServer(std::uint16_t port, HttpService& service, const ServerLimits& limits = {});
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;

    /// Until `stop` is true.
    void run(const std::atomic<bool>& stop);

private:
    class Implementation;
    std::unique_ptr<Implementation> mImplementation;
};

} // namespace Kerovane::Host
