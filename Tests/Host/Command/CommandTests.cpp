#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using OIIO::TypeDesc;

TEST_F(Command, TellsWhyTheEffectFailed) {
    makePicture("in.png", {1, 0, 0}, TypeDesc::UINT8);
    struct Row {
        const char* fault;
        const char* text;
    };
    constexpr Row kRows[] = {
        {"setup error", "failed at set-up: error 4 (out of memory)"},
        {"disk id used twice", "the disk id 7 is used twice"},
        {"render error", "failed at rendering: error 516"},
        {"render message", "failed at rendering: first line second line"},
        {"render exception", "failed at rendering: thrown by the fake effect"},
    };
    for (const Row& row : kRows) {
        ExpectOneLine(runFake({"render", "in.png", "out.png"}, row.fault), row.text);
    }
    ExpectOneLine(run({"params", "--effect", "missing.so"}), "cannot load the effect");
    EXPECT_EQ(mFolder.files(), std::vector<std::string>{"in.png"});
}

TEST_F(Command, RefusesToRenderWithoutOpenGL) {
    makePicture("in.png", {1, 0, 0}, TypeDesc::UINT8);
    const Words noDriver{"__EGL_VENDOR_LIBRARY_FILENAMES=/nowhere"};
    ExpectOneLine(runFake({"render", "in.png", "out.png"}, "", noDriver),
                  "cannot render: No OpenGL driver");
    EXPECT_EQ(mFolder.files(), std::vector<std::string>{"in.png"});
    const Outcome about = runFake({"about"}, "", noDriver);
    EXPECT_EQ(about.status, 0);
    EXPECT_NE(about.output.find("OpenGL: none."), std::string::npos) << about.output;
}

TEST_F(Command, DrawsByTheRendererThatIsChosenOrLeft) {
    RawPicture::of({1, 0.5F, 0, 1}, TypeDesc::UINT8, 3, 64, 48).write(mFolder / "in.png");
    const Words noDriver{"__EGL_VENDOR_LIBRARY_FILENAMES=/nowhere"};
    const Words software{"TESSELUNE_RENDERER=software"};
    struct Row {
        Words options;
        Words environment;
        int lines; ///< on standard error
    };
    const Row rows[] = {
        {{"--renderer", "software", "--save-preset", "p.json", "--json-log", "log"}, {}, 0},
        {{"--preset", "p.json"}, {}, 0},
        {{"--render-threads", "3"}, software, 0},
        {{}, noDriver, 1},
    };
    std::vector<float> first;
    for (const Row& row : rows) {
        Words line{"render", "in.png", "out.png", "--dissolve", "50", "--size", "3"};
        line.insert(line.end(), row.options.begin(), row.options.end());
        const Outcome outcome = run(line, row.environment);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(std::ranges::count(outcome.error, '\n'), row.lines) << outcome.error;
        const RawPicture drawn = RawPicture::read(mFolder / "out.png");
        first = first.empty() ? drawn.values : first;
        EXPECT_EQ(drawn.values, first);
    }
    EXPECT_NE(mFolder.contentOf("log").find(R"("renderer":"software")"), std::string::npos);
    std::filesystem::remove(mFolder / "out.png");
    const Words line{"render", "in.png", "out.png"};
    ExpectOneLine(runFake(line, "", software), "the software renderer draws the installed effect");
    ExpectOneLine(run(line, {"TESSELUNE_RENDERER=fast"}),
                  "TESSELUNE_RENDERER takes opengl or software, not 'fast'");
    ExpectOneLine(run({"render", "in.png", "out.png", "--renderer", "opengl"}, noDriver),
                  "cannot render: No OpenGL driver");
    EXPECT_FALSE(std::filesystem::exists(mFolder / "out.png"));
    EXPECT_NE(run(line, {"TESSELUNE_RENDERER="}).error.find("'software' is many times faster"),
              std::string::npos);
}

TEST_F(Command, KeepsTheEffectsReportOutOfItsOutput) {
    const Outcome quiet = runFake({"about"}, "");
    const Outcome chatty = runFake({"about"}, "chatty");
    EXPECT_EQ(chatty.status, 0);
    EXPECT_EQ(chatty.output, quiet.output);
    EXPECT_EQ(chatty.error, "");
    const Outcome verbose = runFake({"about", "--verbose"}, "chatty");
    EXPECT_EQ(verbose.output, quiet.output);
    for (const char* report : {"on stdout, flushed", "on stdout, left to exit", "on stderr"}) {
        EXPECT_NE(verbose.error.find(report), std::string::npos) << report;
    }
}

TEST_F(Command, TellsItsVersion) {
    EXPECT_EQ(runFake({"--version"}).output.find("tesselune 1."), 0U);
}

TEST_F(Command, HelpsBriefly) {
    struct Row {
        Words arguments;
        const char* text;
    };
    const Row rows[] = {{{"--help"}, "tesselune render photo.jpg cells.png"},
                        {{"render", "--help"}, "--amount-px"},
                        {{"params", "--help"}, "--json"}};
    for (const Row& row : rows) {
        const Outcome outcome = runFake(row.arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.error, "");
        EXPECT_NE(outcome.output.find(row.text), std::string::npos) << outcome.output;
        EXPECT_LT(std::ranges::count(outcome.output, '\n'), 90);
        EXPECT_NE(outcome.output.find("Example"), std::string::npos);
    }
}

TEST_F(Command, ListsTheParametersForPeopleAndPrograms) {
    const std::string table = runFake({"params"}).output;
    EXPECT_NE(table.find("1      1   slider        Amount (px)  --amount-px  3 "),
              std::string::npos)
        << table;
    EXPECT_EQ(std::ranges::count(table, '\n'), 10);

    const auto json = nlohmann::json::parse(runFake({"params", "--json"}).output)["parameters"];
    ASSERT_EQ(json.size(), 9U);
    EXPECT_EQ(json[0]["type"], "layer");
    const nlohmann::json slider{
        {"index", 1},
        {"type", "slider"},
        {"name", "Amount (px)"},
        {"id", 1},
        {"label", ""},
        {"meaning", ""},
        {"option", "amount-px"},
        {"unit", ""},
        {"default", 3},
        {"valid", {{"min", -10}, {"max", 100}}},
        {"slider", {{"min", 0}, {"max", 50}}},
        {"precision", 0},
        {"choices", nlohmann::json::array()},
        {"animatable", true},
        {"interpolations", {"linear", "hold", "smooth", "ease-in", "ease-out", "ease-in-out"}}};
    EXPECT_EQ(json[1], slider);
    EXPECT_EQ(json[2]["default"], 0.3);
    EXPECT_EQ(json[2]["meaning"], "") << "another Ratio than Tesselune's";
    EXPECT_EQ(json[3]["unit"], "percent");
    EXPECT_EQ(json[5]["choices"][1]["typed"], "number-two");
    EXPECT_EQ(json[5]["option"], "depth-5") << "the command has a --depth of its own";
    EXPECT_EQ(json[8]["label"], "Invert");
}

TEST_F(Command, TellsWhatEachParameterOfTesseluneMeans) {
    const std::string table = run({"params"}).output;
    const std::string help = run({"render", "--help"}).output;
    const auto json = nlohmann::json::parse(run({"params", "--json"}).output)["parameters"];
    int meanings = 0;
    for (const auto& parameter : json) {
        if (parameter.contains("option")) {
            const std::string meaning = parameter["meaning"];
            EXPECT_NE(meaning, "") << parameter;
            EXPECT_NE(table.find(' ' + meaning + '\n'), std::string::npos) << table;
            EXPECT_NE(help.find(' ' + meaning), std::string::npos) << help;
            ++meanings;
        }
    }
    EXPECT_EQ(meanings, 13);
    const std::string size = run({"params", "size"}).output;
    EXPECT_NE(size.find("  meaning     Height of the cells"), std::string::npos) << size;
    EXPECT_NE(size.find("  unit        pixels\n"), std::string::npos) << size;
}

TEST_F(Command, DescribesOneParameter) {
    for (const char* name : {"depth-5", "Depth", "5"}) {
        const std::string text = runFake({"params", name}).output;
        EXPECT_NE(text.find("takes       one, number-two or 3rd\n"), std::string::npos) << text;
        EXPECT_NE(text.find("animation   hold\n"), std::string::npos) << text;
    }
    const auto json = nlohmann::json::parse(runFake({"params", "turn", "--json"}).output);
    EXPECT_EQ(json["unit"], "degrees");
}

TEST_F(Command, GivesAParameterAnotherOptionThanItsOwn) {
    std::string names;
    for (const char* command : {"render", "sheet"}) {
        std::istringstream help(run({command, "--help"}).output);
        for (std::string line; std::getline(help, line) && line != "Parameters of the effect:";) {
            const std::size_t start = line.find("--");
            if (start <= 5) {
                names += line.substr(start + 2, line.find(' ', start) - start - 2) + ' ';
            }
        }
    }
    for (const char* name : {"frames ", "vary "}) {
        EXPECT_NE(names.find(name), std::string::npos) << names;
    }
    const std::string json =
        runFake({"params", "--json"}, "", {"FAKE_EFFECT_SWITCHES=" + names}).output;
    const nlohmann::json listing = nlohmann::json::parse(json);
    for (const auto& parameter : listing["parameters"]) {
        if (parameter["index"] > 8) {
            EXPECT_EQ(parameter["option"],
                      parameter["name"].get<std::string>() + "-" + parameter["id"].dump());
        }
    }
}

TEST_F(Command, RendersAtTheFilesDepthOrAsTold) {
    makePicture("8.png", {1, 0.2F, 0, 0.6F}, TypeDesc::UINT8);
    makePicture("16.tif", {1, 0.25F, 0}, TypeDesc::UINT16);
    makePicture("half.exr", {0.5F, 0.125F, 0, 0.5F}, TypeDesc::HALF);
    makePicture("grey.jpg", {0.6F}, TypeDesc::UINT8);
    struct Row {
        Words arguments;
        TypeDesc type;
        std::vector<float> pixel;
    };
    const Row rows[] = {
        {{"8.png", "out.png"}, TypeDesc::UINT8, {0, 0.8F, 1, 0.6F}},
        {{"8.png", "out.tif", "--bits", "16"}, TypeDesc::UINT16, {0, 0.8F, 1, 0.6F}},
        {{"8.png", "out.exr", "--depth", "32"}, TypeDesc::HALF, {0, 0.48F, 0.6F, 0.6F}},
        {{"8.png", "out.jpg", "--channels", "rgb"}, TypeDesc::UINT8, {0, 0.48F, 0.6F}},
        {{"16.tif", "out.png"}, TypeDesc::UINT16, {0, 0.75F, 1, 1}},
        {{"half.exr", "out.exr"}, TypeDesc::HALF, {0, 0.375F, 0.5F, 0.5F}},
        {{"half.exr", "out.png", "--depth", "8"}, TypeDesc::UINT8, {0, 0.75F, 1, 0.5F}},
        {{"grey.jpg", "out.png"}, TypeDesc::UINT8, {0.4F, 1}},
    };
    for (const Row& row : rows) {
        Words arguments{"render", "--invert", "true"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Outcome outcome = runFake(arguments);
        ASSERT_EQ(outcome.status, 0) << outcome.error;
        EXPECT_EQ(outcome.output + outcome.error, "");
        const RawPicture picture = RawPicture::read(mFolder / row.arguments[1]);
        EXPECT_EQ(picture.spec.format, row.type) << row.arguments[1];
        ASSERT_EQ(picture.spec.nchannels, static_cast<int>(row.pixel.size())) << row.arguments[1];
        for (std::size_t channel = 0; channel < row.pixel.size(); ++channel) {
            EXPECT_NEAR(picture.firstPixel()[channel], row.pixel[channel], 0.01)
                << row.arguments[0] << " to " << row.arguments[1] << ", channel " << channel;
        }
    }
}

TEST_F(Command, TellsTheEffectOfAPreview) {
    makePicture("in.png", {1, 0, 0}, TypeDesc::UINT8);
    ExpectOneLine(runFake({"render", "in.png", "out.png", "--downsample", "4"}, "report frame"),
                  "downsample 1/4 size 128x96");
}

TEST_F(Command, FindsTheEffectBesideItselfFromAnywhere) {
    const std::filesystem::path bin = mFolder / "usr/bin";
    const std::filesystem::path lib = (bin / TESSELUNE_MODULE_PATH).lexically_normal();
    std::filesystem::create_directories(bin);
    std::filesystem::create_directories(lib);
    std::filesystem::copy(TESSELUNE_COMMAND, bin / "tesselune");
    std::filesystem::copy(FAKE_EFFECT, lib / "Tesselune.so");
    const Outcome outcome = run({"about"}, {}, (bin / "tesselune").c_str());
    EXPECT_EQ(outcome.output.find("Fake\nAn effect for tests\nVersion: 2.3.4 (beta, build 5)\n"),
              0U)
        << outcome.output << outcome.error;
}

TEST_F(Command, RendersPlainColourAsItIsThroughTheRealEffect) {
    struct Row {
        const char* in;
        const char* out;
        TypeDesc type;
    };
    const Row rows[] = {{"in.png", "out.png", TypeDesc::UINT8},
                        {"in.tif", "out.tif", TypeDesc::UINT16},
                        {"in.exr", "out.exr", TypeDesc::HALF}};
    for (const Row& row : rows) {
        makePicture(row.in, {0.8F, 0.4F, 0.2F, 1}, row.type);
        const Outcome outcome = run({"render", row.in, row.out, "--shape-type", "triangle",
                                     "--size", "8", "--effect", TESSELUNE_MODULE});
        EXPECT_EQ(outcome.output + outcome.error, "");
        const RawPicture picture = RawPicture::read(mFolder / row.out);
        EXPECT_EQ(picture.spec.format, row.type) << row.out;
        for (std::size_t i = 0; i < picture.values.size(); i += 4) {
            ASSERT_NEAR(picture.values[i], 0.8, 0.005) << row.out << " at " << i;
            ASSERT_NEAR(picture.values[i + 2], 0.2, 0.005) << row.out << " at " << i;
        }
    }
}

TEST_F(Command, TellsOnceInHowManyPixelsChannelsAreNotFinite) {
    RawPicture picture = RawPicture::of({0.5F, 0.5F, 0.5F, 1}, TypeDesc::FLOAT, 3);
    picture.values[0] = picture.values[1] = std::numeric_limits<float>::quiet_NaN();
    picture.values[7] = std::numeric_limits<float>::infinity();
    picture.write(mFolder / "in.1.exr");
    picture.write(mFolder / "in.2.exr");
    const Outcome one = runFake({"render", "in.1.exr", "out.exr"});
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.error, "tesselune: NaN and infinite channels counted as 0 in 2 pixels\n");
    const RawPicture written = RawPicture::read(mFolder / "out.exr");
    const std::vector<float> first(written.values.begin(), written.values.begin() + 8);
    EXPECT_EQ(first, (std::vector<float>{0, 0, 0.5F, 1, 0, 0, 0, 0})) << "premultiplied";
    const Outcome shot = runFake({"render", "in.%d.exr", "out.%d.exr"});
    const std::size_t line = shot.error.find("counted as 0 in 4 pixels");
    EXPECT_NE(line, std::string::npos) << shot.error;
    EXPECT_EQ(shot.error.find("counted as 0", line + 1), std::string::npos) << shot.error;
    EXPECT_EQ(runFake({"render", "in.1.exr", "out.exr", "--quiet"}).error, "");
}

TEST_F(Command, KeepsEveryLevelOfWhatIsDeeperThan8Bits) {
    const struct {
        const char* in;
        const char* out;
        TypeDesc type;
        double first;
        double last;
        double tolerance;
    } rows[] = {{"in.exr", "out.exr", TypeDesc::FLOAT, -1, 7, 1e-6},
                {"in.png", "out.png", TypeDesc::UINT16, 0, 1, 1.0 / 65535},
                {"in.tif", "out.tif", TypeDesc::UINT16, 0, 1, 1.0 / 65535}};
    constexpr int kLevels = 1024;
    for (const auto& [in, out, type, first, last, tolerance] : rows) {
        RawPicture ramp = RawPicture::of({0, 0.25F, 0.5F}, type, -1, kLevels, 2);
        for (std::size_t x = 0; x < 2 * kLevels; ++x) {
            const double share = static_cast<double>(x % kLevels) / (kLevels - 1);
            ramp.values[3 * x] = static_cast<float>(first + (last - first) * share);
        }
        ramp.write(mFolder / in);
        const Outcome outcome = run({"render", in, out, "--size", "2"});
        EXPECT_EQ(outcome.output + outcome.error, "");
        const RawPicture picture = RawPicture::read(mFolder / out);
        EXPECT_EQ(picture.spec.format, type);
        std::set<float> levels;
        for (std::size_t x = 0; x < kLevels; ++x) {
            // The reference point lies between the cell's pixels.
            const std::size_t left = x / 2 * 2;
            const float cell = (ramp.values[3 * left] + ramp.values[3 * left + 3]) / 2;
            ASSERT_NEAR(picture.values[3 * x], cell, tolerance) << out << " at " << x;
            levels.insert(picture.values[3 * x]);
        }
        EXPECT_EQ(levels.size(), std::size_t{kLevels / 2}) << out;
    }
}

} // namespace
