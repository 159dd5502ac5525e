#include "Tests/Host/Command/CommandFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>
#include <string>

namespace {

class ParamsCommand : public Command {
protected:
    static nlohmann::json parametersIn(const Outcome& outcome) {
        return nlohmann::json::parse(outcome.output)["parameters"];
    }
};

TEST_F(ParamsCommand, ListsParametersAsJson) {
    const nlohmann::json json = parametersIn(runFake({"params", "--json"}));
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
    EXPECT_EQ(json[8]["label"], "Invert");
}

TEST_F(ParamsCommand, TellsTheMeaningOfEachParameterOfTesselune) {
    const std::string table = run({"params"}).output;
    const std::string help = run({"render", "--help"}).output;
    int meanings = 0;
    for (const auto& parameter : parametersIn(run({"params", "--json"}))) {
        if (parameter.contains("option")) {
            const std::string meaning = parameter["meaning"];
            EXPECT_NE(meaning, "") << parameter;
            EXPECT_NE(table.find(' ' + meaning + '\n'), std::string::npos) << table;
            EXPECT_NE(help.find(' ' + meaning), std::string::npos) << help;
            ++meanings;
        }
    }
    EXPECT_EQ(meanings, 13);
}

TEST_F(ParamsCommand, RenamesParametersThatAreNamedLikeOptionsOfTheCommand) {
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
    const Outcome listing = runFake({"params", "--json"}, "", {"FAKE_EFFECT_SWITCHES=" + names});
    for (const auto& parameter : parametersIn(listing)) {
        if (parameter["index"] > 8) {
            EXPECT_EQ(parameter["option"],
                      parameter["name"].get<std::string>() + "-" + parameter["id"].dump());
        }
    }
}

} // namespace
