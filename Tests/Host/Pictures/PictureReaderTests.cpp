#include "Host/Pictures/PictureReader.h"
#include "Host/Text/Error.h"

#include "Tests/Support/ErrorText.h"
#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <type_traits>

namespace Kerovane::Host {
namespace {

using namespace std::string_literals;
using OIIO::TypeDesc;

/// Returns alpha, red, green and blue of a pixel, on the layer's own scale.
std::vector<float> Argb(const World& world, A_long x, A_long y) {
    return withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        const Pixel pixel = world.row<Pixel>(y)[static_cast<std::size_t>(x)];
        return std::vector<float>{static_cast<float>(pixel.alpha), static_cast<float>(pixel.red),
                                  static_cast<float>(pixel.green), static_cast<float>(pixel.blue)};
    });
}

class PictureReader : public testing::Test {
protected:
    TemporaryFolder mFolder;
};

TEST_F(PictureReader, ReadsStraightArgbAtTheFilesDepth) {
    constexpr float k8 = 1.0F / 255;
    constexpr float k16 = 1.0F / 65535;
    constexpr float kThird = 1.0F / 3; // one of the levels of 16 bits
    struct Row {
        const char* name;
        std::vector<float> pixel;
        TypeDesc type;
        int alpha;
        Depth depth;
        std::vector<float> argb;
    };
    const Row rows[] = {
        {"grey.png", {128 * k8}, TypeDesc::UINT8, -1, Depth::Bits8, {255, 128, 128, 128}},
        {"grey.jpg", {128 * k8}, TypeDesc::UINT8, -1, Depth::Bits8, {255, 128, 128, 128}},
        {"ya.png", {200 * k8, 64 * k8}, TypeDesc::UINT8, 1, Depth::Bits8, {64, 200, 200, 200}},
        {"rgb.tif", {1, 0, 7 * k8}, TypeDesc::UINT8, -1, Depth::Bits8, {255, 255, 0, 7}},
        {"rgba.png",
         {200 * k8, 9 * k8, 0, 3 * k8},
         TypeDesc::UINT8,
         3,
         Depth::Bits8,
         {3, 200, 9, 0}},
        {"clear.png", {200 * k8, 9 * k8, 0, 0}, TypeDesc::UINT8, 3, Depth::Bits8, {0, 200, 9, 0}},
        {"rgba.gif", {0, 1, 0, 1}, TypeDesc::UINT8, 3, Depth::Bits8, {255, 0, 255, 0}},
        {"rgba.tif", {1, kThird, 0, k16}, TypeDesc::UINT16, 3, Depth::Float32, {k16, 1, kThird, 0}},
        {"grey16.png", {kThird}, TypeDesc::UINT16, -1, Depth::Float32, {1, kThird, kThird, kThird}},
        {"half.exr",
         {0.25F, 0.125F, 0, 0.5F},
         TypeDesc::HALF,
         3,
         Depth::Float32,
         {0.5F, 0.5F, 0.25F, 0}},
        {"float.exr", {3, -1, 0.5F, 1}, TypeDesc::FLOAT, 3, Depth::Float32, {1, 3, -1, 0.5F}},
        {"glow.exr", {0.5F, 0, 0, 0}, TypeDesc::FLOAT, 3, Depth::Float32, {0, 0.5F, 0, 0}},
        {"float.tif", {0.25F, 0.5F, 2}, TypeDesc::FLOAT, -1, Depth::Float32, {1, 0.25F, 0.5F, 2}},
    };
    for (const Row& row : rows) {
        RawPicture::of(row.pixel, row.type, row.alpha).write(mFolder / row.name);
        const Picture picture = ReadPicture(mFolder / row.name);
        EXPECT_EQ(picture.first().world.depth(), row.depth) << row.name;
        EXPECT_EQ(Argb(picture.first().world, 2, 1), row.argb) << row.name;
    }
}

TEST_F(PictureReader, UnpremultipliesBeforeRounding) {
    RawPicture file = RawPicture::of({0.2F, 0.1F, 0.04F, 0.2F}, TypeDesc::UINT8, 3);
    file.spec.erase_attribute("oiio:UnassociatedAlpha");
    file.write(mFolder / "associated.tif");
    EXPECT_EQ(Argb(ReadPicture(mFolder / "associated.tif").first().world, 0, 0),
              (std::vector<float>{51, 255, 130, 50}))
        << "51, 26 and 10 over 51";
    RawPicture::of({0.1F, 0.05F, 0, 0.2F}, TypeDesc::FLOAT, 3).write(mFolder / "a.exr");
    EXPECT_EQ(Argb(ReadPicture(mFolder / "a.exr", {.depth = Depth::Bits8}).first().world, 0, 0),
              (std::vector<float>{51, 128, 64, 0}));
}

TEST_F(PictureReader, ConvertsToARequestedDepth) {
    RawPicture::of({1, 128.0F / 255, 0, 1}, TypeDesc::UINT8, 3).write(mFolder / "a.png");
    EXPECT_EQ(Argb(ReadPicture(mFolder / "a.png", {.depth = Depth::Bits16}).first().world, 0, 0),
              (std::vector<float>{32768, 32768, 16448, 0}));
    EXPECT_FLOAT_EQ(
        Argb(ReadPicture(mFolder / "a.png", {.depth = Depth::Float32}).first().world, 0, 0)[2],
        128.0F / 255);
}

TEST_F(PictureReader, RoundsEvery16BitValueToTheNearest) {
    RawPicture all{{256, 256, 1, TypeDesc::UINT16}, {}};
    for (int value = 0; value < 65536; ++value) {
        all.values.push_back(static_cast<float>(value) / 65535);
    }
    all.write(mFolder / "all.png");
    const Picture picture = ReadPicture(mFolder / "all.png", {.depth = Depth::Bits16});
    const World& world = picture.first().world;
    for (int value = 0; value < 65536; ++value) {
        const int nearest = (value * 32768 + 32767) / 65535;
        ASSERT_EQ(Argb(world, value % 256, value / 256)[1], static_cast<float>(nearest)) << value;
    }
}

TEST_F(PictureReader, FindsColourAmongOtherChannels) {
    RawPicture layers = RawPicture::of({9, 0.1F, 0.5F, 0.3F, 0.2F}, TypeDesc::FLOAT, 2);
    layers.spec.channelnames = {"Z", "B", "A", "G", "R"};
    layers.write(mFolder / "layers.exr");
    const Picture picture = ReadPicture(mFolder / "layers.exr");
    EXPECT_EQ(Argb(picture.first().world, 0, 0), (std::vector<float>{0.5F, 0.4F, 0.6F, 0.2F}));
    EXPECT_EQ(picture.parts.front().stored.passing(), (std::vector<int>{4}));
}

TEST_F(PictureReader, UsesTheDisplayWindowAsFrame) {
    struct Row {
        std::vector<float> pixel; ///< of all pixels of a data window of 4 x 4
        int x;
        int y;
        std::size_t losses;
        std::vector<float> around; ///< alpha, red, green, blue outside the data window
    };
    const Row rows[] = {{{1, 0.5F, 0.25F, 1}, 102, 51, 0, {0, 0, 0, 0}},
                        {{1, 0.5F, 0.25F}, 102, 51, 0, {1, 0, 0, 0}},
                        {{1, 0.5F, 0.25F, 1}, 98, 49, 1, {0, 0, 0, 0}},
                        {{1, 0.5F, 0.25F}, 300, 0, 1, {1, 0, 0, 0}}};
    for (const auto& [pixel, x, y, losses, around] : rows) {
        RawPicture picture =
            RawPicture::of(pixel, TypeDesc::HALF, pixel.size() == 4 ? 3 : -1, 4, 4);
        picture.spec.x = x;
        picture.spec.y = y;
        picture.spec.full_x = 100;
        picture.spec.full_y = 50;
        picture.spec.full_width = 8;
        picture.spec.full_height = 6;
        picture.write(mFolder / "windows.exr");
        const Picture read = ReadPicture(mFolder / "windows.exr");
        ASSERT_EQ(read.first().world.width(), 8);
        ASSERT_EQ(read.first().world.height(), 6);
        EXPECT_EQ(read.losses.size(), losses) << x;
        EXPECT_EQ(read.origin().x, 100);
        EXPECT_EQ(read.origin().width, 8);
        for (int row = 0; row < 6; ++row) {
            for (int column = 0; column < 8; ++column) {
                const bool isInside =
                    column + 100 >= x && column + 100 < x + 4 && row + 50 >= y && row + 50 < y + 4;
                EXPECT_EQ(Argb(read.first().world, column, row),
                          isInside ? (std::vector<float>{1, 1, 0.5F, 0.25F}) : around)
                    << x << ", " << column << ", " << row;
            }
        }
    }
}

TEST_F(PictureReader, AppliesTheOrientationTag) {
    RawPicture lying{{2, 1, 1, TypeDesc::UINT8}, {1, 0}};
    lying.spec.attribute("Orientation", 6); // a quarter turn clockwise brings it upright
    lying.write(mFolder / "lying.tif");
    const Picture upright = ReadPicture(mFolder / "lying.tif");
    ASSERT_EQ(upright.first().world.height(), 2);
    EXPECT_EQ(Argb(upright.first().world, 0, 0)[1], 255);
    EXPECT_EQ(Argb(upright.first().world, 0, 1)[1], 0);
    EXPECT_EQ(upright.origin().get_int_attribute("Orientation", 1), 1);
}

TEST_F(PictureReader, IgnoresUnknownOrientations) {
    for (const int orientation : {-1, 0, 9}) {
        RawPicture file{{2, 1, 1, TypeDesc::HALF}, {1, 0}};
        file.spec.attribute("Orientation", orientation);
        file.write(mFolder / "a.exr");
        const Picture picture = ReadPicture(mFolder / "a.exr");
        const World& world = picture.first().world;
        ASSERT_EQ(world.width(), 2) << orientation;
        EXPECT_EQ(Argb(world, 0, 0)[1], 1) << orientation;
        EXPECT_EQ(Argb(world, 1, 0)[1], 0) << orientation;
    }
}

TEST_F(PictureReader, KeepsThePixelAspectRatio) {
    RawPicture wide = RawPicture::of({0, 0, 0}, TypeDesc::HALF, -1);
    wide.spec.attribute("PixelAspectRatio", 2.0F);
    wide.write(mFolder / "wide.exr");
    const PF_RationalScale ratio =
        ReadPicture(mFolder / "wide.exr").first().world.layer().pix_aspect_ratio;
    EXPECT_EQ(static_cast<A_u_long>(ratio.num), 2 * ratio.den);
}

/// Limits OpenImageIO to pictures of `megabytes` as long as the object exists.
class PictureLimit {
public:
    explicit PictureLimit(int megabytes) { OIIO::attribute(kName, megabytes); }
    ~PictureLimit() { OIIO::attribute(kName, mBefore); }
    PictureLimit(const PictureLimit&) = delete;
    PictureLimit& operator=(const PictureLimit&) = delete;

private:
    static constexpr const char* kName = "limits:imagesize_MB";

    int mBefore = OIIO::get_int_attribute(kName);
};

TEST_F(PictureReader, RefusesPicturesBeyondTheSizeLimit) {
    const PictureLimit limit(1);
    for (const char* name : {"a.png", "a.jpg", "a.bmp", "a.exr", "a.tga", "a.webp", "a.dpx"}) {
        RawPicture::of({0, 0, 0}, TypeDesc::UINT8, -1, 300, 291).write(mFolder / name);
        EXPECT_NO_THROW(ReadPicture(mFolder / name)) << name;
        RawPicture::of({0, 0, 0}, TypeDesc::UINT8, -1, 300, 292).write(mFolder / name);
        EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / name); }),
                  "cannot read '" + (mFolder / name).string() +
                      "': its 300 x 292 pixels of 3 channels take more than 1 MB");
    }
}

/// Returns a GIF file that claims `width` by `height` pixels and holds one.
std::string GifOf(std::uint16_t width, std::uint16_t height) {
    std::string size;
    for (const std::uint16_t side : {width, height}) {
        size += static_cast<char>(side & 0xffU);
        size += static_cast<char>(side >> 8U);
    }
    return "GIF89a" + size + "\x80\0\0\0\0\0\xff\xff\xff,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s;
}

TEST_F(PictureReader, RefusesGifPicturesTooLargeForTheirReader) {
    const std::pair<int, int> refused[] = {{32768, 32768}, {46341, 46341}, {30000, 17896}};
    for (const char* name : {"a.gif", "a.png"}) {
        std::ofstream(mFolder / name) << GifOf(2, 3);
        EXPECT_EQ(ReadPicture(mFolder / name).first().world.height(), 3) << name;
        for (const auto& [width, height] : refused) {
            std::ofstream(mFolder / name)
                << GifOf(static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height));
            EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / name); }),
                      "cannot read '" + (mFolder / name).string() +
                          "': it is larger than a GIF picture can be read");
        }
    }
}

TEST_F(PictureReader, DetectsFormatsByContent) {
    for (const char* format :
         {"png", "jpg", "tif", "exr", "dpx", "bmp", "gif", "hdr", "ppm", "webp"}) {
        const auto file = mFolder / "a."s += format;
        RawPicture::of({0.5F, 0.25F, 1}, TypeDesc::UINT8, -1, 4, 3).write(file);
        for (const char* name : {"picture", "picture.png", "picture.jpg", "picture.ico"}) {
            std::filesystem::copy_file(file, mFolder / name,
                                       std::filesystem::copy_options::overwrite_existing);
            EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / name); }), "") << format << ", " << name;
        }
    }
}

TEST_F(PictureReader, DetectsTgaByItsExtension) {
    RawPicture::of({0.5F, 0.25F, 1}, TypeDesc::UINT8, -1, 4, 3).write(mFolder / "a.tga");
    std::filesystem::copy_file(mFolder / "a.tga", mFolder / "A.TGA");
    std::filesystem::copy_file(mFolder / "a.tga", mFolder / "a.png");
    EXPECT_EQ(ReadPicture(mFolder / "A.TGA").first().world.height(), 3);
    EXPECT_NE(ErrorOf([&] { ReadPicture(mFolder / "a.png"); }), "");
}

TEST_F(PictureReader, NamesTheFormatsThatItRefuses) {
    struct Row {
        std::string content;
        std::string reason;
        const char* name = "a.png";
    };
    const Row rows[] = {
        {"\0\0\1\0\1\0"s, "icons are not read, as their reader is not safe"},
        {"\x01\xda\0\1"s, "SGI pictures are not read, as their reader is not safe"},
        {"\x80\x2a\x5f\xd7", "Cineon pictures are not read, as their reader is not safe"},
        {"\0\0\0\x1c"
         "ftypheic"s,
         "HEIF and AVIF pictures are not read, as their reader is not safe"},
        {"\0\0\0\x1c"
         "ftypisom"s,
         "movies are not read, as pictures; the command render takes them"},
        {"RIFF\xff\0\0\0AVI "s, "movies are not read, as pictures; the command render takes them"},
        {"II*\0\x8"s, "camera raw files are not read, as they have to be developed first", "a.NEF"},
        {"SIMPLE  =", "FITS files are not read"},
    };
    const std::string rest = "; PNG, JPEG, OpenEXR, DPX, WebP, GIF, PSD, JPEG 2000, Radiance HDR, "
                             "BMP, PNM, TIFF and TGA are";
    for (const Row& row : rows) {
        const auto file = mFolder / row.name;
        std::ofstream(file) << row.content;
        EXPECT_EQ(ErrorOf([&] { ReadPicture(file); }),
                  "cannot read '" + file.string() + "': " + row.reason + rest);
    }
    std::ofstream(mFolder / "a.png") << "hello";
    EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / "a.png"); }),
              "cannot read '" + (mFolder / "a.png").string() + "': its format is unknown" + rest +
                  " read");
}

/// Returns a PSD file that claims `channels` channels and holds one RGB pixel.
std::string PsdOf(char channels) {
    return "8BPS\0\1\0\0\0\0\0\0\0"s + std::string(1, channels) + "\0\0\0\1\0\0\0\1\0\x08\0\3"s +
           std::string(3 * 4, '\0') + "\0\0\xff\x80\0"s;
}

TEST_F(PictureReader, RefusesPsdPicturesWithTooFewChannels) {
    std::ofstream(mFolder / "a.psd") << PsdOf(3);
    EXPECT_EQ(Argb(ReadPicture(mFolder / "a.psd").first().world, 0, 0),
              (std::vector<float>{255, 255, 128, 0}));
    std::ofstream(mFolder / "a.psd") << PsdOf(1);
    EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / "a.psd"); }),
              "cannot read '" + (mFolder / "a.psd").string() +
                  "': it has fewer channels than its colour mode needs");
}

TEST_F(PictureReader, RefusesDpxHeadersThatExceedTheFile) {
    constexpr int kUserSizePlace = 32;
    RawPicture::of({0.5F, 0.25F, 1}, OIIO::TypeDesc::UINT8, -1, 4, 3).write(mFolder / "a.dpx");
    EXPECT_EQ(ReadPicture(mFolder / "a.dpx").first().world.height(), 3);
    std::fstream file(mFolder / "a.dpx", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(kUserSizePlace) << "\x7f\0\0\x7f"s; // two gigabytes in either order of bytes
    file.close();
    EXPECT_EQ(ErrorOf([&] { ReadPicture(mFolder / "a.dpx"); }),
              "cannot read '" + (mFolder / "a.dpx").string() +
                  "': its header names more than the file holds");
}

TEST_F(PictureReader, RefusesDamagedFiles) {
    struct Row {
        const char* name;
        std::optional<std::string> content;
    };
    const std::string kMost = "\xff\xff\xff\x7f"; // 2147483647
    const Row rows[] = {{"missing.png", std::nullopt},
                        {"vast.bmp", "BM6\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0"s + kMost + kMost +
                                         "\1\0\x18\0"s + std::string(24, '\0')},
                        {"vast.hdr", "#?RADIANCE\n\n-Y 2147483647 +X 2147483647\n"},
                        {"vast.tga", "\0\0\2\0\0\0\0\0\0\0\0\0\xff\xff\xff\xff\x18\0"s},
                        {"large.ppm", "P6 30000 30000 255\n"},
                        {"empty.png", ""},
                        {"text.png", "hello"},
                        {"text.txt", "hello"},
                        {"huge.ppm", "P6 60000 60000 255\n"},
                        {"short.ppm", "P6 40 40 255\nabc"}};
    for (const Row& row : rows) {
        if (row.content) {
            std::ofstream(mFolder / row.name) << *row.content;
        }
        try {
            ReadPicture(mFolder / row.name);
            ADD_FAILURE() << row.name;
        } catch (const Error& error) {
            const std::string start = "cannot read '" + (mFolder / row.name).string() + "': ";
            EXPECT_EQ(std::string(error.what()).find(start), 0U) << error.what();
            EXPECT_GT(std::strlen(error.what()), start.size()) << row.name << " has no reason";
        }
    }
}

} // namespace
} // namespace Kerovane::Host
