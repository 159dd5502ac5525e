#include "Host/Shots/SequencePattern.h"
#include "Host/Shots/Shot.h"

#include "Host/Text/Error.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(SequencePattern, FormatsFrameNumbers) {
    struct Row {
        const char* pattern;
        A_long frame;
        const char* path;
    };
    constexpr Row kRows[] = {
        {"shot.#.png", 7, "shot.0007.png"},
        {"shot.#.png", 12345, "shot.12345.png"},
        {"shot.@@@.tif", 7, "shot.007.tif"},
        {"a/b.#@.png", 7, "a/b.00007.png"},
        {"s.$F4.exr", 7, "s.0007.exr"},
        {"s.$F.exr", 7, "s.7.exr"},
        {"####.png", 7, "0007.png"},
        {"##.png", 7, "07.png"},
        {"shot.%04d.exr", 1001, "shot.1001.exr"},
        {"shot.%d.exr", 7, "shot.7.exr"},
        {"100%_@.png", 7, "100%_7.png"},
        {"shot.#.png", -7, "shot.-007.png"},
        {"#.d/shot.@.png", 7, "#.d/shot.7.png"},
    };
    for (const Row& row : kRows) {
        const auto pattern = SequencePattern::parse(row.pattern);
        ASSERT_TRUE(pattern) << row.pattern;
        EXPECT_EQ(pattern->pathOf(row.frame), row.path) << row.pattern;
    }
}

TEST(SequencePattern, NeedsOnePlaceForTheNumber) {
    for (const char* name : {"", "shot.png", "%.png", "%4d.png", "%04x.png", "%004d.png", "#/a.png",
                             "100%.png", "%"}) {
        EXPECT_FALSE(SequencePattern::parse(name)) << name;
    }
    for (const char* name : {"#.#.png", "@-%d.png", "%d%d.png", "$F.#.png"}) {
        EXPECT_THROW(SequencePattern::parse(name), Error) << name;
    }
}

class SequenceFiles : public testing::Test {
protected:
    SequenceFiles() {
        for (const char* name :
             {"s.1001.png", "s.1002.png", "s.1005.png", "s.01006.png", "s.10.png", "s..png",
              "s.1003.png.bak", ".s.1004.png", "s.12345.png", "still.png", "photo@2x.png"}) {
            std::ofstream(mFolder / name) << "x";
        }
    }

    ShotRequest request(const char* input, const char* output) const {
        ShotRequest request;
        request.input = mFolder / input;
        request.output = output;
        return request;
    }

    TemporaryFolder mFolder;
};

TEST_F(SequenceFiles, AreFoundByTheirPattern) {
    EXPECT_EQ(SequencePattern::parse(mFolder / "s.#.png")->framesOnDisk(),
              (FrameList{1001, 1002, 1005, 12345}))
        << "numbers with as many digits as the pattern writes";
    EXPECT_EQ(SequencePattern::parse(mFolder / "s.%d.png")->framesOnDisk(),
              (FrameList{10, 1001, 1002, 1005, 12345}));
    EXPECT_THROW(SequencePattern::parse("missing/#.png")->framesOnDisk(), Error);
}

TEST_F(SequenceFiles, AreToldFromSinglePictures) {
    EXPECT_TRUE(AsksForShot(request("s.#.png", "o.#.png")));
    EXPECT_TRUE(AsksForShot(request("none.#.png", "o.#.png")));
    EXPECT_FALSE(AsksForShot(request("photo@2x.png", "o@2x.png")));
    EXPECT_FALSE(AsksForShot(request("still.png", "o.png")));
    ShotRequest still = request("still.png", "o.#.png");
    still.frames = FrameList{1, 2};
    EXPECT_TRUE(AsksForShot(still));
}

} // namespace
} // namespace Kerovane::Host
