#include "Tests/Adapters/OpenFX/OpenFXHost.h"

#include <gtest/gtest.h>

namespace Kerovane::OpenFX {

namespace {

TEST(Description, HasTheParametersOfTheEffect) {
    struct Row {
        std::string name;
        std::string label;
        std::string group;
        std::string type;
        double preset;
        double min = 0;
        double max = 0;
        double shownMin = 0;
        double shownMax = 0;
    };
    const Row rows[] = {
        {"shapeType", "Shape Type", "cellsGroup", kOfxParamTypeChoice, 0},
        {"size", "Size", "cellsGroup", kOfxParamTypeInteger, 10, 2, 3000, 2, 500},
        {"ratio", "Ratio", "cellsGroup", kOfxParamTypeDouble, 1, 0.01, 10, 0.01, 10},
        {"sizeRandom", "Size Random", "randomnessGroup", kOfxParamTypeDouble, 0, 0, 1, 0, 1},
        {"sizeLevel", "Size Level", "randomnessGroup", kOfxParamTypeInteger, 3, 1, 5, 1, 5},
        {"sizeRandomSeed", "Size Random Seed", "randomnessGroup", kOfxParamTypeInteger, 0, 0, 5000,
         0, 5000},
        {"dissolve", "Dissolve", "dissolveGroup", kOfxParamTypeDouble, 0, 0, 1, 0, 1},
        {"dissolveRandomSeed", "Dissolve Random Seed", "dissolveGroup", kOfxParamTypeInteger, 0, 0,
         5000, 0, 5000},
        {"transitionType", "Transition Type", "transitionGroup", kOfxParamTypeChoice, 0},
        {"transitionProgress", "Transition Progress", "transitionGroup", kOfxParamTypeDouble, 0, 0,
         1, 0, 1},
        {"feather", "Feather", "transitionGroup", kOfxParamTypeInteger, 250, 0, 5000, 0, 500},
        {"direction", "Direction", "transitionGroup", kOfxParamTypeDouble, 0, -32768, 32767, 0,
         360},
        {"useAlpha", "Use Alpha", "outputGroup", kOfxParamTypeBoolean, 1},
        {"renderer", "Renderer", "outputGroup", kOfxParamTypeChoice, 0},
    };
    const OpenFXHost host;
    TestEffect effect = host.described();
    int place = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(effect.params.contains(row.name));
        const Param& param = effect.params.at(row.name);
        const Properties& properties = param.properties;
        EXPECT_EQ(param.type, row.type);
        EXPECT_EQ(param.valueAt(0), row.preset);
        EXPECT_EQ(properties.at<std::string>(kOfxPropLabel), row.label);
        EXPECT_EQ(properties.at<std::string>(kOfxParamPropParent), row.group);
        EXPECT_TRUE(properties.at<std::string>(kOfxParamPropHint)->ends_with('.'));
        EXPECT_EQ(effect.params.at("controls")
                      .properties.at<std::string>(kOfxParamPropPageChild, place++),
                  row.name);
        const auto edge = [&](Name name) {
            return row.type == kOfxParamTypeDouble
                       ? properties.at<double>(name).value_or(0)
                       : static_cast<double>(properties.at<int>(name).value_or(0));
        };
        EXPECT_EQ(edge(kOfxParamPropMin), row.min);
        EXPECT_EQ(edge(kOfxParamPropMax), row.max);
        EXPECT_EQ(edge(kOfxParamPropDisplayMin), row.shownMin);
        EXPECT_EQ(edge(kOfxParamPropDisplayMax), row.shownMax);
    }
    EXPECT_EQ(
        effect.params.at("transitionType").properties.at<std::string>(kOfxParamPropChoiceOption, 2),
        "Radial Out");
    EXPECT_EQ(effect.params.at("direction").properties.at<std::string>(kOfxParamPropDoubleType),
              kOfxParamDoubleTypeAngle);
    EXPECT_EQ(effect.params.at("dissolve").properties.at<std::string>(kOfxParamPropDoubleType),
              kOfxParamDoubleTypeScale);
}

TEST(Description, SaysWhereHolesCanBe) {
    struct Row {
        std::map<std::string, std::map<double, double>> keys; ///< by parameter
        bool areHoles;
    };
    const Row rows[] = {
        {{}, false},
        {{{"dissolve", {{0, 0}, {9, 0.1}}}}, true},
        {{{"transitionProgress", {{0, 0.5}}}}, true},
        {{{"transitionProgress", {{0, 0.5}}}, {"useAlpha", {{0, 0}}}}, false},
        {{{"transitionProgress", {{0, 0.5}}}, {"useAlpha", {{0, 0}, {5, 1}}}}, true},
        {{{"transitionType", {{0, 2}}}, {"feather", {{0, 0}}}}, true},
        {{{"transitionType", {{0, 2}}}, {"feather", {{0, 1}}}}, false},
    };
    const OpenFXHost host;
    for (const Row& row : rows) {
        TestEffect effect = host.described();
        for (const auto& [name, keys] : row.keys) {
            effect.params.at(name).keys = keys;
        }
        for (const bool hasAlpha : {true, false}) {
            Image source{.bounds = {0, 0, 4, 4},
                         .channels = hasAlpha ? 4 : 3,
                         .coverage = hasAlpha ? Coverage::Straight : Coverage::Opaque};
            source.make();
            effect.connect(source, source);
            Properties preferences{{"OfxImageClipPropComponents_Source", {std::string()}},
                                   {"OfxImageClipPropComponents_Output", {std::string()}},
                                   {kOfxImageEffectPropPreMultiplication, {std::string()}}};
            ASSERT_EQ(host.act(kOfxImageEffectActionGetClipPreferences, &effect, {}, &preferences),
                      kOfxStatOK);
            EXPECT_EQ(preferences.at<std::string>("OfxImageClipPropComponents_Output"),
                      row.areHoles || hasAlpha ? kOfxImageComponentRGBA : kOfxImageComponentRGB);
            EXPECT_EQ(preferences.at<std::string>(kOfxImageEffectPropPreMultiplication),
                      row.areHoles ? kOfxImagePreMultiplied
                      : hasAlpha   ? kOfxImageUnPreMultiplied
                                   : kOfxImageOpaque);
        }
    }
}

} // namespace

} // namespace Kerovane::OpenFX
