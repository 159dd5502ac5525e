#include "Host/Frames/SoftwareFrame.h"
#include "Host/Frames/WorldView.h"
#include "Host/Video/PlanarMosaic.h"
#include "Host/Video/Yuv420.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace Kerovane::Host {

namespace {

/// Returns the sample at `x`, `y` of a plane.
int SampleOf(const AVFrame& frame, int plane, std::ptrdiff_t x, std::ptrdiff_t y) {
    const std::uint8_t* row = frame.data[plane] + y * frame.linesize[plane];
    return BitsOf(static_cast<AVPixelFormat>(frame.format)) > 8
               ? reinterpret_cast<const std::uint16_t*>(row)[x]
               : row[x];
}

TEST(Yuv420, ConvertsByMatrixAndRange) {
    struct Row {
        ColorTags color;
        std::array<std::uint8_t, 3> rgb;
        std::array<int, 3> yuv; ///< by the formulas of ITU-R BT.601 and BT.709
    };
    const ColorTags old{.matrix = AVCOL_SPC_SMPTE170M, .range = AVCOL_RANGE_MPEG};
    const ColorTags hd{.matrix = AVCOL_SPC_BT709, .range = AVCOL_RANGE_MPEG};
    const ColorTags full{.matrix = AVCOL_SPC_BT709, .range = AVCOL_RANGE_JPEG};
    const Row rows[] = {
        {hd, {0, 0, 0}, {16, 128, 128}},     {hd, {255, 255, 255}, {235, 128, 128}},
        {hd, {255, 0, 0}, {63, 102, 240}},   {hd, {0, 255, 0}, {173, 42, 26}},
        {hd, {0, 0, 255}, {32, 240, 118}},   {old, {255, 0, 0}, {81, 90, 240}},
        {{}, {255, 0, 0}, {81, 90, 240}},    {full, {255, 255, 255}, {255, 128, 128}},
        {full, {0, 0, 255}, {18, 255, 116}}, {full, {255, 0, 0}, {54, 99, 255}},
    };
    for (const auto& [color, rgb, yuv] : rows) {
        World world(Depth::Bits8, 34, 4);
        for (A_long y = 0; y < world.height(); ++y) {
            std::ranges::fill(world.row<PF_Pixel8>(y), PF_Pixel8{255, rgb[0], rgb[1], rgb[2]});
        }
        const AvFrame frame = FramePool(AV_PIX_FMT_YUV420P, 34, 4).take();
        Yuv420::of(color)->convert(ViewOf(std::as_const(world)), *frame);
        for (int plane = 0; plane < 3; ++plane) {
            const int shift = plane > 0 ? 1 : 0;
            for (const auto& [x, y] : {std::pair(0, 0), std::pair(33, 3)}) {
                EXPECT_NEAR(SampleOf(*frame, plane, x >> shift, y >> shift),
                            yuv[static_cast<std::size_t>(plane)], 1)
                    << &yuv - &rows[0].yuv << " plane " << plane;
            }
        }
    }
    EXPECT_FALSE(Yuv420::of({.matrix = AVCOL_SPC_YCGCO}));
}

/// Returns the value of a plane at a place. The values are linear in `x` and `y`, so that
/// interpolation between samples is exact.
double Ramp(int plane, double x, double y) {
    return plane == 0 ? 20 + 1.5 * x + 0.5 * y : plane == 1 ? 200 - x - 0.5 * y : 30 + 0.5 * x + y;
}

/// Renders the mosaic of a picture whose red is Ramp() of the plane.
World MosaicOfRamp(const Software::MosaicParameters& parameters, int plane, A_long width,
                   A_long height) {
    World world(Depth::Float32, width, height);
    for (A_long y = 0; y < height; ++y) {
        for (A_long x = 0; x < width; ++x) {
            world.row<PF_PixelFloat>(y)[static_cast<std::size_t>(x)] = {
                .alpha = 1, .red = static_cast<float>(Ramp(plane, x, y)), .green = 0, .blue = 0};
        }
    }
    DrawSoftwareFrame(parameters, ViewOf(std::as_const(world)), ViewOf(world), 1);
    return world;
}

double MeanOf(const World& world, std::ptrdiff_t x, std::ptrdiff_t y, std::ptrdiff_t columns,
              std::ptrdiff_t rows) {
    double sum = 0;
    double count = 0;
    for (std::ptrdiff_t row = y; row < std::min<std::ptrdiff_t>(y + rows, world.height()); ++row) {
        for (std::ptrdiff_t column = x;
             column < std::min<std::ptrdiff_t>(x + columns, world.width()); ++column) {
            sum +=
                world.row<PF_PixelFloat>(static_cast<A_long>(row))[static_cast<std::size_t>(column)]
                    .red;
            ++count;
        }
    }
    return sum / count;
}

TEST(PlanarMosaic, DrawsPlanesLikeTheRenderer) {
    constexpr int kWidth = 67;
    constexpr int kHeight = 45;
    using enum Software::Shape;
    for (const AVPixelFormat format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P10, AV_PIX_FMT_YUV444P,
                                       AV_PIX_FMT_YUVJ420P, AV_PIX_FMT_YUV410P}) {
        ASSERT_TRUE(PlanarMosaic::canDraw(format));
        for (const Software::MosaicParameters& parameters :
             {Software::MosaicParameters{.shape = Square, .size = 7, .ratio = 1.3},
              Software::MosaicParameters{.shape = Triangle, .size = 6, .sizeRandom = 50 << 16}}) {
            const int shiftX = av_pix_fmt_desc_get(format)->log2_chroma_w;
            const int shiftY = av_pix_fmt_desc_get(format)->log2_chroma_h;
            const int scale = BitsOf(format) > 8 ? 4 : 1;
            const AvFrame in = FramePool(format, kWidth, kHeight).take();
            const auto forEachSample = [&](int plane, auto work) {
                const int x = plane > 0 ? shiftX : 0;
                const int y = plane > 0 ? shiftY : 0;
                for (int row = 0; row < AV_CEIL_RSHIFT(kHeight, y); ++row) {
                    for (int column = 0; column < AV_CEIL_RSHIFT(kWidth, x); ++column) {
                        work(column, row, 1 << x, 1 << y);
                    }
                }
            };
            for (int plane = 0; plane < 3; ++plane) {
                forEachSample(plane, [&](int x, int y, int columns, int rows) {
                    const double value =
                        scale * Ramp(plane, (x + 0.5) * columns - 0.5, (y + 0.5) * rows - 0.5);
                    std::uint8_t* row = in->data[plane] + y * in->linesize[plane];
                    if (scale > 1) {
                        reinterpret_cast<std::uint16_t*>(row)[x] =
                            static_cast<std::uint16_t>(value + 0.5);
                    } else {
                        row[x] = static_cast<std::uint8_t>(value + 0.5);
                    }
                });
            }
            PlanarMosaic mosaic(*CellMap::of(kWidth, kHeight,
                                             [&](const ConstPixelView& from, const PixelView& to) {
                                                 DrawSoftwareFrame(parameters, from, to, 1);
                                             }),
                                {.format = format, .color = {}});
            const AvFrame out = mosaic.draw(*in);
            for (int plane = 0; plane < 3; ++plane) {
                const World expected = MosaicOfRamp(parameters, plane, kWidth, kHeight);
                forEachSample(plane, [&](int x, int y, int columns, int rows) {
                    ASSERT_NEAR(SampleOf(*out, plane, x, y),
                                scale * MeanOf(expected, std::ptrdiff_t{x} * columns,
                                               std::ptrdiff_t{y} * rows, columns, rows),
                                2.5)
                        << av_get_pix_fmt_name(format) << " plane " << plane << " at " << x << ", "
                        << y;
                });
            }
        }
    }
    for (const AVPixelFormat other :
         {AV_PIX_FMT_YUVA420P, AV_PIX_FMT_GBRP, AV_PIX_FMT_NV12, AV_PIX_FMT_YUV420P10BE,
          AV_PIX_FMT_GRAY8, AV_PIX_FMT_RGBA, AV_PIX_FMT_YUYV422, AV_PIX_FMT_NONE}) {
        EXPECT_FALSE(PlanarMosaic::canDraw(other)) << other;
    }
}

TEST(CellMap, ExistsOnlyIfAllPixelsAreOpaqueAndLieInCells) {
    const auto isThere = [](const Software::MosaicParameters& parameters) {
        return CellMap::of(64, 48,
                           [&](const ConstPixelView& from, const PixelView& to) {
                               DrawSoftwareFrame(parameters, from, to, 1);
                           })
            .has_value();
    };
    EXPECT_TRUE(isThere({.size = 8}));
    EXPECT_FALSE(isThere({.size = 8, .dissolve = 30 << 16}));
    EXPECT_FALSE(isThere({.size = 8, .dissolve = 80 << 16, .useAlpha = false})) << "the picture";
    EXPECT_FALSE(isThere({.size = 2}));
}

} // namespace

} // namespace Kerovane::Host
