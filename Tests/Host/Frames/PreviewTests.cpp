#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/ParameterText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

namespace Kerovane::Host {
namespace {

constexpr A_long kWidth = 192;
constexpr A_long kHeight = 128;

/// Returns a picture, `reduced` times smaller, whose red and green state the place across and down.
/// The values at a place do not depend on the reduction.
World Ramp(A_long reduced) {
    World world(Depth::Float32, kWidth / reduced, kHeight / reduced);
    const auto place = [reduced](A_long pixel, A_long side) {
        return (static_cast<float>(pixel) + 0.5F) * static_cast<float>(reduced) /
               static_cast<float>(side);
    };
    for (A_long y = 0; y < world.height(); ++y) {
        A_long x = 0;
        for (PF_PixelFloat& pixel : world.row<PF_PixelFloat>(y)) {
            pixel = {.alpha = 1, .red = place(x++, kWidth), .green = place(y, kHeight), .blue = 0};
        }
    }
    return world;
}

using Look = std::map<std::string_view, std::string_view>;

World Rendered(FrameRenderer& renderer, const Look& look, A_long reduced) {
    ParameterValues values;
    for (const auto& [name, text] : look) {
        const Parameter* parameter = FindParameter(renderer.parameters(), name);
        values.set(parameter->id(), ParseValue(*parameter, text));
    }
    const World input = Ramp(reduced);
    World output(input.depth(), input.width(), input.height());
    Frame frame;
    frame.downsample = reduced;
    renderer.render(frame, values, ViewOf(input), ViewOf(output));
    return output;
}

/// Returns the greatest difference between the preview and each `reduced`-th pixel of `full`.
float Difference(const World& full, const World& preview, A_long reduced) {
    float greatest = 0;
    const auto step = static_cast<std::size_t>(reduced);
    for (A_long y = 0; y < preview.height(); ++y) {
        const auto expectedRow = full.row<PF_PixelFloat>(y * reduced);
        const auto actualRow = preview.row<PF_PixelFloat>(y);
        for (std::size_t x = 0; x < actualRow.size(); ++x) {
            const PF_PixelFloat& expected = expectedRow[x * step];
            const PF_PixelFloat& actual = actualRow[x];
            greatest = std::max({greatest, std::abs(actual.alpha - expected.alpha),
                                 std::abs(actual.red - expected.red),
                                 std::abs(actual.green - expected.green)});
        }
    }
    return greatest;
}

TEST(Preview, ShowsTheCellsOfTheFullPictureIfTheirSizeDividesEvenly) {
    const Look looks[] = {
        {{"Size", "16"}},
        {{"Size", "32"}, {"Ratio", "0.5"}},
        {{"Size", "8"}, {"Size Random", "80"}, {"Size Random Seed", "3"}},
        {{"Shape Type", "triangle"}, {"Size", "16"}},
        {{"Shape Type", "triangle"}, {"Size", "8"}, {"Size Random", "80"}, {"Size Level", "2"}},
        {{"Size", "16"}, {"Transition Progress", "45"}, {"Feather", "0"}, {"Direction", "30"}},
        {{"Size", "8"},
         {"Transition Type", "radial-out"},
         {"Transition Progress", "45"},
         {"Feather", "0"}},
    };
    FrameRenderer renderer(TESSELUNE_MODULE);
    // A cell's colour may differ by what the ramp changes over one pixel of the preview. A mosaic
    // of other cells differs by more, as the last check shows.
    for (const Look& look : looks) {
        const World full = Rendered(renderer, look, 1);
        for (const A_long reduced : {2, 4}) {
            const auto tolerance = static_cast<float>(reduced) / kHeight;
            EXPECT_LE(Difference(full, Rendered(renderer, look, reduced), reduced), tolerance)
                << testing::PrintToString(look) << " reduced " << reduced << " times";
        }
        EXPECT_GT(Difference(full, Rendered(renderer, {{"Size", "24"}}, 4), 4), 5.0F / kHeight)
            << "other cells are told from these";
    }
}

} // namespace
} // namespace Kerovane::Host
