#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using OIIO::TypeDesc;

/// Files as they are asked for, from one picture of floats.
class PictureCommand : public Command {
protected:
    PictureCommand() { makePicture("in.exr", {0.5F, 0.25F, 0, 1}, TypeDesc::FLOAT); }
};

TEST_F(PictureCommand, WritesChannelsBitsAndCompressionAsAsked) {
    const struct {
        Words arguments;
        TypeDesc type;
        int bits;
        std::size_t channels;
        const char* compression;
    } rows[] = {
        {{"out.png", "--bits", "8", "--channels", "rgb"}, TypeDesc::UINT8, 0, 3, ""},
        {{"out.png", "--bits", "16", "--channels", "grey-alpha"}, TypeDesc::UINT16, 0, 2, ""},
        {{"out.tif", "--bits", "12", "--compression", "lzw"}, TypeDesc::UINT16, 12, 4, "lzw"},
        {{"out.dpx", "--bits", "10", "--channels", "rgb"}, TypeDesc::UINT16, 10, 3, ""},
        {{"out.exr", "--bits", "half", "--compression", "dwaa:30"}, TypeDesc::HALF, 0, 4, "dwaa"},
        {{"out.exr", "--channels", "grey", "--compression", "none"}, TypeDesc::FLOAT, 0, 1, "none"},
    };
    for (const auto& [arguments, type, bits, channels, compression] : rows) {
        Words line{"render", "in.exr"};
        line.insert(line.end(), arguments.begin(), arguments.end());
        const Outcome outcome = runFake(line);
        ASSERT_EQ(outcome.status, 0) << outcome.error;
        EXPECT_EQ(outcome.error, "");
        const RawPicture file = RawPicture::read(mFolder / arguments.front());
        EXPECT_EQ(file.spec.format, type) << arguments.front();
        EXPECT_EQ(file.firstPixel().size(), channels) << arguments.front();
        if (bits != 0) {
            EXPECT_EQ(file.spec.get_int_attribute("oiio:BitsPerSample"), bits);
        }
        if (*compression != '\0') {
            EXPECT_EQ(file.spec.get_string_attribute("compression"), compression);
        }
        const float luma = 0.2126F * 0.5F + 0.7152F * 0.25F;
        EXPECT_NEAR(file.firstPixel()[0], channels < 3 ? luma : 0.5F, 0.003) << arguments.front();
    }
}

TEST_F(PictureCommand, TellsWhatIsLost) {
    EXPECT_EQ(
        runFake({"render", "in.exr", "out.jpg"}).error,
        "tesselune: the picture lies over black, as JPEG holds no alpha\n"
        "tesselune: values are cut off at 0 and 1 and have 8 bits, as JPEG holds no floats\n");
}

TEST_F(PictureCommand, ConvertsColour) {
    const Outcome outcome = runFake({"render", "in.exr", "out.tif", "--convert", "linear", "sRGB"});
    EXPECT_EQ(outcome.error, "");
    const RawPicture file = RawPicture::read(mFolder / "out.tif");
    EXPECT_NEAR(file.firstPixel()[0], 0.735357, 1e-4) << "IEC 61966-2-1";
    EXPECT_NEAR(file.firstPixel()[3], 1, 1e-6);
}

TEST_F(PictureCommand, RecordsItsSettingsForPresets) {
    makePicture("in.png", {0.5F, 0.25F, 0, 1}, TypeDesc::UINT8);
    for (const std::string name : {"out.exr", "out.png"}) {
        const Outcome outcome = runFake({"render", "in.exr", name, "--amount-px", "0:7 10:9",
                                         "--bits", name == "out.png" ? "16" : "float"});
        EXPECT_EQ(outcome.error, "");
        const RawPicture file = RawPicture::read(mFolder / name);
        EXPECT_NE(file.spec.get_string_attribute("Software").find("tesselune 1"),
                  std::string::npos);
        const Outcome again =
            runFake({"render", "in.png", "again.png", "--preset", name, "--save-preset", "p.json"});
        EXPECT_EQ(again.error, "");
        EXPECT_NE(mFolder.contentOf("p.json").find("\"0:7 10:9\""), std::string::npos);
    }
    ExpectOneLine(runFake({"render", "in.png", "again.png", "--preset", "in.png"}),
                  "'in.png' holds no settings");
}

TEST_F(PictureCommand, ResumesWhatWasMadeWithTheSameSettings) {
    makePicture("in.0001.exr", {0.5F, 0.25F, 0, 1}, TypeDesc::HALF);
    const auto render = [&](const char* out, const char* amount) {
        return runFake({"render", "in.#.exr", out, "--resume", "--amount-px", amount}).error;
    };
    const auto has = [](const std::string& text, const char* part) {
        return text.find(part) != std::string::npos;
    };
    EXPECT_TRUE(has(render("out.#.exr", "3"), "frame 1 rendered"));
    EXPECT_TRUE(has(render("out.#.exr", "3"), "frame 1 kept"));
    const std::string anew = render("out.#.exr", "4");
    EXPECT_TRUE(has(anew, "frame 1 rendered") && has(anew, "made with other settings")) << anew;
    EXPECT_TRUE(has(render("out.#.tif", "3"), "frame 1 rendered"));
    const std::string kept = render("out.#.tif", "4");
    EXPECT_TRUE(has(kept, "frame 1 kept") && has(kept, "hold no record of their settings")) << kept;
}

} // namespace
