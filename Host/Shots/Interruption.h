#pragma once

#include <array>
#include <atomic>
#include <csignal>

namespace Kerovane::Host {

/**
 * While an object exists, the first SIGINT (Ctrl-C), SIGTERM or SIGHUP makes requested() true. A
 * second signal of the same kind ends the process as usual. Signals that the process inherited as
 * ignored stay ignored. At most one object may exist in a process.
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
