#include "Host/Frames/FrameRenderer.h"
#include "Host/Session/World.h"
#include "Tests/Effect/EffectFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

// Compares the software renderer's pictures with the effect's.

namespace Kerovane::Host {
namespace {

using Values = std::vector<std::pair<const char*, double>>; ///< by parameter name

/// Returns a picture with gradients and edges, opaque on the left and more transparent towards the
/// right.
World SomePicture() {
    constexpr A_long width = 631;
    constexpr A_long height = 401;
    World world(Depth::Bits8, width, height);
    for (A_long y = 0; y < height; ++y) {
        for (A_long x = 0; x < width; ++x) {
            const auto wave = [](double phase) {
                return static_cast<A_u_char>(std::lround(127.5 + 127.5 * std::sin(phase)));
            };
            const double alpha = std::clamp(1.6 - 1.6 * x / width, 0.0, 1.0);
            world.row<PF_Pixel8>(y)[static_cast<std::size_t>(x)] = {
                .alpha = static_cast<A_u_char>(std::lround(255 * alpha)),
                .red = wave(x * 0.05 + y * 0.02),
                .green = wave((x / 37 + y / 23) % 2 * 2.5),
                .blue = wave(y * 0.04 - x * 0.01)};
        }
    }
    return world;
}

class Agreement : public testing::Test {
protected:
    World drawn(const World& picture, Renderer with, const Values& values, A_long downsample = 1) {
        ParameterValues set;
        for (const auto& [name, value] : values) {
            const Parameter* parameter = FindParameter(mRenderer.parameters(), std::string(name));
            EXPECT_NE(parameter, nullptr) << name;
            set.set(parameter->id(), value);
        }
        World out(picture.depth(), picture.width(), picture.height());
        mRenderer.render({.time = {}, .downsample = downsample}, set, ViewOf(picture), ViewOf(out),
                         with);
        return out;
    }

    /// Returns the share of pixels that differ by more than `most` in a channel.
    template <typename Pixel>
    static double differing(const World& one, const World& other, float most) {
        std::size_t count = 0;
        for (A_long y = 0; y < one.height(); ++y) {
            const auto row = one.row<Pixel>(y);
            const auto otherRow = other.row<Pixel>(y);
            for (std::size_t x = 0; x < row.size(); ++x) {
                const auto far = [most](auto a, auto b) {
                    return std::abs(static_cast<float>(a) - static_cast<float>(b)) > most;
                };
                count += far(row[x].alpha, otherRow[x].alpha) || far(row[x].red, otherRow[x].red) ||
                         far(row[x].green, otherRow[x].green) || far(row[x].blue, otherRow[x].blue);
            }
        }
        return static_cast<double>(count) / (static_cast<double>(one.width()) * one.height());
    }

    FrameRenderer mRenderer{EffectModules{TESSELUNE_MODULE, TESSELUNE_FLOAT_MODULE}};
    const World mPicture = SomePicture();
    const World mFloats = TestSupport::AtDepth(mPicture, Depth::Float32);
};

TEST_F(Agreement, HoldsForEveryPixelWithoutRandomness) {
    const Values kForms[] = {{{"Shape Type", 1}, {"Size", 10}},
                             {{"Shape Type", 1}, {"Size", 7}, {"Ratio", 1.7}},
                             {{"Shape Type", 1}, {"Size", 2}, {"Ratio", 0.3}},
                             {{"Shape Type", 1}, {"Size", 500}},
                             {{"Shape Type", 2}, {"Size", 24}},
                             {{"Shape Type", 2}, {"Size", 9}, {"Ratio", 0.6}},
                             {{"Shape Type", 2}, {"Size", 5}, {"Ratio", 3.1}}};
    const Values kSweeps[] = {{},
                              {{"Transition Progress", 37}, {"Direction", 33}},
                              {{"Transition Progress", 61}, {"Direction", 200}},
                              {{"Transition Progress", 50}, {"Transition Type", 2}},
                              {{"Transition Progress", 50}, {"Transition Type", 3}}};
    for (const Values& form : kForms) {
        for (const Values& sweep : kSweeps) {
            for (const double useAlpha : {0, 1}) {
                for (const A_long downsample : {1, 3}) {
                    Values values{{"Size Random", 0}, {"Feather", 0}, {"Use Alpha", useAlpha}};
                    values.insert(values.end(), form.begin(), form.end());
                    values.insert(values.end(), sweep.begin(), sweep.end());
                    const auto both = [&](const World& picture, auto differ) {
                        return differ(drawn(picture, Renderer::OpenGL, values, downsample),
                                      drawn(picture, Renderer::Software, values, downsample));
                    };
                    EXPECT_LE(both(mPicture,
                                   [](const World& effect, const World& software) {
                                       return differing<PF_Pixel8>(effect, software, 1);
                                   }),
                              0.001)
                        << testing::PrintToString(values) << " / " << downsample;
                    EXPECT_LE(both(mFloats,
                                   [](const World& effect, const World& software) {
                                       return differing<PF_PixelFloat>(effect, software, 1e-5F);
                                   }),
                              0.001)
                        << "floats, " << testing::PrintToString(values) << " / " << downsample;
                }
            }
        }
    }
}

/// Each cell is decided at random, independently of the others. Allows four standard deviations of
/// the mean.
TEST_F(Agreement, HoldsForTheSharesOfRandomCells) {
    struct Row {
        Values values;
        double cells; ///< number of independent cells
    };
    const Row kRows[] = {
        {{{"Dissolve", 30}, {"Size", 10}, {"Size Random", 0}}, 64.0 * 41},
        {{{"Dissolve", 80}, {"Size", 6}, {"Size Random", 0}, {"Shape Type", 2}}, 106.0 * 67 * 2},
        {{{"Transition Progress", 50}, {"Feather", 300}, {"Size", 8}, {"Size Random", 0}},
         79.0 * 51},
        {{{"Size Random", 40}, {"Size", 4}, {"Size Level", 2}}, 40.0 * 26},
        {{{"Size Random", 100}, {"Size", 3}, {"Size Level", 1}, {"Shape Type", 2}}, 106.0 * 67}};
    for (const Row& row : kRows) {
        Values plain = row.values;
        plain.insert(plain.end(),
                     {{"Dissolve", 0}, {"Transition Progress", 0}, {"Size Random", 0}});
        const auto changed = [&](Renderer with) {
            return differing<PF_Pixel8>(drawn(mPicture, with, row.values),
                                        drawn(mPicture, with, plain), 0);
        };
        const double bound = 4 * std::sqrt(2 * 0.25 / row.cells);
        EXPECT_NEAR(changed(Renderer::Software), changed(Renderer::OpenGL), bound)
            << testing::PrintToString(row.values);
    }
}

} // namespace
} // namespace Kerovane::Host
