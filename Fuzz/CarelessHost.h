#pragma once

#include "Fuzz/FuzzedFrame.h"
#include "Host/Session/EffectSession.h"

namespace Kerovane::Fuzz {

/**
 * Runs the effect in a host that does not check the values it passes on. Only one may exist at a
 * time.
 */
class CarelessHost {
public:
    /// Loads the effect and sets it up. Throws Error if nothing can be drawn.
    CarelessHost();
    ~CarelessHost();
    CarelessHost(const CarelessHost&) = delete;
    CarelessHost& operator=(const CarelessHost&) = delete;

    PF_Err call(PF_Cmd command) { return mSession.call(command); }

    /// Renders `input` with the parameters and records of `frame`.
    PF_Err render(const FuzzedFrame& frame, const Host::World& input, Host::World& output);

    Host::LiveCounts liveCounts() const { return mSession.liveCounts(); }

private:
    Host::EffectSession mSession;
};

} // namespace Kerovane::Fuzz
