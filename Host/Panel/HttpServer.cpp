#include "Host/Panel/HttpServer.h"

#include "Host/Panel/RateLimit.h"
#include "Host/Text/Error.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <fmt/format.h>

#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace Kerovane::Host {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using Tcp = asio::ip::tcp;

constexpr std::size_t kWorkers = 4;

/// Adds headers with which the browser loads and runs only what this server sent.
void SecureReply(http::response<http::string_body>& response) {
    response.set(http::field::cache_control, "no-store");
    response.set("Content-Security-Policy",
                 "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; "
                 "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    response.set("Cross-Origin-Opener-Policy", "same-origin");
    response.set("Cross-Origin-Resource-Policy", "same-origin");
    response.set("Referrer-Policy", "no-referrer");
    response.set("X-Content-Type-Options", "nosniff");
}

std::string TextOf(beast::string_view text) {
    return {text.data(), text.size()};
}

HttpReply Answer(HttpService& service, const HttpRequest& request) noexcept {
    try {
        return service.answer(request);
    } catch (const std::bad_alloc&) {
        return {.status = 503, .body = "out of memory"};
    } catch (const std::exception& error) {
        return {.status = 500, .body = error.what()};
    }
}

} // namespace

class HttpServer::Implementation {
public:
    Implementation(std::uint16_t port, HttpService& service, const ServerLimits& limits)
        : mService(service),
          mLimits(limits),
          mRate(limits.requestsPerSecond),
          mAcceptor(mContext),
          mWorkers(kWorkers),
          mWatch(mContext) {
        const Tcp::endpoint place(asio::ip::address_v4::loopback(), port);
        try {
            mAcceptor.open(place.protocol());
            mAcceptor.set_option(Tcp::acceptor::reuse_address(true));
            mAcceptor.bind(place);
            mAcceptor.listen();
        } catch (const boost::system::system_error& error) {
            throw Error(fmt::format("cannot listen on port {}: {}", port, error.code().message()));
        }
    }

    std::uint16_t port() const { return mAcceptor.local_endpoint().port(); }

    void run(const std::atomic<bool>& stop) {
        accept();
        watch(stop);
        mContext.run();
        mWorkers.join();
    }

private:
    class Connection;

    void accept() {
        mAcceptor.async_accept([this](boost::system::error_code error, Tcp::socket socket) {
            if (!error) {
                serve(std::move(socket));
            }
            accept();
        });
    }

    void serve(Tcp::socket socket);

    /// Polls `stop`, because a signal handler can do no more than set a flag.
    void watch(const std::atomic<bool>& stop) {
        constexpr std::chrono::milliseconds kPause(100);
        if (stop) {
            mContext.stop();
            return;
        }
        mWatch.expires_after(kPause);
        mWatch.async_wait([this, &stop](boost::system::error_code) { watch(stop); });
    }

    HttpService& mService;
    ServerLimits mLimits;
    RateLimit mRate;
    std::size_t mConnections = 0;
    std::size_t mBodyBytes = 0; ///< bytes that all connections have reserved for bodies
    asio::io_context mContext{1};
    Tcp::acceptor mAcceptor;
    asio::thread_pool mWorkers;
    asio::steady_timer mWatch;
};

/** A connection, which handles one request after another. Pending operations keep it alive. */
class HttpServer::Implementation::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(Tcp::socket socket, Implementation& server)
        : mServer(server), mStream(std::move(socket)), mBuffer(kMostBuffered) {
        ++mServer.mConnections;
    }
    ~Connection() {
        release();
        --mServer.mConnections;
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void start() {
        boost::system::error_code ignored; // without the option, replies are only slower
        mStream.socket().set_option(Tcp::no_delay(true), ignored);
        readHead();
    }

private:
    static constexpr std::size_t kMostBuffered = 128U << 10U;

    void readHead() {
        mParser.emplace();
        mParser->header_limit(mServer.mLimits.headBytes);
        mParser->body_limit(std::numeric_limits<std::uint64_t>::max()); // readBody() sets it
        mStream.expires_after(mServer.mLimits.idle);
        http::async_read_header(mStream, mBuffer, *mParser,
                                [self = shared_from_this()](beast::error_code error, std::size_t) {
                                    error ? self->refuseHead(error) : self->readBody();
                                });
    }

    void refuseHead(beast::error_code error) {
        if (error == http::error::header_limit) {
            refuse(http::status::request_header_fields_too_large);
        } else if (error != http::error::end_of_stream &&
                   error.category() == http::make_error_code(http::error::bad_method).category()) {
            refuse(http::status::bad_request);
        }
    }

    void readBody() {
        const auto& message = mParser->get();
        mRequest = {.head = {.method = TextOf(message.method_string()),
                             .target = TextOf(message.target()),
                             .host = TextOf(message[http::field::host]),
                             .origin = TextOf(message[http::field::origin])}};
        if (!mServer.mRate.pass(RateLimit::Clock::now())) {
            return refuse(http::status::too_many_requests);
        }
        const std::optional<std::size_t> most = mServer.mService.mostBody(mRequest.head);
        if (!most) {
            return refuse(http::status::forbidden);
        }
        if (mParser->content_length() && *mParser->content_length() > *most) {
            return refuse(http::status::payload_too_large);
        }
        if (!reserve(mParser->chunked() ? *most : mParser->content_length().value_or(0))) {
            return refuse(http::status::service_unavailable);
        }
        mParser->body_limit(*most);
        mStream.expires_after(mServer.mLimits.transfer);
        http::async_read(mStream, mBuffer, *mParser,
                         [self = shared_from_this()](beast::error_code error, std::size_t) {
                             if (!error) {
                                 self->answer();
                             } else if (error == http::error::body_limit) {
                                 self->refuse(http::status::payload_too_large);
                             }
                         });
    }

    bool reserve(std::uint64_t bytes) {
        const bool fits = bytes <= mServer.mLimits.bodyBytes - mServer.mBodyBytes;
        if (fits) {
            mReserved = static_cast<std::size_t>(bytes);
            mServer.mBodyBytes += mReserved;
        }
        return fits;
    }

    void release() { mServer.mBodyBytes -= std::exchange(mReserved, 0); }

    void answer() {
        mStream.expires_never();
        mRequest.body = std::move(mParser->get().body());
        asio::post(mServer.mWorkers, [self = shared_from_this()]() mutable {
            auto reply =
                std::make_shared<HttpReply>(Answer(self->mServer.mService, self->mRequest));
            Connection& connection = *self;
            // Moves the last reference along, so that the connection is destroyed on the server's
            // thread.
            asio::post(connection.mServer.mContext,
                       [owner = std::move(self), reply] { owner->send(std::move(*reply)); });
        });
    }

    void send(HttpReply reply) {
        mRequest.body = {};
        release();
        mResponse = {static_cast<http::status>(reply.status), 11};
        mResponse.set(http::field::content_type, reply.type);
        for (const auto& [name, value] : reply.headers) {
            mResponse.set(name, value);
        }
        mResponse.body() = std::move(reply.body);
        mResponse.keep_alive(mParser->get().keep_alive());
        write();
    }

    /// Replies with an error and closes the connection without reading the rest of the request.
    void refuse(http::status status) {
        mResponse = {status, 11};
        mResponse.set(http::field::content_type, "text/plain");
        mResponse.body() = TextOf(http::obsolete_reason(status));
        mResponse.keep_alive(false);
        write();
    }

    void write() {
        SecureReply(mResponse);
        mResponse.prepare_payload();
        mStream.expires_after(mServer.mLimits.transfer);
        http::async_write(mStream, mResponse,
                          [self = shared_from_this()](beast::error_code error, std::size_t) {
                              if (!error && self->mResponse.keep_alive()) {
                                  self->mResponse = {};
                                  self->readHead();
                              } else {
                                  self->close();
                              }
                          });
    }

    void close() {
        boost::system::error_code ignored; // the connection may be gone already
        mStream.socket().shutdown(Tcp::socket::shutdown_send, ignored);
    }

    Implementation& mServer;
    beast::tcp_stream mStream;
    beast::flat_buffer mBuffer;
    std::optional<http::request_parser<http::string_body>> mParser;
    HttpRequest mRequest;
    std::size_t mReserved = 0; ///< this connection's part of mBodyBytes
    http::response<http::string_body> mResponse;
};

void HttpServer::Implementation::serve(Tcp::socket socket) {
    if (mConnections < mLimits.connections) {
        std::make_shared<Connection>(std::move(socket), *this)->start();
    }
}

HttpServer::HttpServer(std::uint16_t port, HttpService& service, const ServerLimits& limits)
    : mImplementation(std::make_unique<Implementation>(port, service, limits)) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
    return mImplementation->port();
}

void HttpServer::run(const std::atomic<bool>& stop) {
    mImplementation->run(stop);
}

} // namespace Kerovane::Host
