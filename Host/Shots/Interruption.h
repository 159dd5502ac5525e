#pragma once

#include <array>
#include <atomic>
#include <csignal>

namespace Kerovane::Host {

/**
 * While it lives, the first Ctrl-C (SIGINT), SIGTERM or SIGHUP only makes requested() true, and the
 * next one ends the process as usual. A signal that the process was started to ignore stays
 * ignored. One at a time in a process.
 */
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    static const std::atomic<bool>& requested();

private:
    static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

    std::array<struct sigaction, kSignals.size()> mBefore{};
};

} // namespace Kerovane::Host
