#include "Host/Panel/Frei0rLines.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Shots/SequencePattern.h"
#include "Tests/Host/Parameters/SampleParameters.h"
#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(Frei0rLines, WriteKeysInMeltsSyntax) {
    const TemporaryFolder folder;
    RawPicture::of({0, 0, 0}, OIIO::TypeDesc::UINT8, -1, 8, 8).write(folder / "a b.png");
    const auto footage =
        OpenFootage({.input = folder / "a b.png", .frames = FramesBetween(10, 20)});
    struct Row {
        Parameter parameter;
        const char* keys;
        const char* property; ///< the filter's property with these keys
    };
    const Row kRows[] = {
        {Percentage(), "50", "0=50"},
        {Percentage(), "1", "0=0.01"},
        {Percentage(), "10:0 20:100", "0='0=0;10=1'"},
        {Percentage(), "12:0:hold 14:50", "0='2|=0;4=0.5'"},
        {Percentage(), "10:0:smooth 12:100", "0='0=0;1=0.5;2=1'"},
        {Percentage(), "-999999999:0:smooth 999999999:0", "0='-1000000009=0;0=0;1=0"},
        {Slider(), "10:600 20:800", "0='0=600;10=800'"}, // beyond the slider
        {Angle(), "-90", "0=270"},
        {Angle(), "10:-90 20:90", "0='0=630;10=810'"},
    };
    for (const Row& row : kRows) {
        Parameter parameter = row.parameter;
        const std::vector<Parameter> parameters{parameter};
        const LineSetting setting{.parameters = parameters, .options = {"size"}};
        const Look look =
            LookOf({{parameter.id(), ParseKeyframes(parameter, row.keys)}}, Renderer::Software);
        const std::string line = MeltLine(setting, look, *footage);
        EXPECT_NE(line.find(row.property), std::string::npos) << row.keys << ": " << line;
        const Words words = StillWords(setting, look, *footage, 12);
        EXPECT_NE(ShellLine("tesselune", words).find("a b.png' still.png --frames 12"),
                  std::string::npos);
    }
}

TEST(Frei0rLines, NameSequencesInFfmpegsSyntax) {
    struct Row {
        const char* pattern;
        const char* name;
    };
    constexpr Row kRows[] = {
        {"s.#.png", "s.%04d.png"},   {"s.###.png", "s.%03d.png"}, {"s.@.png", "s.%01d.png"},
        {"s.$F3.png", "s.%03d.png"}, {"s.$F.png", "s.%d.png"},    {"s.%05d.png", "s.%05d.png"},
    };
    const std::vector<Parameter> parameters{Percentage()};
    const LineSetting setting{.parameters = parameters, .options = {"size"}};
    for (const Row& row : kRows) {
        const TemporaryFolder folder;
        const std::filesystem::path file =
            SequencePattern::parse(folder / row.pattern).value().pathOf(7);
        RawPicture::of({0, 0, 0}, OIIO::TypeDesc::UINT8, -1, 8, 8).write(file);
        const auto footage = OpenFootage({.input = folder / row.pattern});
        const std::string line = FfmpegLine(setting, {}, *footage, 7);
        EXPECT_NE(line.find((folder / row.name).string()), std::string::npos) << line;
    }
}

} // namespace
} // namespace Kerovane::Host
