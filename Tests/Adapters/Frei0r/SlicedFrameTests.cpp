#include "Adapters/Frei0r/SlicedFrame.h"

#include <gtest/gtest.h>

#include <vector>

namespace Kerovane::Frei0r {

namespace {

constexpr std::size_t kWidth = 3;
constexpr std::size_t kHeight = 2; // height of a slice
constexpr std::size_t kSlice = kWidth * kHeight;
constexpr double kTime = 0.04;

class Slices : public testing::Test {
protected:
    /// Returns the slice that begins at pixel `in` of the input and pixel `out` of the output.
    HostFrame at(std::size_t in, std::size_t out) {
        return {.width = kWidth, .height = kHeight, .in = &mIn[in], .out = &mOut[out]};
    }
    HostFrame slice(std::size_t place) { return at(place * kSlice, place * kSlice); }

    std::vector<std::uint32_t> mIn = std::vector<std::uint32_t>(8 * kSlice);
    std::vector<std::uint32_t> mOut = std::vector<std::uint32_t>(8 * kSlice);
};

TEST_F(Slices, RefuseSlicesOfOtherFrames) {
    SlicedFrame frame(kTime, slice(3));
    ASSERT_TRUE(frame.add(kTime, slice(4)));
    EXPECT_FALSE(frame.add(kTime, slice(3))) << "the first again";
    EXPECT_FALSE(frame.add(kTime, slice(4))) << "another again";
    EXPECT_FALSE(frame.add(kTime + 0.04, slice(5))) << "a later time";
    EXPECT_FALSE(frame.add(kTime, at(5 * kSlice, 2 * kSlice))) << "another output";
    EXPECT_FALSE(frame.add(kTime, at(5 * kSlice + 1, 5 * kSlice + 1))) << "between two places";
    EXPECT_EQ(frame.sliceCount(), 2U);
}

} // namespace

} // namespace Kerovane::Frei0r
