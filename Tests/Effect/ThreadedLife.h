#pragma once

#include "Tests/Effect/EffectFixture.h"

#include <functional>

namespace Kerovane::TestSupport {

/// Returns whether the host's context is current on this thread, with its surfaces. The function
/// object keeps that context alive.
using HostPresence = std::function<bool()>;

/// Creates the host's GL context, if it has any, on the calling thread.
using EnterHost = std::function<HostPresence()>;

HostPresence EnterHostWithoutContext();
HostPresence EnterEglHost();

/** A test of the effect in a host that calls it from many threads, one at a time. */
class ThreadedLife : public EveryModule {
protected:
    /**
     * Sets the effect up, renders on eight threads in turn, some of which end in between, and sets
     * it down on yet another thread; all of it twice, with the same threads. Expects the same
     * pictures on all threads, the host's context current after every command, and no GL object
     * left at the end.
     */
    void expectSamePictures(const EnterHost& enter);
};

} // namespace Kerovane::TestSupport
