#include "Host/Sheet/ContactSheet.h"
#include "Host/Sheet/Font.h"

#include "Tests/Support/ErrorText.h"

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

/// Draws `text` and returns the red of the pixels, which is 0 if nothing is drawn there.
std::vector<float> Drawn(const std::string& text) {
    OIIO::ImageBuf canvas(
        OIIO::ImageSpec(kCanvasWidth, Font::kLineHeight, 4, OIIO::TypeDesc::FLOAT));
    Font().draw(canvas, 0, 0, text);
    std::vector<float> pixels(std::size_t{kCanvasWidth} * Font::kLineHeight);
    canvas.get_pixels(OIIO::ROI(0, kCanvasWidth, 0, Font::kLineHeight, 0, 1, 0, 1),
                      OIIO::TypeDesc::FLOAT, pixels.data());
    return pixels;
}

TEST(Font, DrawsCharactersDifferently) {
    std::set<std::vector<float>> letters;
    for (const std::string text : {"", "0", "O", "1", "l", "I", "e", "\u00e9", "\u0416", "-"}) {
        EXPECT_TRUE(letters.insert(Drawn(text)).second) << "'" << text << "' looks like another";
    }
}

TEST(Font, KeepsTextInsideItsLineAndWidth) {
    for (const std::string text : {"", "i", "size 16", "transition-progress", "\u00c9gjpqy_,;|"}) {
        const std::vector<float> pixels = Drawn(text);
        int right = 0;
        for (std::size_t at = 0; at < pixels.size(); ++at) {
            const int x = static_cast<int>(at % kCanvasWidth);
            const int y = static_cast<int>(at / kCanvasWidth);
            const bool ink = pixels[at] > 0;
            right = ink ? std::max(right, x + 1) : right;
            EXPECT_FALSE(ink && (y == 0 || y == Font::kLineHeight - 1)) << text << " touches lines";
        }
        EXPECT_NEAR(Font().widthOf(text), right, 1) << text;
    }
}

TEST(Font, NamesThePackageOfAMissingFile) {
    EXPECT_EQ(ErrorOf([] { const Font font("/missing/DejaVuSans.ttf"); }),
              "no font for the sheet in '/missing/DejaVuSans.ttf', which the package "
              "fonts-dejavu-core installs");
}

TEST(ContactSheet, WidensColumnsToTheWidestLabel) {
    const std::string label = "a label wider than its picture";
    const World page = ContactSheet({{{label}, {"b"}}}, 100, 50).world(Depth::Bits8);
    EXPECT_EQ(page.width(), 16 + 2 * (Font().widthOf(label) + 16));
}

TEST(ContactSheet, ShowsACheckerboardBehindTransparentPixels) {
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

} // namespace
