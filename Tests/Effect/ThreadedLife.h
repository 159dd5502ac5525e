#pragma once

#include "Tests/Effect/EffectFixture.h"

#include <functional>

namespace Kerovane::TestSupport {

/// Tells whether what the host has made current on this thread is so, whole; keeps it alive.
using HostPresence = std::function<bool()>;

/// Makes the host's GL context, if it has any, on the calling thread.
using EnterHost = std::function<HostPresence()>;

HostPresence EnterHostWithoutContext();
HostPresence EnterEglHost();

/** A test of the effect in a host that calls it from many threads, one at a time. */
class ThreadedLife : public EveryModule {
protected:
    /**
     * Sets the effect up, renders on eight threads in turn, of which some end on the way, and sets
     * it down on yet another; all of it twice, with the same threads. Expects the same pictures on
     * all, the host's context current after every command and nothing of GL left in the end.
     */
    void expectSamePictures(const EnterHost& enter);
};

} // namespace Kerovane::TestSupport
