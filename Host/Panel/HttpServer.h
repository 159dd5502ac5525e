#pragma once

#include "Host/Panel/Http.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace Kerovane::Host {

/// The limits of a server. It closes connections and refuses requests that exceed them.
struct ServerLimits {
    std::size_t connections = 128;
    std::uint32_t headBytes = 16U << 10U;
    std::size_t bodyBytes = 512U << 20U;   ///< of all requests being received or answered together
    std::chrono::milliseconds idle{30000}; ///< longest wait for a request's header
    std::chrono::milliseconds transfer{120000}; ///< longest time to receive a body or send a reply
    double requestsPerSecond = 1000;
};

/** Answers the requests of a server. Called on several threads concurrently. */
class HttpService {
public:
    HttpService() = default;
    virtual ~HttpService() = default;
    HttpService(const HttpService&) = delete;
    HttpService& operator=(const HttpService&) = delete;

    /// Returns the largest body that the request may have, before the body is read. Returns nothing
    /// if the request must be refused.
    virtual std::optional<std::size_t> mostBody(const HttpHead& head) = 0;

    virtual HttpReply answer(const HttpRequest& request) = 0;
};

/**
 * An HTTP/1.1 server on 127.0.0.1 only. One thread handles the input and output of all connections,
 * so slow clients do not block others; a few worker threads make the replies.
 */
class HttpServer {
public:
    /// Listens on `port`, or on any free one if it is 0. `service` must outlive the server. Throws
    /// Error if the port is not available.
    HttpServer(std::uint16_t port, HttpService& service, const ServerLimits& limits = {});
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t port() const;

    /// Serves until `stop` is true.
    void run(const std::atomic<bool>& stop);

private:
    class Implementation;
    std::unique_ptr<Implementation> mImplementation;
};

} // namespace Kerovane::Host
