#include "Benchmarks/FrameMemory/AllocationMeter.h"
#include "Host/Session/Effect.h"
#include "Host/Session/World.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

namespace Kerovane::Benchmarks {
namespace {

/// Keeps the compiler from removing an allocation.
template <typename Memory>
Memory* Kept(Memory* memory) {
    static void* volatile seen;
    seen = memory;
    return static_cast<Memory*>(seen);
}

class FrameMemory : public testing::Test {
protected:
    static std::size_t peakOf(const std::function<void()>& run) {
        return PeakAllocatedBytes(TESSELUNE_MODULE, run);
    }

    Host::Effect mEffect{TESSELUNE_MODULE};
};

TEST_F(FrameMemory, MeterFindsThePeakOfEveryAllocator) {
    constexpr std::size_t kSize = 100'000;
    EXPECT_EQ(peakOf([] {
                  void* const held = Kept(std::malloc(kSize));
                  std::free(Kept(std::calloc(kSize, 2)));
                  delete[] Kept(new std::byte[kSize]);
                  std::free(held);
              }),
              3 * kSize);
    EXPECT_THROW(PeakAllocatedBytes("/nowhere.so", [] {}), std::invalid_argument);
}

TEST_F(FrameMemory, IsOneFrameAndAtMostTwoInFloats) {
    const struct {
        Host::Depth depth;
        std::size_t frames;
    } cases[] = {{Host::Depth::Bits8, 1}, {Host::Depth::Bits16, 1}, {Host::Depth::Float32, 2}};
    constexpr A_long kWidth = 640;
    constexpr A_long kHeight = 360;
    for (const auto& [depth, frames] : cases) {
        SCOPED_TRACE(static_cast<int>(depth));
        const Host::World input(depth, kWidth, kHeight);
        Host::World output(depth, kWidth, kHeight);
        const auto frameBytes = static_cast<std::size_t>(kWidth) * kHeight *
                                static_cast<std::size_t>(Host::BytesPerPixel(depth));
        constexpr std::size_t kSmallThings = 100'000; // such as the shader sources at a first frame
        const std::size_t peak = peakOf([&] { mEffect.render({}, {}, input, output); });
        EXPECT_GE(peak, frameBytes) << "the read-back block was not met";
        EXPECT_LE(peak, frames * frameBytes + kSmallThings);
    }
}

} // namespace
} // namespace Kerovane::Benchmarks
