#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

/** A connection that sends any bytes. */
class RawClient {
public:
    explicit RawClient(std::uint16_t port)
        : mSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        mIsConnected =
            connect(mSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~RawClient() { close(mSocket); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool isConnected() const { return mIsConnected; }

    void send(const std::string& text) const {
        static_cast<void>(::send(mSocket, text.data(), text.size(), MSG_NOSIGNAL));
    }

    /// Receives until the server closes the connection or no more bytes come for `milliseconds`.
    std::string receive(int milliseconds = 5000) const {
        std::string all;
        std::array<char, 4096> piece{};
        pollfd waiting{.fd = mSocket, .events = POLLIN, .revents = 0};
        while (poll(&waiting, 1, milliseconds) > 0) {
            const ssize_t size = recv(mSocket, piece.data(), piece.size(), 0);
            if (size <= 0) {
                break;
            }
            all.append(piece.data(), static_cast<std::size_t>(size));
        }
        return all;
    }

    /// Sends `request` and returns the status of the answer; 0 if there is none. The request must
    /// ask to close the connection.
    static int statusOf(std::uint16_t port, const std::string& request) {
        const RawClient client(port);
        client.send(request);
        const std::string answer = client.receive();
        return answer.starts_with("HTTP/1.1 ") ? std::stoi(answer.substr(9, 3)) : 0;
    }

private:
    int mSocket;
    bool mIsConnected = false;
};
