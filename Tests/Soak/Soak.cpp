// Renders many frames of changing sizes, depths and variants through the module and checks that
// nothing is left behind. Takes minutes, so only scripts/soak runs it.

#include "Tests/Effect/EffectFixture.h"
#include "Tests/Support/LiveGLObjects.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <exception>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <malloc.h>

namespace Kerovane::TestSupport {

namespace {

constexpr int kMaxSide = 512;
constexpr int kFramesOfALife = 1000; ///< frames between two restarts of the effect
/// Restarts before the first measurement, until the driver's and the allocator's pools are full.
constexpr int kLivesToWarmUp = 5;

int mFrames = 20000;

/// The quantities that must not grow.
struct Footprint {
    std::size_t resident = 0;  ///< bytes of resident memory
    std::size_t allocated = 0; ///< bytes of allocated heap
    std::map<std::string, int> glObjects;
};

Footprint Measured(const LiveGLObjects& live) {
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    return {ResidentBytes(), heap.uordblks + heap.hblkhd, live.counts()};
}

void PrintRow(int frame, const Footprint& footprint) {
    int objects = 0;
    for (const auto& [kind, count] : footprint.glObjects) {
        objects += count;
    }
    std::cerr << fmt::format("{:>8} {:>14.1f} {:>14.1f} {:>12}\n", frame,
                             static_cast<double>(footprint.resident) / 1024,
                             static_cast<double>(footprint.allocated) / 1024, objects);
}

/// A picture and the parameter values to render it with.
struct Case {
    Host::World input;
    std::vector<std::pair<std::string_view, double>> values;
};

/// Generates random cases, the same sequence in every run.
class Cases {
public:
    /// Returns a case of the given variant and depth.
    Case next(Host::Depth depth, int shape, int transition, bool feather) {
        const bool opaque = within(0, 1) == 0;
        const int width = within(1, kMaxSide);
        return {AtDepth(SmoothPicture(width, within(1, kMaxSide), opaque), depth),
                {{"Shape Type", shape},
                 {"Size", within(2, 200)},
                 {"Ratio", within(20, 300) / 100.0},
                 {"Size Random", within(0, 100)},
                 {"Size Level", within(0, 6)},
                 {"Size Random Seed", within(0, 1000)},
                 {"Dissolve", within(0, 60)},
                 {"Dissolve Random Seed", within(0, 1000)},
                 {"Transition Type", transition},
                 {"Transition Progress", within(0, 100)},
                 {"Feather", feather ? within(1, 300) : 0},
                 {"Direction", within(-360, 360)},
                 {"Use Alpha", within(0, 1)}}};
    }

    Case next() {
        const Host::Depth depth = kDepths[static_cast<std::size_t>(within(0, 2))];
        const int shape = within(1, 2);
        const int transition = within(1, 3);
        return next(depth, shape, transition, within(0, 1) == 1);
    }

    /// Returns a case of every variant at every depth.
    std::vector<Case> ofEveryKind() {
        std::vector<Case> cases;
        for (const Host::Depth depth : kDepths) {
            for (const int shape : {1, 2}) {
                for (const int transition : {1, 2, 3}) {
                    for (const bool feather : {false, true}) {
                        cases.push_back(next(depth, shape, transition, feather));
                    }
                }
            }
        }
        return cases;
    }

private:
    int within(int lowest, int highest) {
        return std::uniform_int_distribution(lowest, highest)(mRandom);
    }

    std::mt19937 mRandom{7}; // NOLINT(cert-msc*): the same cases in every run
};

class Soak : public EffectFixture {
protected:
    Host::World renderedCase(const Case& what) {
        for (const auto& [name, value] : what.values) {
            set(name, value);
        }
        return rendered(what.input);
    }

    void setUpAgain() {
        globalSetdown();
        globalSetup();
    }
};

TEST_F(Soak, NeitherGrowsNorChangesPictures) {
    const LiveGLObjects live;
    setUpAgain(); // so that every object is counted
    Cases cases;
    const std::vector<Case> kinds = cases.ofEveryKind();
    std::vector<Host::World> firstPictures;
    firstPictures.reserve(kinds.size());
    for (const Case& kind : kinds) {
        firstPictures.push_back(renderedCase(kind));
    }
    std::cerr << fmt::format("{:>8} {:>14} {:>14} {:>12}\n", "frame", "resident, KiB",
                             "allocated, KiB", "GL objects");
    Footprint first;
    Footprint last;
    for (int frame = 1; frame <= mFrames; ++frame) {
        renderedCase(cases.next());
        if (frame % kFramesOfALife == 0) {
            setUpAgain();
            for (std::size_t i = 0; i < kinds.size(); ++i) {
                ASSERT_TRUE(SamePixels(renderedCase(kinds[i]), firstPictures[i]))
                    << "kind " << i << " has another picture after frame " << frame;
            }
            last = Measured(live);
            PrintRow(frame, last);
            if (frame == kLivesToWarmUp * kFramesOfALife) {
                first = last;
            }
        }
    }
    EXPECT_LE(last.allocated, first.allocated + (64U << 10U));
    EXPECT_LE(last.resident, first.resident + (2U << 20U));
    EXPECT_EQ(last.glObjects, first.glObjects);
}

} // namespace

} // namespace Kerovane::TestSupport

int main(int argc, char** argv) {
    using namespace Kerovane::TestSupport;
    try {
        testing::InitGoogleTest(&argc, argv);
        CLI::App app("Renders many frames and tells whether memory or GL objects grow.");
        app.add_option("--frames", mFrames, "How many")
            ->check(CLI::Range((kLivesToWarmUp + 1) * kFramesOfALife, 10000000));
        CLI11_PARSE(app, argc, argv);
        std::cout.setstate(
            std::ios::failbit); // drops the effect's output about each of its contexts
        return RUN_ALL_TESTS();
    } catch (const std::exception& failure) {
        std::cerr << "Soak: " << failure.what() << '\n';
        return 1;
    }
}
