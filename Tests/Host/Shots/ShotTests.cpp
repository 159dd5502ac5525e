#include "Host/Shots/SequencePattern.h"
#include "Host/Shots/Shot.h"

#include "Tests/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(SequencePattern, PutsTheNumberInItsPlace) {
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

TEST(SequencePattern, IsNotInEveryName) {
    for (const char* name : {"", "shot.png", "%.png", "%4d.png", "%04x.png", "%004d.png", "#/a.png",
                             "100%.png", "%"}) {
        EXPECT_FALSE(SequencePattern::parse(name)) << name;
    }
    for (const char* name : {"#.#.png", "@-%d.png", "%d%d.png", "$F.#.png"}) {
        EXPECT_THROW(SequencePattern::parse(name), Error) << name;
    }
}

class ShotTest : public testing::Test {
protected:
    ShotTest() {
        for (const char* name :
             {"s.1001.png", "s.1002.png", "s.1005.png", "s.01006.png", "s.10.png", "s..png",
              "s.1003.png.bak", ".s.1004.png", "s.12345.png", "still.png", "photo@2x.png"}) {
            std::ofstream(mFolder / name) << "x";
        }
    }

    ShotRequest request(const char* input, const char* output) const {
        return {.input = mFolder / input,
                .output = output,
                .frames = {},
                .missing = MissingFrames::Error,
                .chunk = {}};
    }

    /// "1001<1001 1003<1002": each frame and the number in its input's name.
    static std::string text(const Shot& shot) {
        std::string text;
        for (const ShotFrame& frame : shot.frames) {
            const std::string number = frame.input.stem().extension().string();
            text += text.empty() ? "" : " ";
            text += std::to_string(frame.number);
            text += '<';
            text += number.empty() ? "" : number.substr(1);
        }
        return text;
    }

    TemporaryFolder mFolder;
};

TEST_F(ShotTest, FindsTheFramesOfASequence) {
    EXPECT_EQ(SequencePattern::parse(mFolder / "s.#.png")->framesOnDisk(),
              (FrameList{1001, 1002, 1005, 12345}))
        << "numbers with as many digits as the pattern writes";
    EXPECT_EQ(SequencePattern::parse(mFolder / "s.%d.png")->framesOnDisk(),
              (FrameList{10, 1001, 1002, 1005, 12345}));
    EXPECT_THROW(SequencePattern::parse("missing/#.png")->framesOnDisk(), Error);
}

TEST_F(ShotTest, DealsWithMissingFramesAsTold) {
    struct Row {
        MissingFrames missing;
        Chunk chunk;
        const char* frames;
    };
    constexpr Row kRows[] = {
        {MissingFrames::Skip, {}, "1001<1001 1002<1002 1005<1005"},
        {MissingFrames::Hold,
         {},
         "999<1001 1000<1001 1001<1001 1002<1002 1003<1002 1004<1002 1005<1005 1006<1005"},
        {MissingFrames::Hold, {.number = 3, .count = 4}, "1003<1002 1004<1002"},
        {MissingFrames::Error, {.number = 2, .count = 4}, "1001<1001 1002<1002"},
    };
    for (const Row& row : kRows) {
        ShotRequest asked = request("s.#.png", "o.#.png");
        asked.frames = FramesBetween(999, 1006);
        asked.missing = row.missing;
        asked.chunk = row.chunk;
        EXPECT_EQ(text(PlanShot(asked)), row.frames);
    }
}

TEST_F(ShotTest, NamesTheMissingFrames) {
    ShotRequest asked = request("s.#.png", "o.#.png");
    asked.frames = FramesBetween(1000, 1006);
    const std::string error = ErrorOf([&] { PlanShot(asked); });
    EXPECT_NE(error.find("lacks the frames 1000, 1003-1004, 1006;"), std::string::npos) << error;
    asked.missing = MissingFrames::Skip;
    EXPECT_EQ(PlanShot(asked).missing, (FrameList{1000, 1003, 1004, 1006}));
}

TEST_F(ShotTest, TellsSequencesFromPictures) {
    EXPECT_TRUE(AsksForShot(request("s.#.png", "o.#.png")));
    EXPECT_TRUE(AsksForShot(request("none.#.png", "o.#.png")));
    EXPECT_FALSE(AsksForShot(request("photo@2x.png", "o@2x.png")));
    EXPECT_FALSE(AsksForShot(request("still.png", "o.png")));
    ShotRequest still = request("still.png", "o.#.png");
    still.frames = FrameList{1, 2};
    EXPECT_TRUE(AsksForShot(still));
    EXPECT_EQ(text(PlanShot(still)), "1< 2<");
}

TEST_F(ShotTest, RefusesWhatCannotBeCarriedOut) {
    struct Row {
        const char* input;
        const char* output;
        const char* error;
    };
    const std::string inPlace = mFolder / "again" / "s.%04d.png";
    std::filesystem::create_directory_symlink(mFolder / "", mFolder / "again");
    const Row rows[] = {
        {"s.#.png", "o.png", "'o.png' has no place for the frame's number"},
        {"n.#.png", "o.#.png", "no such file, and no frame of such a sequence"},
        {"none/n.#.png", "o.#.png", "cannot read"},
        {"s.#.png", inPlace.c_str(), "is input and output; nothing is rendered in place"},
        {"s.#.#.png", "o.#.png", "more than one place"},
        {"s.%d.png", "o.#.png", "lacks the frames 11-1000, 1003-1004, 1006-12344;"},
    };
    for (const Row& row : rows) {
        ShotRequest asked = request(row.input, row.output);
        asked.missing =
            std::string(row.input) == "s.%d.png" ? MissingFrames::Error : MissingFrames::Skip;
        const std::string error = ErrorOf([&] { PlanShot(asked); });
        EXPECT_NE(error.find(row.error), std::string::npos) << row.input << ": " << error;
    }
}

} // namespace
} // namespace Kerovane::Host
