#pragma once

#include "Tests/Effect/EffectFixture.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/LiveGLObjects.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Kerovane::TestSupport {

/// A command that the host sends.
struct Command {
    std::string name;
    std::function<void()> before; ///< brings the effect into the state for the command
    std::function<PF_Err()> send;
    std::function<void()> after; ///< brings the effect back into a state in which it renders
};

/** A test that makes every command fail and checks that nothing is left behind. */
class CommandWalk : public EveryModule {
protected:
    static constexpr int kWidth = 40;
    static constexpr int kHeight = 30;

    static Host::World input(Host::Depth depth);

    /// Returns an output filled with a mark, so that the bytes that a frame writes can be told from
    /// the others.
    static Host::World markedOutput(Host::Depth depth);

    /// Returns the commands that do something: set-up, set-down, parameters, frames at every depth.
    /// The first must be sent before any frame.
    std::vector<Command> commands();

    /// Brings the effect into the state for `command`, calls `sendFaulty`, and expects that nothing
    /// is left behind and the next frames are right.
    void expectNothingLeft(const Command& command, const std::function<void()>& sendFaulty);

    /// Renders frames and expects the same pictures as at the first call.
    void expectFramesAreRight();

    /// Sets the effect down and expects that no GL object or context is left.
    void expectNothingAfterSetdown();

    EglHost mHostContext;
    LiveGLObjects mLive; ///< complete, because no object exists before the first frame

private:
    /// Returns the numbers of live objects by kind. Leaves out programs, because the effect keeps
    /// the program of each new variant.
    std::map<std::string, int> objectsOfFrames() const;

    std::map<Host::Depth, Host::World> mExpected;
    std::map<std::string, int> mExpectedObjects;
};

} // namespace Kerovane::TestSupport
