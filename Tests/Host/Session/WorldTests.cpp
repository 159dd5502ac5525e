#include "Host/Session/World.h"
#include "Host/Text/Error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace Kerovane::Host {
namespace {

constexpr Depth kAllDepths[] = {Depth::Bits8, Depth::Bits16, Depth::Float32};

TEST(World, StartsTransparentWithPaddedRows) {
    for (const Depth depth : kAllDepths) {
        const World world(depth, 5, 3);
        EXPECT_GT(world.rowBytes(), 5 * BytesPerPixel(depth));
        EXPECT_EQ(world.rowBytes() % 16, 0);
        EXPECT_EQ(world.bytes().size(), static_cast<std::size_t>(world.rowBytes()) * 3);
        EXPECT_TRUE(
            std::ranges::all_of(world.bytes(), [](std::byte b) { return b == std::byte{}; }));
    }
}

TEST(World, KeepsItsDepthInCopiesOfItsRecord) {
    for (const Depth depth : kAllDepths) {
        World world(depth, 2, 2);
        const World moved = std::move(world);
        const PF_LayerDef copy = moved.layer();
        EXPECT_EQ(DepthOf(copy), depth);
        EXPECT_EQ(DepthOf(PixelFormatOf(depth)), depth);
    }
    EXPECT_EQ(DepthOf(PF_LayerDef{}), std::nullopt);
    EXPECT_EQ(DepthOf(PF_PixelFormat{0}), std::nullopt);
}

TEST(World, PlacesRowsAsItsRecordSays) {
    World world(Depth::Bits16, 3, 2, 26);
    world.row<PF_Pixel16>(1)[2].blue = 7;
    EXPECT_EQ(std::to_integer<int>(world.bytes()[26 + 2 * 8 + 6]), 7);
    EXPECT_EQ(reinterpret_cast<std::byte*>(world.layer().data), world.bytes().data());
}

TEST(World, RefusesInvalidSizesBeforeAllocating) {
    struct Row {
        std::ptrdiff_t width, height, rowBytes;
    };
    constexpr Row kRows[] = {
        {-1, 4, 64}, {4, -1, 64}, {World::kMaxSide + 1, 1, 1 << 20}, {1, World::kMaxSide + 1, 64},
        {4, 4, 31},  {4, 4, 33},  {4, 4, std::ptrdiff_t{1} << 33}};
    for (const Row& row : kRows) {
        EXPECT_THROW(World(Depth::Bits16, row.width, row.height, row.rowBytes), Error)
            << row.width << " x " << row.height << ", " << row.rowBytes;
    }
    EXPECT_THROW(World(Depth::Float32, 2147483647, 2147483647), Error);
    EXPECT_NO_THROW(World(Depth::Bits16, 0, 0));
}

} // namespace
} // namespace Kerovane::Host
