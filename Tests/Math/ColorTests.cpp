#include "Tests/Math/MathTest.h"

#include <stdexcept>

namespace Kerovane::Tesselune {

TEST(ColorText, ReadsItsFourFormsAndMakesAnythingElseWhite) {
    constexpr Color kWhite(1.0, 1.0, 1.0, 1.0);
    const Table<std::string, Color> cases = {
        {"#FFF", kWhite},
        {"#000", {0.0, 0.0, 0.0, 1.0}},
        {"#f0a", {1.0, 0.0, 10.0F / 15.0F, 1.0}},
        {"#8000", {0.0, 0.0, 0.0, 8.0F / 15.0F}},
        {"#1234", {2.0F / 15.0F, 3.0F / 15.0F, 4.0F / 15.0F, 1.0F / 15.0F}},
        {"#102030", {16.0F / 255.0F, 32.0F / 255.0F, 48.0F / 255.0F, 1.0}},
        {"#80FF0000", {1.0, 0.0, 0.0, 128.0F / 255.0F}},
        {"#0FFFFFFF", {1.0, 1.0, 1.0, 15.0F / 255.0F}},
        {"#12x", {0.0, 1.0F / 15.0F, 2.0F / 15.0F, 1.0}}, // only the leading digits count
        {"#12", kWhite},
        {"#12345", kWhite},
        {"#1234567", kWhite},
        {"#123456789", kWhite},
        {"FF0000", kWhite},
        {" #FF0000", kWhite},
        {"", kWhite},
    };
    for (const auto& [text, color] : cases) {
        EXPECT_SAME(Color(text), color) << text;
    }
}

TEST(ColorText, ThrowsTheExceptionsOfStoull) {
    for (const char* text : {"#", "#zz", "#zzz", "##123"}) {
        EXPECT_THROW(Color{std::string(text)}, std::invalid_argument) << text;
    }
    EXPECT_THROW(Color{std::string("#11111111111111111")}, std::out_of_range);
}

TEST(ColorText, WritesTruncatedUnpaddedDigits) {
    const Table<Color, std::string> cases = {
        {{1.0, 1.0, 1.0, 1.0}, "#FFFFFF"},
        {{0.0, 0.0, 0.0, 1.0}, "#000"},
        {{1.0, 0.5, 0.0, 1.0}, "#FF7F0"},
        {{1.0, 1.0, 1.0, 0.5}, "#7FFFFFFF"},
        {{0.0, 0.0, 0.0, 0.0}, "#0000"},
        {{2.0, -1.0, 0.0625, 1.5}, "#FF0F"}, // clamped, and so opaque
        {{kNaN, 1e300, -1e300, 0.999}, "#FE0FF0"},
    };
    for (const auto& [color, text] : cases) {
        EXPECT_EQ(color.toHexString(), text);
    }
}

TEST(ColorPacked, HoldsAlphaHighestInSinglePrecision) {
    const Color color(0x80402010U);
    EXPECT_SAME(color, Color(64.0F / 255.0F, 32.0F / 255.0F, 16.0F / 255.0F, 128.0F / 255.0F));
    EXPECT_EQ(color.a(), 0.501960813999176025390625);
    EXPECT_SAME(color, Color(std::string("#80402010")));
    EXPECT_SAME(Color(0xFFFFFFFFU), Color());
}

TEST(ColorNil, IsAnyChannelBelowZeroAndEqualsEveryNil) {
    Color nil;
    EXPECT_FALSE(nil.isNil());
    nil.setNil();
    EXPECT_SAME(nil, Color(-1.0, -1.0, -1.0, -1.0));
    const Color nils[] = {{-0.5, 1.0, 1.0, 1.0},
                          {1.0, -0.5, 1.0, 1.0},
                          {1.0, 1.0, -0.5, 1.0},
                          {1.0, 1.0, 1.0, -1e-13}};
    for (const Color& color : nils) {
        EXPECT_TRUE(color.isNil() && color == nil && nil.equal(color));
    }
    EXPECT_TRUE(nil != Color() && !Color(-0.0, 0.0, 0.0, 0.0).isNil());
    // A nil colour also equals a colour within the tolerance.
    EXPECT_TRUE(Color(1.0, 1.0, 1.0, -1e-13) == Color(1.0, 1.0, 1.0, 0.0));
}

TEST(ColorArithmetic, IncludesAlphaAndDoesNotClamp) {
    constexpr Color a(0.5, 1.0, 2.0, 0.25);
    constexpr Color b(0.25, 0.5, -1.0, 1.0);
    EXPECT_SAME(a + b, Color(0.75, 1.5, 1.0, 1.25));
    EXPECT_SAME(a - b, Color(0.25, 0.5, 3.0, -0.75));
    EXPECT_SAME(a * b, Color(0.125, 0.5, -2.0, 0.25));
    EXPECT_SAME(a * 2.0, Color(1.0, 2.0, 4.0, 0.5));
}

TEST(ColorLerp, ClampsAndWeighsTheFirstInSinglePrecision) {
    constexpr Color a(1.0, 0.5, 0.25, 1.0);
    constexpr Color b(0.0, 0.25, 1.0, 0.5);
    EXPECT_SAME(Color::lerp(a, b, 2.0), b);
    EXPECT_SAME(Color::lerp(a, b, -1.0), a);
    EXPECT_SAME(Color::lerp(a, b, 0.5), (a + b) * 0.5);
    EXPECT_EQ(Color::lerp(a, b, 0.1).r(), static_cast<double>(0.9F));
    EXPECT_EQ(Color::lerp(b, a, 0.1).r(), 0.1);
}

} // namespace Kerovane::Tesselune
