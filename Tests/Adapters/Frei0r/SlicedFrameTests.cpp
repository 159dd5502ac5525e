#include "Adapters/Frei0r/SlicedFrame.h"

#include <gtest/gtest.h>

#include <vector>

namespace Kerovane::Frei0r {

namespace {

constexpr std::size_t kWidth = 3;
constexpr std::size_t kHeight = 2; // of a slice
constexpr std::size_t kSlice = kWidth * kHeight;
constexpr double kTime = 0.04;

class Slices : public testing::Test {
protected:
    /// The slice that begins at those pixels of input and output.
    HostFrame at(std::size_t in, std::size_t out) {
        return {.width = kWidth, .height = kHeight, .in = &mIn[in], .out = &mOut[out]};
    }
    HostFrame slice(std::size_t place) { return at(place * kSlice, place * kSlice); }

    std::vector<std::uint32_t> mIn = std::vector<std::uint32_t>(8 * kSlice);
    std::vector<std::uint32_t> mOut = std::vector<std::uint32_t>(8 * kSlice);
};

TEST_F(Slices, JoinInAnyOrderOnceNoneIsMissing) {
    struct Row {
        std::vector<std::size_t> places;
        std::vector<std::size_t> joined; ///< slices after each, 0 while one is missing
    };
    const Row rows[] = {
        {{0}, {1}},
        {{0, 1, 2}, {1, 2, 3}},
        {{3, 2, 1, 0}, {1, 2, 3, 4}},
        {{2, 0, 3, 1}, {1, 0, 0, 4}},
        {{1, 4, 2, 3}, {1, 0, 0, 4}},
    };
    for (const Row& row : rows) {
        SlicedFrame frame(kTime, slice(row.places[0]));
        std::size_t top = row.places[0];
        for (std::size_t i = 0; i < row.places.size(); ++i) {
            EXPECT_EQ(frame.add(kTime, slice(row.places[i])), i > 0) << i;
            top = std::min(top, row.places[i]);
            const auto joined = frame.joined();
            ASSERT_EQ(joined ? joined->height : 0, row.joined[i] * kHeight) << i;
            if (joined) {
                EXPECT_EQ(joined->width, kWidth);
                EXPECT_EQ(joined->in, slice(top).in);
                EXPECT_EQ(joined->out, slice(top).out);
            }
        }
    }
}

TEST_F(Slices, OfOtherFramesAreRefused) {
    SlicedFrame frame(kTime, slice(3));
    ASSERT_TRUE(frame.add(kTime, slice(4)));
    struct Row {
        const char* name;
        double time;
        HostFrame slice;
    };
    const Row rows[] = {
        {"the first again", kTime, slice(3)},
        {"another again", kTime, slice(4)},
        {"a later time", kTime + 0.04, slice(5)},
        {"another output", kTime, at(5 * kSlice, 2 * kSlice)},
        {"between two places", kTime, at(5 * kSlice + 1, 5 * kSlice + 1)},
    };
    for (const Row& row : rows) {
        EXPECT_FALSE(frame.add(row.time, row.slice)) << row.name;
    }
    EXPECT_EQ(frame.sliceCount(), 2U);
}

} // namespace

} // namespace Kerovane::Frei0r
