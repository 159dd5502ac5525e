#include "Host/Sheet/ContactSheet.h"
#include "Host/Sheet/Lettering.h"
#include "Host/Text/Error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace Kerovane::Host;

World Plain(A_long width, A_long height, PF_Pixel8 colour) {
    World world(Depth::Bits8, width, height);
    for (A_long y = 0; y < height; ++y) {
        std::ranges::fill(world.row<PF_Pixel8>(y), colour);
    }
    return world;
}

constexpr int kCanvasWidth = 300;

std::vector<float> Drawn(const std::string& text) {
    std::vector<float> pixels(std::size_t{kCanvasWidth} * kLineHeight);
    OIIO::ImageBuf canvas(OIIO::ImageSpec(kCanvasWidth, kLineHeight, 1, OIIO::TypeDesc::FLOAT),
                          pixels.data());
    DrawText(canvas, 0, 0, text);
    return pixels;
}

TEST(Lettering, TellsEveryCharacterFromEveryOther) {
    std::set<std::vector<float>> letters;
    for (char character = ' '; character <= '~'; ++character) {
        const std::string text(1, character);
        EXPECT_TRUE(letters.insert(Drawn(text)).second) << "'" << text << "' looks like another";
    }
    EXPECT_TRUE(letters.insert(Drawn("\n")).second) << "characters without a letter";
    EXPECT_EQ(Drawn("\u00e9"), Drawn("\n")) << "one box for one character of two bytes";
}

TEST(Lettering, KnowsHowWideItDraws) {
    for (const std::string text : {"", "i", "size 16", "--transition-progress", "gjpqy_,;"}) {
        const std::vector<float> pixels = Drawn(text);
        int ink = 0;
        for (std::size_t at = 0; at < pixels.size(); ++at) {
            ink = pixels[at] > 0 ? std::max(ink, static_cast<int>(at % kCanvasWidth) + 1) : ink;
        }
        EXPECT_EQ(TextWidth(text), ink) << text;
    }
}

TEST(ContactSheet, GrowsWithItsRowsAndItsLabels) {
    struct Row {
        std::vector<std::vector<Label>> labels;
        int width;
        int height;
    };
    const int line = kLineHeight;
    const int wide = TextWidth("a label wider than its picture");
    const Row rows[] = {
        {{{{"a"}}}, 16 + 100 + 16, 16 + 50 + 8 + line + 16},
        {{{{"a"}, {"b"}, {"c"}}}, 16 + 3 * 116, 16 + 50 + 8 + line + 16},
        {{{{"a"}}, {{"a"}, {"b", "b"}}}, 16 + 2 * 116, 16 + 2 * (50 + 8 + 16) + 3 * line},
        {{{{"a label wider than its picture"}, {"b"}}},
         16 + 2 * (wide + 16),
         16 + 50 + 8 + line + 16},
    };
    for (const Row& row : rows) {
        const World page = ContactSheet(row.labels, 100, 50).world(Depth::Bits8);
        EXPECT_EQ(page.width(), row.width) << row.labels.front().front().front();
        EXPECT_EQ(page.height(), row.height) << row.labels.front().front().front();
    }
}

TEST(ContactSheet, ReducesPicturesIntoTheirPlaces) {
    ContactSheet sheet({{{"red"}, {"blue"}}}, 100, 50);
    sheet.place(0, 0, Plain(200, 100, {.alpha = 255, .red = 200, .green = 10, .blue = 0}));
    sheet.place(0, 1, Plain(100, 50, {.alpha = 255, .red = 0, .green = 20, .blue = 255}));
    const World page = sheet.world(Depth::Bits8);
    for (const A_long y : {16, 40, 65}) {
        const auto row = page.row<PF_Pixel8>(y);
        for (const std::size_t x : {16U, 60U, 115U}) {
            EXPECT_EQ(row[x].red, 200) << x << ", " << y;
            EXPECT_EQ(row[x + 116].blue, 255) << x << ", " << y;
        }
        for (const std::size_t x : {15U, 116U, 131U, 232U}) {
            EXPECT_EQ(row[x].red, row[x].blue) << "paper at " << x << ", " << y;
        }
    }
}

TEST(ContactSheet, ShowsACheckerboardThroughTransparentPlaces) {
    ContactSheet sheet({{{"clear"}, {"half"}}}, 64, 64);
    sheet.place(0, 0, Plain(64, 64, {.alpha = 0, .red = 255, .green = 255, .blue = 255}));
    sheet.place(0, 1, Plain(64, 64, {.alpha = 128, .red = 255, .green = 255, .blue = 255}));
    const World page = sheet.world(Depth::Float32);
    const auto row = page.row<PF_PixelFloat>(16);
    const float dark = row[16].red;
    const float light = row[24].red;
    EXPECT_LT(dark, light);
    EXPECT_LT(light, 0.5F) << "a clear pixel's colour must not shine through";
    EXPECT_EQ(row[16].alpha, 1);
    constexpr float kHalf = 128.0F / 255;
    EXPECT_NEAR(row[16 + 80].red, kHalf + (1 - kHalf) * dark, 1e-5);
    EXPECT_NEAR(row[24 + 80].red, kHalf + (1 - kHalf) * light, 1e-5);
}

TEST(ContactSheet, RefusesAPageBeyondAWorld) {
    EXPECT_THROW(ContactSheet({std::vector<Label>(300, {"a"})}, 100, 50), Error);
    EXPECT_THROW(ContactSheet(std::vector<std::vector<Label>>(400, {{"a"}}), 100, 50), Error);
}

} // namespace
