#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/Preset.h"

#include "Tests/Host/Parameters/SampleParameters.h"
#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

Parameter Named(Parameter parameter, const char* name, A_long id) {
    parameter.name = name;
    parameter.definition.uu.id = id;
    return parameter;
}

std::vector<Parameter> Parameters() {
    Parameter layer;
    layer.definition.param_type = PF_Param_LAYER;
    return {layer, Named(Slider(), "Size", 2), Named(Percentage(), "Dissolve", 3),
            Named(Popup(), "Transition", 5), Named(Checkbox(), "", 6)};
}

TEST(Preset, RoundTripsSettingsAndRenderer) {
    const std::vector<Parameter> parameters = Parameters();
    const ParameterSettings settings{
        {2, Keyframes(24)},
        {3, ParseKeyframes(parameters[2], "1001:0:smooth 1050:33.300000000000004")},
        {5, Keyframes(3)},
        {6, Keyframes(0)}};
    const std::string preset = FormatPreset(parameters, PF_VERSION(1, 2, 3, PF_Stage_RELEASE, 4),
                                            {.settings = settings, .renderer = Renderer::Software});
    const Preset read = ParsePreset(parameters, preset);
    EXPECT_EQ(read.settings, settings);
    EXPECT_EQ(read.renderer, Renderer::Software);
    EXPECT_NE(preset.find(R"("version": "1.2.3")"), std::string::npos) << preset;
    EXPECT_NE(preset.find(R"("value": "radial-out")"), std::string::npos) << preset;
    EXPECT_NE(preset.find(R"("value": false)"), std::string::npos) << preset;
}

TEST(Preset, StoresDefaults) {
    const std::vector<Parameter> parameters = Parameters();
    const Preset preset = ParsePreset(parameters, FormatPreset(parameters, 0, {}));
    EXPECT_EQ(preset.settings.size(), 4U);
    EXPECT_EQ(preset.settings.at(2).at(0), 10);
    EXPECT_EQ(preset.renderer, std::nullopt);
}

TEST(Preset, FindsParametersByIdOrByName) {
    const auto settings = ParsePreset(Parameters(), R"({"parameters": [
        {"id": 2, "value": 7}, {"name": "Dissolve", "value": "50"},
        {"name": "Use Alpha", "id": 6, "value": false}]})")
                              .settings;
    EXPECT_EQ(settings.at(2).at(0), 7);
    EXPECT_EQ(settings.at(3).at(0), 50);
    EXPECT_EQ(settings.at(6).at(0), 0);
}

TEST(Preset, NamesFaultsAndTheirPlaces) {
    struct Row {
        const char* json;
        const char* error;
    };
    constexpr Row kRows[] = {
        {"", "is no JSON: at line 1"},
        {"{\n\"parameters\": [}", "is no JSON: at line 2, column 16"},
        {"[]", "is no JSON object"},
        {R"({"parameters": [{"id": 2, "value": 1e999}]})",
         "is no JSON: number overflow parsing '1e999'"},
        {"{}", "has no list of \"parameters\""},
        {R"({"parametres": [], "parameters": []})",
         "parametres is unknown; did you mean parameters?"},
        {R"({"description": 3, "parameters": []})", "description is no text"},
        {R"({"renderer": "softwear", "parameters": []})",
         "renderer takes opengl or software, not 'softwear'; did you mean software?"},
        {R"({"parameters": [3]})", "parameters[0] is no JSON object"},
        {R"({"parameters": [{"id": 2, "valeu": 3, "value": 3}]})",
         "parameters[0].valeu is unknown; did you mean value?"},
        {R"({"parameters": [{"id": 2, "value": 30}, {"id": 99, "value": 1}]})",
         "parameters[1].id names no parameter: 99"},
        {R"({"parameters": [{"id": 4294967298, "value": 1}]})",
         "parameters[0].id names no parameter: 4294967298"},
        {R"({"parameters": [{"id": 3, "name": "Size", "value": 1}]})",
         R"(parameters[0] has the name "Size", and the id 3 is that of "Dissolve")"},
        {R"({"parameters": [{"name": "Sise", "value": 1}]})",
         R"(parameters[0].name names no parameter: "Sise"; did you mean Size?)"},
        {R"({"parameters": [{"value": 1}]})", "parameters[0] has no name and no id"},
        {R"({"parameters": [{"id": 2}]})", "parameters[0] has no value"},
        {R"({"parameters": [{"id": 2, "value": [1]}]})", "parameters[0] has no value"},
        {R"({"parameters": [{"id": 2, "value": 1}, {"id": 2, "value": 2}]})",
         "parameters[1] sets Size again"},
        {R"({"parameters": [{"id": 2, "value": 3001}, {"id": 5, "value": "radial"}]})",
         "parameters[0].value takes a whole number from -5 to 3000, not '3001'; "
         "parameters[1].value takes linear, radial-in or radial-out, not 'radial'"},
        {R"({"parameters": [{"id": 3, "value": "1:0 0:5"}]})",
         "parameters[0].value has its key at frame 0 behind the one at 1"},
    };
    for (const Row& row : kRows) {
        const std::string error = ErrorOf([&] { ParsePreset(Parameters(), row.json); });
        EXPECT_EQ(error.find(row.error), 0U) << row.json << " gives: " << error;
    }
}

TEST(Preset, IsRefusedIfNestedTooDeeply) {
    const std::string deep = R"({"parameters": [{"id": 2, "name": )" + std::string(1'000'000, '[') +
                             std::string(1'000'000, ']') + "}]}";
    EXPECT_EQ(ErrorOf([&] { ParsePreset(Parameters(), deep); }), "is nested more than 16 deep");
}

} // namespace
} // namespace Kerovane::Host
