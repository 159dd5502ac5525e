#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"

#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <fstream>

namespace Kerovane::Host {
namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

template <typename Pixel>
World Filled(Depth depth, Pixel pixel) {
    World world(depth, 16, 16);
    for (A_long y = 0; y < world.height(); ++y) {
        std::ranges::fill(world.row<Pixel>(y), pixel);
    }
    return world;
}

World Translucent(Depth depth) {
    switch (depth) {
    case Depth::Bits8:
        return Filled<PF_Pixel8>(depth, {51, 255, 100, 0});
    case Depth::Bits16:
        return Filled<PF_Pixel16>(depth, {8192, 32768, 16384, 0});
    default:
        return Filled<PF_PixelFloat>(depth, {0.25F, 1, 0.5F, -2});
    }
}

class PictureWriterTest : public testing::Test {
protected:
    RawPicture write(const char* name, World world, const ImageSpec& origin = {}) {
        PictureWriter(mFolder / name).write(PictureOf(std::move(world), origin));
        return RawPicture::read(mFolder / name);
    }

    TemporaryFolder mFolder;
};

TEST_F(PictureWriterTest, KeepsDepthAndAlphaAsTheFormatAllows) {
    const ImageSpec half(1, 1, 4, TypeDesc::HALF);
    const ImageSpec whole(1, 1, 4, TypeDesc::UINT16);
    struct Row {
        const char* name;
        Depth depth;
        ImageSpec origin;
        TypeDesc type;
        std::vector<float> pixel;
    };
    const std::vector<float> straight8{1, 100.0F / 255, 0, 0.2F};
    const Row rows[] = {
        {"8.png", Depth::Bits8, {}, TypeDesc::UINT8, straight8},
        {"8.tif", Depth::Bits8, {}, TypeDesc::UINT8, straight8},
        {"8.exr", Depth::Bits8, {}, TypeDesc::HALF, {0.2F, 20.0F / 255, 0, 0.2F}},
        {"8.jpg", Depth::Bits8, {}, TypeDesc::UINT8, {0.2F, 20.0F / 255, 0}},
        {"16.png", Depth::Bits16, {}, TypeDesc::UINT16, {1, 0.5F, 0, 0.25F}},
        {"16.tif", Depth::Bits16, {}, TypeDesc::UINT16, {1, 0.5F, 0, 0.25F}},
        {"16.exr", Depth::Bits16, {}, TypeDesc::FLOAT, {0.25F, 0.125F, 0, 0.25F}},
        {"32.exr", Depth::Float32, {}, TypeDesc::FLOAT, {0.25F, 0.125F, -0.5F, 0.25F}},
        {"half.exr", Depth::Float32, half, TypeDesc::HALF, {0.25F, 0.125F, -0.5F, 0.25F}},
        {"32.tif", Depth::Float32, {}, TypeDesc::FLOAT, {1, 0.5F, -2, 0.25F}},
        {"kept16.tif", Depth::Float32, whole, TypeDesc::UINT16, {1, 0.5F, 0, 0.25F}},
        {"32.png", Depth::Float32, {}, TypeDesc::UINT16, {1, 0.5F, 0, 0.25F}},
        {"32.jpg", Depth::Float32, {}, TypeDesc::UINT8, {0.25F, 0.125F, 0}},
    };
    for (const Row& row : rows) {
        const RawPicture file = write(row.name, Translucent(row.depth), row.origin);
        EXPECT_EQ(file.spec.format, row.type) << row.name;
        ASSERT_EQ(file.spec.nchannels, static_cast<int>(row.pixel.size())) << row.name;
        const float tolerance = file.spec.format == TypeDesc::UINT8 ? 0.006F : 0.0002F;
        for (std::size_t channel = 0; channel < row.pixel.size(); ++channel) {
            EXPECT_NEAR(file.firstPixel()[channel], row.pixel[channel], tolerance)
                << row.name << ", channel " << channel;
        }
    }
}

TEST_F(PictureWriterTest, WritesTheChannelsBitsAndTilesOfTheOrigin) {
    struct Row {
        const char* name;
        ColourChannels form;
        const char* format;
        int channels;
    };
    const Row rows[] = {
        {"grey.png", {true, false}, "png", 1},     {"greyalpha.png", {true, true}, "png", 2},
        {"rgb.png", {false, false}, "png", 3},     {"rgba.png", {false, true}, "png", 4},
        {"grey.exr", {true, false}, "openexr", 1}, {"greyalpha.tif", {true, true}, "tiff", 2},
        {"grey.jpg", {true, true}, "jpeg", 1},     {"rgb.tif", {false, false}, "tiff", 3},
        {"grey.tif", {true, false}, "tiff", 1},    {"rgb.dpx", {false, false}, "dpx", 3},
        {"grey.webp", {true, false}, "png", 3},
    };
    ImageSpec origin(16, 16, 4, TypeDesc::UINT16);
    origin.attribute("oiio:BitsPerSample", 10);
    origin.tile_width = origin.tile_height = 32;
    for (const auto& [name, form, format, channels] : rows) {
        Picture picture = PictureOf(
            Filled<PF_PixelFloat>(Depth::Float32, {0.5F, 0.25F, 0.25F, 0.25F}), origin, form);
        picture.format = format;
        PictureWriter(mFolder / name).write(picture);
        const RawPicture file = RawPicture::read(mFolder / name);
        ASSERT_EQ(file.spec.nchannels, channels) << name;
        const bool isStraight = form.hasAlpha && format != std::string_view("jpeg") &&
                                format != std::string_view("openexr");
        EXPECT_NEAR(file.firstPixel()[0], isStraight ? 0.25F : 0.125F, 0.005) << name;
        if (channels % 2 == 0) {
            EXPECT_NEAR(file.firstPixel().back(), 0.5F, 0.001) << name;
        }
        const bool isTiff = format == std::string_view("tiff");
        const bool hasTenBits = isTiff || format == std::string_view("dpx");
        EXPECT_EQ(file.spec.get_int_attribute("oiio:BitsPerSample") == 10, hasTenBits) << name;
        EXPECT_EQ(file.spec.tile_width, isTiff || format == std::string_view("openexr") ? 32 : 0)
            << name;
    }
}

TEST_F(PictureWriterTest, KeepsOtherChannelsUnchanged) {
    for (const bool isTiled : {false, true}) {
        RawPicture in =
            RawPicture::of({0.5F, 0.25F, 1, 0.75F, 0.125F}, TypeDesc::HALF, -1, 20, 300);
        for (std::size_t i = 0; i < in.values.size(); i += 5) {
            in.values[i + 3] = static_cast<float>(i) * 0x1p-20F;
        }
        in.spec.channelnames = {"R", "G", "B", "Z", "id"};
        in.spec.channelformats = {TypeDesc::HALF, TypeDesc::HALF, TypeDesc::HALF, TypeDesc::FLOAT,
                                  TypeDesc::UINT};
        in.spec.y = 10; // of a frame from 0 to 320
        in.spec.full_height = 320;
        in.spec.tile_width = in.spec.tile_height = isTiled ? 16 : 0;
        in.write(mFolder / "in.exr");
        const Picture picture = ReadPicture(mFolder / "in.exr");
        const PictureWriter writer(mFolder / "out.exr");
        EXPECT_EQ(writer.write(picture), std::vector<std::string>());
        const RawPicture out = RawPicture::read(mFolder / "out.exr");
        EXPECT_EQ(out.spec.channelnames, in.spec.channelnames);
        EXPECT_EQ(out.spec.channelformats, in.spec.channelformats);
        ASSERT_EQ(out.spec.height, 320);
        const RawPicture stored = RawPicture::read(mFolder / "in.exr");
        const auto frameStart = out.values.begin() + std::ptrdiff_t{10} * 20 * 5;
        EXPECT_TRUE(std::equal(stored.values.begin(), stored.values.end(), frameStart));
        EXPECT_EQ(out.values[3], 0);
    }
}

TEST_F(PictureWriterTest, RoundTripsEvery16BitValue) {
    Picture picture = PictureOf(World(Depth::Bits16, 256, 129));
    World& world = picture.first().world;
    for (A_long value = 0; value <= 32768; ++value) {
        const auto grey = static_cast<A_u_short>(value);
        world.row<PF_Pixel16>(value / 256)[static_cast<std::size_t>(value) % 256] = {32768, grey,
                                                                                     grey, grey};
    }
    PictureWriter(mFolder / "all.tif").write(picture);
    const Picture read = ReadPicture(mFolder / "all.tif", {.depth = Depth::Bits16});
    const World& again = read.first().world;
    for (A_long y = 0; y < world.height(); ++y) {
        for (std::size_t x = 0; x < 256; ++x) {
            ASSERT_EQ(again.row<PF_Pixel16>(y)[x].red, world.row<PF_Pixel16>(y)[x].red);
        }
    }
}

TEST_F(PictureWriterTest, KeepsColourUnderTransparentPixels) {
    for (const char* name : {"clear.png", "clear.tif", "clear.tga"}) {
        EXPECT_FLOAT_EQ(
            write(name, Filled<PF_Pixel8>(Depth::Bits8, {0, 200, 100, 50})).firstPixel()[0],
            200.0F / 255)
            << name;
    }
}

TEST_F(PictureWriterTest, KeepsMetadataThatIsStillTrue) {
    ImageSpec origin(16, 16, 1, TypeDesc::UINT8);
    origin.attribute("Copyright", "someone");
    origin.attribute("PixelAspectRatio", 2.0F);
    origin.attribute("oiio:BitsPerSample", 1);
    origin.attribute("compression", "ccittfax4");
    origin.attribute("ICCProfile", TypeDesc(TypeDesc::UINT8, 32),
                     "                GRAY            ");
    const ImageSpec kept = write("kept.tif", Translucent(Depth::Bits8), origin).spec;
    EXPECT_EQ(kept.get_string_attribute("Copyright"), "someone");
    EXPECT_EQ(kept.get_float_attribute("PixelAspectRatio"), 2);
    EXPECT_EQ(kept.get_int_attribute("oiio:BitsPerSample"), 8);
    EXPECT_NE(kept.get_string_attribute("compression"), "ccittfax4");
    EXPECT_EQ(kept.find_attribute("ICCProfile"), nullptr) << "a grey profile over RGB";
}

TEST_F(PictureWriterTest, KeepsDataAndDisplayWindows) {
    ImageSpec origin(16, 16, 4, TypeDesc::HALF);
    origin.x = -3;
    origin.y = 5;
    origin.full_width = 100;
    origin.full_height = 50;
    const ImageSpec kept = write("windows.exr", Translucent(Depth::Float32), origin).spec;
    EXPECT_EQ(kept.x, -3);
    EXPECT_EQ(kept.y, 5);
    EXPECT_EQ(kept.full_width, 100);
    EXPECT_EQ(kept.full_height, 50);
}

TEST(ReplaceFile, KeepsTheOldFileIfWritingFails) {
    const TemporaryFolder folder;
    std::ofstream(folder / "target") << "old";
    const std::vector<std::byte> content(100000);
    ASSERT_NE(std::signal(SIGXFSZ, SIG_IGN), SIG_ERR); // past the limit, write fails instead
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit low{.rlim_cur = 4096, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &low);
    EXPECT_THROW(ReplaceFile(folder / "target", content), Error);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(folder.contentOf("target"), "old");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"target"});
}

TEST(ReplaceFile, ReplacesTheFileBehindALink) {
    const TemporaryFolder folder;
    std::ofstream(folder / "named") << "old";
    std::filesystem::create_symlink("named", folder / "link");
    ReplaceFile(folder / "link", std::as_bytes(std::span("new", 3)));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.contentOf("named"), "new");
}

} // namespace
} // namespace Kerovane::Host
