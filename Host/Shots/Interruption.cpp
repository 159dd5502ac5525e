#include "Host/Shots/Interruption.h"

namespace Kerovane::Host {

namespace {

std::atomic<bool> sRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal's handler sets it");

void Request(int) {
    sRequested = true;
}

} // namespace

Interruption::Interruption() {
    sRequested = false;
    struct sigaction action {};
    action.sa_handler = Request;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &mBefore[i]);
        if (mBefore[i].sa_handler != SIG_IGN) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], &mBefore[i], nullptr);
    }
}

const std::atomic<bool>& Interruption::requested() {
    return sRequested;
}

} // namespace Kerovane::Host
