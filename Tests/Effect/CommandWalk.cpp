#include "Tests/Effect/CommandWalk.h"

#include "Tests/Support/EglContexts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Kerovane::TestSupport {

Host::World CommandWalk::input(Host::Depth depth) {
    return AtDepth(SmoothPicture(kWidth, kHeight, true), depth);
}

Host::World CommandWalk::markedOutput(Host::Depth depth) {
    Host::World output(depth, kWidth, kHeight);
    std::ranges::fill(output.bytes(), std::byte{0x33});
    return output;
}

std::vector<Command> CommandWalk::commands() {
    const auto nothing = [] {};
    const auto setDown = [this] { globalSetdown(); };
    const auto setUp = [this] { globalSetup(); };
    const auto setUpAnew = [this] {
        globalSetdown();
        globalSetup();
    };
    const auto call = [this](PF_Cmd command) {
        return [=, this] { return mSession.call(command); };
    };
    const auto giveHandles = [this] {
        PF_InData& inData = mSession.inData();
        inData.sequence_data = inData.utils->host_new_handle(8);
        inData.global_data = inData.utils->host_new_handle(8);
    };
    const auto takeHandles = [this] {
        mSession.inData().sequence_data = nullptr;
        mSession.inData().global_data = nullptr;
        globalSetup();
    };
    const auto frame = [this](Host::Depth depth) {
        return [this, depth] {
            Host::World output = markedOutput(depth);
            const PF_Err err = mSession.render(input(depth), output);
            EXPECT_TRUE(err == PF_Err_NONE || SamePixels(output, markedOutput(depth)))
                << "a frame that failed was written";
            return err;
        };
    };
    std::vector<Command> commands = {
        {"first set-down", nothing, call(PF_Cmd_GLOBAL_SETDOWN), setUpAnew},
        {"about", nothing, call(PF_Cmd_ABOUT), nothing},
        {"parameters", nothing, call(PF_Cmd_PARAMS_SETUP), call(PF_Cmd_PARAMS_SETUP)},
        {"set-up", setDown, call(PF_Cmd_GLOBAL_SETUP), setUp},
        {"set-down", giveHandles, call(PF_Cmd_GLOBAL_SETDOWN), takeHandles},
        {"first frame", setUpAnew, frame(Host::Depth::Float32), nothing},
    };
    for (const Host::Depth depth : kDepths) {
        commands.push_back({"frame at " + std::to_string(static_cast<int>(depth)) + " bits",
                            nothing, frame(depth), nothing});
    }
    return commands;
}

void CommandWalk::expectNothingLeft(const Command& command,
                                    const std::function<void()>& sendFaulty) {
    const Host::LiveCounts countsBefore = mSession.liveCounts();
    auto objectsBefore = objectsOfFrames();
    command.before();
    sendFaulty();
    EXPECT_EQ(Platform::CurrentEglBinding(), mHostContext.binding());
    EXPECT_EQ(mSession.liveCounts(), countsBefore);
    for (const auto& [kind, count] : objectsOfFrames()) {
        EXPECT_LE(count, objectsBefore[kind]) << kind;
    }
    command.after();
    expectFramesAreRight();
    EXPECT_EQ(objectsOfFrames(), mExpectedObjects);
}

void CommandWalk::expectFramesAreRight() {
    const bool isFirstTime = mExpected.empty();
    for (const Host::Depth depth : kDepths) {
        Host::World frame = rendered(input(depth));
        if (isFirstTime) {
            mExpected.emplace(depth, std::move(frame));
        } else {
            EXPECT_TRUE(SamePixels(frame, mExpected.at(depth)))
                << "the next frame is wrong at " << static_cast<int>(depth) << " bits";
        }
    }
    if (isFirstTime) {
        mExpectedObjects = objectsOfFrames();
    }
}

void CommandWalk::expectNothingAfterSetdown() {
    globalSetdown();
    EXPECT_EQ(mLive.counts(), (std::map<std::string, int>{}));
    EXPECT_EQ(EglContexts::live(), 1) << "the host's own";
    globalSetup();
}

std::map<std::string, int> CommandWalk::objectsOfFrames() const {
    auto counts = mLive.counts();
    counts.erase("Programs");
    return counts;
}

} // namespace Kerovane::TestSupport
