#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"

#include "Tests/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <OpenImageIO/imageio.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {
namespace {

using OIIO::ImageSpec;
using OIIO::TypeDesc;

constexpr int kWidth = 12;
constexpr int kHeight = 10;

/// A part of a file. All of its channels and pixels differ in value.
struct RawPart {
    ImageSpec layout;
    std::vector<float> values;

    static RawPart of(std::vector<std::string> channels, TypeDesc type, const char* name = "") {
        const auto count = static_cast<int>(channels.size());
        RawPart part{{kWidth, kHeight, count, type}, {}};
        part.layout.channelnames = std::move(channels);
        part.layout.alpha_channel = -1;
        if (*name != '\0') {
            part.layout.attribute("oiio:subimagename", name);
        }
        for (int i = 0; i < kWidth * kHeight * count; ++i) {
            part.values.push_back(static_cast<float>(i % 1000) / 1024);
        }
        return part;
    }
};

void Write(const std::filesystem::path& file, const std::vector<RawPart>& parts) {
    const auto output = OIIO::ImageOutput::create(file.string());
    std::vector<ImageSpec> layouts;
    std::ranges::transform(parts, std::back_inserter(layouts), &RawPart::layout);
    ASSERT_TRUE(output->open(file.string(), static_cast<int>(layouts.size()), layouts.data()));
    for (std::size_t i = 0; i < parts.size(); ++i) {
        ASSERT_TRUE(i == 0 ||
                    output->open(file.string(), layouts[i], OIIO::ImageOutput::AppendSubimage));
        ASSERT_TRUE(output->write_image(TypeDesc::FLOAT, parts[i].values.data()));
    }
    ASSERT_TRUE(output->close());
}

std::vector<RawPart> Read(const std::filesystem::path& file) {
    std::vector<RawPart> parts;
    const auto input = OIIO::ImageInput::open(file.string());
    for (int i = 0; input->seek_subimage(i, 0); ++i) {
        RawPart part{input->spec(), {}};
        part.values.resize(part.layout.image_pixels() *
                           static_cast<std::size_t>(part.layout.nchannels));
        EXPECT_TRUE(
            input->read_image(i, 0, 0, part.layout.nchannels, TypeDesc::FLOAT, part.values.data()));
        parts.push_back(std::move(part));
    }
    return parts;
}

/// Stands in for the effect: blackens each layer that is worked on.
void Work(Picture& picture) {
    for (PicturePart& part : picture.parts) {
        for (PictureLayer& layer : part.layers) {
            withPixelType(layer.world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
                for (A_long y = 0; y < layer.world.height(); ++y) {
                    for (Pixel& pixel : layer.world.row<Pixel>(y)) {
                        pixel.red = pixel.green = pixel.blue = 0;
                    }
                }
            });
        }
    }
}

/// Returns the changed channels, each as its part's number and its name.
std::vector<std::string> Changed(const std::vector<RawPart>& before,
                                 const std::vector<RawPart>& after) {
    std::vector<std::string> changed;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const ImageSpec& layout = before[i].layout;
        for (int channel = 0; channel < layout.nchannels; ++channel) {
            const std::string name = layout.channel_name(channel);
            const int there = after.at(i).layout.channelindex(name);
            EXPECT_GE(there, 0) << name;
            EXPECT_EQ(layout.channelformat(channel), after[i].layout.channelformat(there)) << name;
            bool isSame = true;
            for (std::size_t pixel = 0; pixel < layout.image_pixels(); ++pixel) {
                const auto count = static_cast<std::size_t>(layout.nchannels);
                isSame =
                    isSame && before[i].values[pixel * count + static_cast<std::size_t>(channel)] ==
                                  after[i].values[pixel * count + static_cast<std::size_t>(there)];
            }
            if (!isSame) {
                changed.push_back(std::to_string(i) + ' ' + name);
            }
        }
    }
    return changed;
}

class PictureParts : public testing::Test {
protected:
    PictureParts() {
        RawPart beauty = RawPart::of({"R", "G", "B", "Z", "glow.red", "glow.green", "glow.blue"},
                                     TypeDesc::HALF, "beauty");
        beauty.layout.channelformats = {TypeDesc::HALF,  TypeDesc::HALF,  TypeDesc::HALF,
                                        TypeDesc::FLOAT, TypeDesc::FLOAT, TypeDesc::FLOAT,
                                        TypeDesc::FLOAT};
        Write(
            mFolder / "in.exr",
            {RawPart::of({"N.x", "N.y"}, TypeDesc::FLOAT, "normals"), std::move(beauty),
             RawPart::of({"R", "G", "B", "left.R", "left.G", "left.B"}, TypeDesc::FLOAT, "views")});
        RawPart small = RawPart::of({"R", "G", "B"}, TypeDesc::UINT8);
        small.layout.width = small.layout.full_width = kWidth / 2;
        Write(mFolder / "in.tif", {RawPart::of({"R", "G", "B"}, TypeDesc::UINT16), small});
    }

    std::vector<std::string> changedBy(const std::string& extension, const LayerChoice& choice) {
        Picture picture = ReadPicture(mFolder / ("in" + extension), {.choice = choice});
        Work(picture);
        const PictureWriter writer(mFolder / ("out" + extension));
        EXPECT_EQ(writer.write(picture), std::vector<std::string>());
        return Changed(Read(mFolder / ("in" + extension)), Read(mFolder / ("out" + extension)));
    }

    TemporaryFolder mFolder;
};

TEST_F(PictureParts, PassUnchangedExceptForTheChosenLayers) {
    struct Row {
        const char* extension;
        LayerChoice choice;
        std::vector<std::string> changed;
    };
    const std::vector<Row> rows{
        {".exr",
         {},
         {"1 R", "1 G", "1 B", "2 R", "2 G", "2 B", "2 left.R", "2 left.G", "2 left.B"}},
        {".exr", {.part = 1}, {"1 R", "1 G", "1 B"}},
        {".exr", {.layer = "glow"}, {"1 glow.red", "1 glow.green", "1 glow.blue"}},
        {".exr", {.layer = "views"}, {"2 R", "2 G", "2 B"}},
        {".exr", {.layer = "left", .part = 2}, {"2 left.R", "2 left.G", "2 left.B"}},
        {".tif", {}, {"0 R", "0 G", "0 B", "1 R", "1 G", "1 B"}},
        {".tif", {.part = 0}, {"0 R", "0 G", "0 B"}},
    };
    for (const auto& [extension, choice, changed] : rows) {
        EXPECT_EQ(changedBy(extension, choice), changed)
            << extension << ", layer '" << choice.layer << "'";
    }
}

TEST_F(PictureParts, AreListedIfTheChosenLayerIsMissing) {
    Write(mFolder / "depth.exr",
          {RawPart::of({"Z", "glow.R", "glow.G", "glow.B"}, TypeDesc::HALF)});
    const struct {
        const char* file;
        LayerChoice choice;
        const char* reason;
    } rows[] = {
        {"depth.exr", {}, "it has no colour layer: Z, glow.R, glow.G, glow.B; --layer takes glow"},
        {"in.exr", {.part = 3}, "it has no part 3, as there are 3, counted from 0"},
        {"in.exr",
         {.layer = "shine", .part = 0},
         "it has no colour layer 'shine': part 0 'normals'"},
        {"in.tif", {.layer = "shine"}, "it has no colour layer 'shine': part 0 has R, G, B"},
    };
    for (const auto& [file, choice, reason] : rows) {
        const std::string error = ErrorOf([&] { ReadPicture(mFolder / file, {.choice = choice}); });
        EXPECT_NE(error.find(reason), std::string::npos) << error;
    }
}

TEST_F(PictureParts, AreReportedIfTheFormatCannotHoldThem) {
    const Picture picture = ReadPicture(mFolder / "in.exr");
    EXPECT_EQ(
        PictureWriter(mFolder / "out.tif", {.bits = ChannelBits::Bits16}).write(picture),
        (std::vector<std::string>{"other channels are left out: Z, glow.red, glow.green, glow.blue",
                                  "2 of the file's 3 parts are left out"}));
}

TEST_F(PictureParts, KeepOverscanIfAskedFor) {
    RawPart in = RawPart::of({"R", "G", "B", "A", "Z"}, TypeDesc::HALF);
    in.layout.x = -2; // columns -2 to 10 of a frame from 0 to 12
    in.layout.y = 1;
    Write(mFolder / "over.exr", {in});
    Picture picture = ReadPicture(mFolder / "over.exr", {.keepOverscan = true});
    EXPECT_TRUE(picture.losses.empty());
    EXPECT_EQ(picture.first().world.width(), kWidth);
    Work(picture);
    PictureWriter(mFolder / "out.exr").write(picture);
    const RawPart out = Read(mFolder / "out.exr").front();
    EXPECT_EQ(std::pair(out.layout.x, out.layout.width), std::pair(-2, kWidth + 2));
    EXPECT_EQ(std::pair(out.layout.y, out.layout.height), std::pair(0, kHeight + 1));
    const RawPart stored = Read(mFolder / "over.exr").front();
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const auto* before = &stored.values[static_cast<std::size_t>((y * kWidth + x) * 5)];
            const auto* after =
                &out.values[static_cast<std::size_t>(((y + 1) * (kWidth + 2) + x) * 5)];
            const bool isInFrame = x >= 2 && y < kHeight - 1;
            EXPECT_EQ(after[0], isInFrame ? 0 : before[0]) << x << ", " << y;
            EXPECT_EQ(after[3], before[3]) << x << ", " << y;
            EXPECT_EQ(after[4], before[4]) << x << ", " << y;
        }
    }
}

} // namespace
} // namespace Kerovane::Host
