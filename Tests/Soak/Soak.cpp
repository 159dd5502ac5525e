// Renders many frames of changing sizes, depths and variants through the module, and tells whether
// it leaves anything behind: no test, for it takes minutes. scripts/soak runs it.

#include "Host/Text/Error.h"
#include "Tests/Effect/EffectFixture.h"
#include "Tests/Support/LiveGLObjects.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <array>
#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <malloc.h>
#include <unistd.h>

using namespace Kerovane;
using TestSupport::LiveGLObjects;

namespace {

constexpr std::array kDepths{Host::Depth::Bits8, Host::Depth::Bits16, Host::Depth::Float32};
constexpr int kMaxSide = 512;
constexpr int kFramesOfALife = 1000; ///< then the effect is set down and up again
constexpr int kLivesToWarmUp = 5;    ///< the driver's and the allocator's pools fill meanwhile

/// What shall not grow.
struct Footprint {
    std::size_t resident = 0;  ///< bytes of the process in memory
    std::size_t allocated = 0; ///< bytes that it has of the heap
    std::map<std::string, int> glObjects;
};

std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

Footprint Measured(const LiveGLObjects& live) {
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    return {ResidentBytes(), heap.uordblks + heap.hblkhd, live.counts()};
}

int Total(const Footprint& footprint) {
    int total = 0;
    for (const auto& [kind, count] : footprint.glObjects) {
        total += count;
    }
    return total;
}

/// A picture with the values to render it with.
struct Case {
    Host::World input;
    std::vector<std::pair<std::string_view, double>> values;
};

/// Draws cases by chance, always the same in the same order.
class Cases {
public:
    /// A case of the given variant at that depth.
    Case next(Host::Depth depth, int shape, int transition, bool feather) {
        const bool opaque = within(0, 1) == 0;
        const int width = within(1, kMaxSide);
        return {TestSupport::AtDepth(TestSupport::SmoothPicture(width, within(1, kMaxSide), opaque),
                                     depth),
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

    /// One of every variant at every depth.
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

/// The effect in a host that goes on and on.
class LongSession {
public:
    explicit LongSession(const char* module) : mSession(module) {
        send(PF_Cmd_GLOBAL_SETUP);
        send(PF_Cmd_PARAMS_SETUP);
    }

    ~LongSession() { mSession.call(PF_Cmd_GLOBAL_SETDOWN); }
    LongSession(const LongSession&) = delete;
    LongSession& operator=(const LongSession&) = delete;

    void setUpAgain() {
        send(PF_Cmd_GLOBAL_SETDOWN);
        send(PF_Cmd_GLOBAL_SETUP);
    }

    Host::World rendered(const Case& what) {
        for (const auto& [name, value] : what.values) {
            mSession.values().set(Host::FindParameter(mSession.parameters(), name)->id(), value);
        }
        Host::World output(what.input.depth(), what.input.width(), what.input.height());
        check("render", mSession.render(what.input, output));
        return output;
    }

private:
    void send(PF_Cmd command) { check(fmt::format("command {}", command), mSession.call(command)); }

    static void check(std::string_view what, PF_Err error) {
        if (error != PF_Err_NONE) {
            throw Host::Error(fmt::format("{} failed with {}", what, error));
        }
    }

    Host::EffectSession mSession;
};

std::string Row(int frame, const Footprint& footprint) {
    return fmt::format("{:>8} {:>14.1f} {:>14.1f} {:>12}\n", frame,
                       static_cast<double>(footprint.resident) / 1024,
                       static_cast<double>(footprint.allocated) / 1024, Total(footprint));
}

/// Whether the process has grown between two measurements at the same point of a life.
bool HasGrown(const Footprint& before, const Footprint& after) {
    constexpr std::size_t kAllocatedSlack = 64U << 10U;
    constexpr std::size_t kResidentSlack = 2U << 20U;
    return after.allocated > before.allocated + kAllocatedSlack ||
           after.resident > before.resident + kResidentSlack || after.glObjects != before.glObjects;
}

/// Returns what was wrong, else an empty text.
std::string Soak(int frames) {
    LongSession session(TESSELUNE_MODULE);
    const LiveGLObjects live;
    session.setUpAgain(); // so that all objects are counted
    Cases cases;
    const std::vector<Case> kinds = cases.ofEveryKind();
    const auto renderKinds = [&] {
        std::vector<Host::World> pictures;
        pictures.reserve(kinds.size());
        for (const Case& kind : kinds) {
            pictures.push_back(session.rendered(kind));
        }
        return pictures;
    };
    const std::vector<Host::World> firstPictures = renderKinds();

    std::cerr << fmt::format("{:>8} {:>14} {:>14} {:>12}\n", "frame", "resident, KiB",
                             "allocated, KiB", "GL objects");
    Footprint first;
    Footprint last;
    for (int frame = 1; frame <= frames; ++frame) {
        session.rendered(cases.next());
        if (frame % kFramesOfALife == 0) {
            session.setUpAgain();
            const std::vector<Host::World> pictures = renderKinds();
            for (std::size_t i = 0; i < kinds.size(); ++i) {
                if (!TestSupport::SamePixels(pictures[i], firstPictures[i])) {
                    return fmt::format("after frame {} kind {} has another picture", frame, i);
                }
            }
            last = Measured(live);
            std::cerr << Row(frame, last);
            if (frame == kLivesToWarmUp * kFramesOfALife) {
                first = last;
            }
        }
    }
    return HasGrown(first, last) ? "the process has grown" : "";
}

} // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Renders many frames and tells whether memory or GL objects grow.");
        int frames = 20000;
        app.add_option("--frames", frames, "How many")
            ->check(CLI::Range((kLivesToWarmUp + 1) * kFramesOfALife, 10000000));
        CLI11_PARSE(app, argc, argv);
        std::cout.setstate(std::ios::failbit); // the effect's own report on each of its contexts
        const auto start = std::chrono::steady_clock::now();
        const std::string fault = Soak(frames);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        std::cerr << (fault.empty()
                          ? fmt::format("{} frames in {:.0f} s: nothing grew, all pictures as at "
                                        "first\n",
                                        frames, time.count())
                          : fmt::format("Soak: {}\n", fault));
        return fault.empty() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "Soak: " << failure.what() << '\n';
        return 1;
    }
}
