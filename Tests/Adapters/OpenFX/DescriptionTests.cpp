#include "Tests/Adapters/OpenFX/OpenFXHost.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace Kerovane::OpenFX {

namespace {

TEST(Description, HasTheParametersOfTheEffect) {
    const OpenFXHost host;
    const TestEffect effect = host.described();
    const Properties& page = effect.params.at("controls").properties;
    std::ostringstream listing;
    for (int place = 0; page.at<std::string>(kOfxParamPropPageChild, place); ++place) {
        const std::string name = *page.at<std::string>(kOfxParamPropPageChild, place);
        const Param& param = effect.params.at(name);
        const Properties& properties = param.properties;
        EXPECT_TRUE(properties.at<std::string>(kOfxParamPropHint)->ends_with('.')) << name;
        listing << name << " '" << *properties.at<std::string>(kOfxPropLabel) << "' "
                << *properties.at<std::string>(kOfxParamPropParent) << ' ' << param.type << ' '
                << properties.at<std::string>(kOfxParamPropDoubleType).value_or("") << ' '
                << param.valueAt(0);
        for (const Name edge : {kOfxParamPropMin, kOfxParamPropMax, kOfxParamPropDisplayMin,
                                kOfxParamPropDisplayMax}) {
            if (const auto real = properties.at<double>(edge)) {
                listing << ' ' << *real;
            } else if (const auto whole = properties.at<int>(edge)) {
                listing << ' ' << *whole;
            }
        }
        for (int i = 0; properties.at<std::string>(kOfxParamPropChoiceOption, i); ++i) {
            listing << ", " << *properties.at<std::string>(kOfxParamPropChoiceOption, i);
        }
        listing << '\n';
    }
    EXPECT_EQ(listing.str(),
              R"(shapeType 'Shape Type' cellsGroup OfxParamTypeChoice  0, Square, Triangle
size 'Size' cellsGroup OfxParamTypeInteger  10 2 3000 2 500
ratio 'Ratio' cellsGroup OfxParamTypeDouble  1 0.01 10 0.01 10
sizeRandom 'Size Random' randomnessGroup OfxParamTypeDouble OfxParamDoubleTypeScale 0 0 1 0 1
sizeLevel 'Size Level' randomnessGroup OfxParamTypeInteger  3 1 5 1 5
sizeRandomSeed 'Size Random Seed' randomnessGroup OfxParamTypeInteger  0 0 5000 0 5000
dissolve 'Dissolve' dissolveGroup OfxParamTypeDouble OfxParamDoubleTypeScale 0 0 1 0 1
dissolveRandomSeed 'Dissolve Random Seed' dissolveGroup OfxParamTypeInteger  0 0 5000 0 5000
transitionType 'Transition Type' transitionGroup OfxParamTypeChoice  0, Linear, Radial In, Radial Out
transitionProgress 'Transition Progress' transitionGroup OfxParamTypeDouble OfxParamDoubleTypeScale 0 0 1 0 1
feather 'Feather' transitionGroup OfxParamTypeInteger  250 0 5000 0 500
direction 'Direction' transitionGroup OfxParamTypeDouble OfxParamDoubleTypeAngle 0 -32768 32767 0 360
useAlpha 'Use Alpha' outputGroup OfxParamTypeBoolean  1
renderer 'Renderer' outputGroup OfxParamTypeChoice  0, As configured, OpenGL, Software
)");
}

TEST(Description, DeclaresAlphaIfThereCanBeHoles) {
    using Keys = std::map<std::string, std::map<double, double>>; // values by time, by parameter
    const std::pair<Keys, bool> rows[] = {
        {{}, false},
        {{{"dissolve", {{0, 0}, {9, 0.1}}}}, true},
        {{{"transitionProgress", {{0, 0.5}}}}, true},
        {{{"transitionProgress", {{0, 0.5}}}, {"useAlpha", {{0, 0}}}}, false},
        {{{"transitionProgress", {{0, 0.5}}}, {"useAlpha", {{0, 0}, {5, 1}}}}, true},
        {{{"transitionType", {{0, 2}}}, {"feather", {{0, 0}}}}, true},
        {{{"transitionType", {{0, 2}}}, {"feather", {{0, 1}}}}, false},
    };
    const OpenFXHost host;
    for (const auto& [keysOfParams, areHoles] : rows) {
        TestEffect effect = host.described();
        for (const auto& [name, keys] : keysOfParams) {
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
                      areHoles || hasAlpha ? kOfxImageComponentRGBA : kOfxImageComponentRGB);
            EXPECT_EQ(preferences.at<std::string>(kOfxImageEffectPropPreMultiplication),
                      areHoles   ? kOfxImagePreMultiplied
                      : hasAlpha ? kOfxImageUnPreMultiplied
                                 : kOfxImageOpaque);
        }
    }
}

} // namespace

} // namespace Kerovane::OpenFX
