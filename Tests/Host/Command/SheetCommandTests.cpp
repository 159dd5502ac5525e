#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using OIIO::TypeDesc;

/// A sheet whose cells have the pictures of the fixture, 32 by 24, reduced to 16 by 12.
class Sheet : public Command {
protected:
    Sheet() { makePicture("in.png", {1, 0.2F, 0}, TypeDesc::UINT8); }

    RawPicture sheet(Words arguments) {
        arguments.insert(arguments.begin(), {"sheet", "in.png", "out.png", "--width", "16"});
        const Outcome outcome = runFake(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.error;
        EXPECT_EQ(outcome.output + outcome.error, "");
        return RawPicture::read(mFolder / "out.png");
    }
};

/// The red of each cell's picture along the row whose pictures begin at `top`.
std::vector<float> RedsAt(const RawPicture& sheet, int top, int columns) {
    constexpr int kMargin = 16;
    const int columnWidth = (sheet.spec.width - kMargin) / columns;
    std::vector<float> reds;
    for (int column = 0; column < columns; ++column) {
        const int pixel = (top + 2) * sheet.spec.width + kMargin + column * columnWidth + 2;
        reds.push_back(sheet.values.at(static_cast<std::size_t>(pixel) *
                                       static_cast<std::size_t>(sheet.spec.nchannels)));
    }
    return reds;
}

TEST_F(Sheet, ShowsEachValueInARow) {
    const RawPicture sheet = this->sheet({"--vary", "invert"});
    EXPECT_EQ(sheet.spec.height, 16 + 12 + 8 + 24 + 16);
    EXPECT_EQ(RedsAt(sheet, 16, 2), (std::vector<float>{0, 1}));
    EXPECT_EQ(RedsAt(this->sheet({"--vary", "invert=off,on,0"}), 16, 3),
              (std::vector<float>{1, 0, 1}));
}

TEST_F(Sheet, WrapsALongRowAndCountsThroughRanges) {
    const RawPicture listed = sheet({"--vary", "amount-px=0,25,50,75,100", "--columns", "2"});
    EXPECT_EQ(listed.spec.height, 16 + 3 * (12 + 8 + 24 + 16));
    EXPECT_EQ(sheet({"--vary", "amount-px=0..100x5", "--columns", "2"}).values, listed.values);
    EXPECT_EQ(sheet({"--vary", "amount-px=0,25..75x3,100", "--columns", "2"}).values,
              listed.values);
    EXPECT_EQ(sheet({"--vary", "amount-px=1..3x9"}).values,
              sheet({"--vary", "amount-px=1,2,3"}).values)
        << "each whole number once";
    EXPECT_EQ(sheet({"--vary", "amount-px=0..100x9"}).spec.height, 16 + 2 * (12 + 8 + 24 + 16));
}

TEST_F(Sheet, StartsFromAPreset) {
    std::ofstream(mFolder / "look.json")
        << R"({"parameters": [{"name": "Invert", "value": true}]})";
    EXPECT_EQ(RedsAt(sheet({"--preset", "look.json", "--vary", "depth-5"}), 16, 3),
              (std::vector<float>{0, 0, 0}));
    EXPECT_EQ(RedsAt(sheet({"--preset", "look.json", "--vary", "invert"}), 16, 2),
              (std::vector<float>{0, 1}))
        << "what varies wins";
    std::filesystem::remove(mFolder / "look.json");
}

TEST_F(Sheet, SpansAGridWithTwoParameters) {
    const RawPicture across = sheet({"--vary", "invert", "--vary", "depth-5"});
    EXPECT_EQ(across.spec.height, 16 + 3 * (12 + 8 + 2 * 24 + 16));
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(RedsAt(across, 16 + row * 84, 2), (std::vector<float>{0, 1})) << row;
    }
    const RawPicture down = sheet({"--vary", "depth-5=one,3", "--vary", "invert=no,yes"});
    EXPECT_EQ(RedsAt(down, 16, 2), (std::vector<float>{1, 1}));
    EXPECT_EQ(RedsAt(down, 16 + 84, 2), (std::vector<float>{0, 0}));
}

TEST_F(Sheet, LaysFramesOut) {
    const Words animated{"--invert", "0:off 2:on", "--frames", "0,1,2"};
    EXPECT_EQ(RedsAt(sheet(animated), 16, 3), (std::vector<float>{1, 1, 0}));
    Words grid = animated;
    grid.insert(grid.end(), {"--vary", "depth-5=one,3"});
    EXPECT_EQ(RedsAt(sheet(grid), 16 + 84, 3), (std::vector<float>{1, 1, 0}));
    makePicture("shot.0001.png", {1, 0, 0}, TypeDesc::UINT8);
    makePicture("shot.0002.png", {0, 0, 0}, TypeDesc::UINT8);
    const Outcome outcome =
        runFake({"sheet", "shot.#.png", "out.png", "--width", "16", "--frames", "1,2"});
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(RedsAt(RawPicture::read(mFolder / "out.png"), 16, 2), (std::vector<float>{1, 0}));
}

TEST_F(Sheet, KeepsOtherOptionsInEveryCell) {
    EXPECT_EQ(RedsAt(sheet({"--invert", "true", "--vary", "depth-5"}), 16, 3),
              (std::vector<float>{0, 0, 0}));
}

TEST_F(Sheet, NamesEachCellByItsValue) {
    const RawPicture one = sheet({"--vary", "amount-px=11"});
    const RawPicture other = sheet({"--vary", "amount-px=71"});
    EXPECT_EQ(one.spec.width, other.spec.width);
    EXPECT_NE(one.values, other.values);
}

TEST_F(Sheet, GivesAnOverviewOfTheRealEffect) {
    const Outcome outcome =
        run({"sheet", "in.png", "out.exr", "--effect", TESSELUNE_MODULE, "--use-alpha", "true"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output + outcome.error, "");
    const RawPicture sheet = RawPicture::read(mFolder / "out.exr");
    EXPECT_EQ(sheet.spec.height, 16 + 4 * (24 + 8 + 16) + 5 * 24);
    EXPECT_EQ(sheet.spec.full_width, sheet.spec.width);
    EXPECT_NEAR(RedsAt(sheet, 16, 3)[0], 1, 1e-3) << "the original";
    EXPECT_NEAR(RedsAt(sheet, 16, 3)[2], 1, 1e-3) << "triangles";
    const int lastRow = sheet.spec.height - 16 - (24 + 8 + 24);
    EXPECT_LT(RedsAt(sheet, lastRow, 3)[2], 0.5) << "swept away";
}

TEST_F(Sheet, LeavesNoFileIfItFails) {
    std::string many = "amount-px=1";
    for (int i = 0; i < 300; ++i) {
        many += ",1";
    }
    ExpectOneLine(runFake({"sheet", "in.png", "out.png", "--vary", many, "--vary", "invert"}),
                  "the sheet would be");
    ExpectOneLine(runFake({"sheet", "in.png", "out.png", "--vary", "invert"}, "render error"),
                  "the effect failed at rendering");
    EXPECT_EQ(mFolder.files(), std::vector<std::string>{"in.png"});
}

} // namespace
