#include "Tests/Effect/ThreadedLife.h"
#include "Tests/Support/LiveGLObjects.h"

#include <map>
#include <string>

namespace Kerovane::TestSupport {

namespace {

class Repeats : public EveryModule {};

TEST_EVERY_MODULE(Repeats);

TEST_P(Repeats, LeaveNoGLObjectsBehindWhateverChanges) {
    const LiveGLObjects live;
    const auto frames = [this] {
        for (const double shape : {1.0, 2.0}) {
            for (const double transition : {1.0, 2.0, 3.0}) {
                for (const double feather : {0.0, 9.0}) {
                    set("Shape Type", shape);
                    set("Transition Type", transition);
                    set("Feather", feather);
                    for (const Host::Depth depth : kDepths) {
                        rendered(Host::World(depth, 24, 16));
                    }
                    rendered(Host::World(Host::Depth::Bits8, 8, 16));
                }
            }
        }
    };
    for (int life = 0; life < 2; ++life) {
        frames();
        const auto after = live.counts();
        EXPECT_EQ(after.at("Programs"), 13) << "twelve variants and the closing pass";
        frames();
        EXPECT_EQ(live.counts(), after);
        globalSetdown();
        EXPECT_EQ(live.counts(), (std::map<std::string, int>{}));
        globalSetup();
    }
}

TEST_P(Repeats, DoNotGrowMemoryOverAThousandFrames) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers keep memory of their own";
#endif
    const Host::World input = SmoothPicture(64, 64, true);
    const Host::World input32 = AtDepth(input, Host::Depth::Float32);
    const auto frames = [&](int count) {
        for (int frame = 0; frame < count; ++frame) {
            set("Transition Progress", frame % 100);
            rendered(frame % 2 == 0 ? input : input32);
        }
    };
    frames(200);
    const std::size_t before = ResidentBytes();
    frames(1000);
    EXPECT_LT(ResidentBytes(), before + (1U << 20U)) << "less than a kilobyte a frame";
}

class RepeatsOnThreads : public ThreadedLife {};

TEST_EVERY_MODULE(RepeatsOnThreads);

TEST_P(RepeatsOnThreads, GiveTheSamePicturesInAHostWithoutAContext) {
    expectSamePictures(EnterHostWithoutContext);
}

TEST_P(RepeatsOnThreads, GiveTheSamePicturesInAHostWithContexts) {
    expectSamePictures(EnterEglHost);
}

} // namespace

} // namespace Kerovane::TestSupport
