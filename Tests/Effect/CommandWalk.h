#pragma once

#include "Tests/Effect/EffectFixture.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/LiveGLObjects.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Kerovane::TestSupport {

/// A command of the host's.
struct Command {
    std::string name;
    std::function<void()> before; ///< brings the effect to where the command is sent
    std::function<PF_Err()> send;
    std::function<void()> after; ///< brings it back to where it renders
};

/** A test that makes every command fail, and looks at what that leaves behind. */
class CommandWalk : public EveryModule {
protected:
    static constexpr int kWidth = 40;
    static constexpr int kHeight = 30;

    static Host::World input(Host::Depth depth);

    /// An output whose every byte tells whether it was written.
    static Host::World markedOutput(Host::Depth depth);

    /// The commands that do something, the first of which wants no frame before it: set-up,
    /// set-down, parameters, frames at every depth...
    std::vector<Command> commands();

    /// Brings the effect to where the command is sent, has `sendFaulty` send it, and expects that
    /// nothing is left behind and the next frames are right.
    void expectNothingLeft(const Command& command, const std::function<void()>& sendFaulty);

    /// Expects the frames of its first call.
    void expectFramesAreRight();

    /// Sets down and expects that no GL object or context is left.
    void expectNothingAfterSetdown();

    EglHost mHostContext;
    LiveGLObjects mLive; ///< nothing is made before the first frame

private:
    /// Live objects by kind. Programs are left out: a variant may be new, and is kept.
    std::map<std::string, int> objectsOfFrames() const;

    std::map<Host::Depth, Host::World> mExpected;
    std::map<std::string, int> mExpectedObjects;
};

} // namespace Kerovane::TestSupport
