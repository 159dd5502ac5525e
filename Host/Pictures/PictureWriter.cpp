#include "Host/Pictures/PictureWriter.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

namespace {

using OIIO::ImageOutput;
using OIIO::ImageSpec;
using OIIO::TypeDesc;

[[noreturn]] void Fail(const std::filesystem::path& target, std::string_view reason) {
    throw Error(fmt::format("cannot write '{}': {}", target.string(), reason));
}

std::unique_ptr<ImageOutput> CreateOutput(const std::filesystem::path& target) {
    if (!target.has_extension()) {
        Fail(target, "its name has no extension that tells the format");
    }
    std::unique_ptr<ImageOutput> output = ImageOutput::create(target.string());
    if (output == nullptr) {
        OIIO::geterror(); // takes the message, which would stay for the next failure
        Fail(target,
             fmt::format("no picture format for '{}' can be written", target.extension().string()));
    }
    return output;
}

/// Formats whose pixels are stored with straight alpha; the writers must not divide again.
bool StoresStraightAlpha(const ImageOutput& output) {
    static constexpr std::array<std::string_view, 7> kFormats{"bmp",   "gif",  "ico", "png",
                                                              "targa", "tiff", "webp"};
    return std::ranges::find(kFormats, output.format_name()) != kFormats.end();
}

/// The formats that hold floats; the others' writers would fall to 8 bits for them.
bool StoresFloats(const ImageOutput& output) {
    static constexpr std::array<std::string_view, 5> kFormats{"fits", "hdr", "openexr", "rla",
                                                              "tiff"};
    return std::ranges::find(kFormats, output.format_name()) != kFormats.end();
}

bool IsOpenExr(const ImageOutput& output) {
    return std::string_view(output.format_name()) == "openexr";
}

TypeDesc FileType(Depth depth, const ImageSpec& origin, const ImageOutput& output) {
    switch (depth) {
    case Depth::Bits8: // any 8-bit value fits into a half
        return IsOpenExr(output) ? TypeDesc::HALF : TypeDesc::UINT8;
    case Depth::Bits16:
        return IsOpenExr(output) ? TypeDesc::FLOAT : TypeDesc::UINT16;
    default:
        if (!StoresFloats(output) || (origin.format == TypeDesc::UINT16 && !IsOpenExr(output))) {
            return TypeDesc::UINT16;
        }
        return origin.format == TypeDesc::HALF ? TypeDesc::HALF : TypeDesc::FLOAT;
    }
}

/// Whether an ICC profile describes RGB colour: grey pictures come out as RGB.
bool IsRgbProfile(const OIIO::ParamValue& profile) {
    constexpr std::size_t kColourSpaceOffset = 16;
    constexpr std::string_view kRgb = "RGB ";
    const std::string_view bytes(static_cast<const char*>(profile.data()),
                                 static_cast<std::size_t>(profile.datasize()));
    return bytes.size() > kColourSpaceOffset + kRgb.size() &&
           bytes.substr(kColourSpaceOffset, kRgb.size()) == kRgb;
}

/// Whether an attribute tells how a file held its picture rather than something of the picture.
bool DescribesTheFile(const OIIO::ParamValue& attribute, const ImageOutput& output) {
    static constexpr std::array<std::string_view, 13> kPrefixes{
        "bmp:", "dpx:", "gif:",   "ico:",      "jpeg:", "oiio:", "openexr:",
        "png:", "pnm:", "targa:", "thumbnail", "tiff:", "webp:"};
    static constexpr std::array<std::string_view, 4> kNames{"chunkCount", "name", "planarconfig",
                                                            "type"};
    const std::string_view name(attribute.name().c_str());
    if (name == "oiio:ColorSpace") {
        return false;
    }
    if (name == "compression") {
        return !IsOpenExr(output);
    }
    if (name == "ICCProfile") {
        return !IsRgbProfile(attribute);
    }
    return std::ranges::find(kNames, name) != kNames.end() ||
           std::ranges::any_of(kPrefixes, [name](auto prefix) { return name.starts_with(prefix); });
}

void CopyMetadata(const ImageSpec& origin, const ImageOutput& output, ImageSpec& layout) {
    for (const OIIO::ParamValue& attribute : origin.extra_attribs) {
        if (!DescribesTheFile(attribute, output)) {
            layout.extra_attribs.push_back(attribute);
        }
    }
    if (output.supports("displaywindow")) {
        layout.x = origin.x;
        layout.y = origin.y;
        layout.full_x = origin.full_x;
        layout.full_y = origin.full_y;
        layout.full_width = origin.full_width;
        layout.full_height = origin.full_height;
    }
}

ImageSpec FileSpec(const World& world, const ImageSpec& origin, const ImageOutput& output) {
    const int channels = output.supports("alpha") ? 4 : 3;
    ImageSpec layout(world.width(), world.height(), channels,
                     FileType(world.depth(), origin, output));
    CopyMetadata(origin, output, layout);
    // In cells most rows repeat the one above. With that filter, and at this level, a file is as
    // small as at the library's own level of 6 and takes less than half of the time.
    constexpr int kFilterUp = 0x20;
    constexpr int kLevel = 4;
    layout.attribute("png:filter", kFilterUp);
    layout.attribute("png:compressionLevel", kLevel);
    // Cells have hard borders, which a file with colour at half the resolution would smear.
    layout.attribute("jpeg:subsampling", "4:4:4");
    if (channels == 4 && StoresStraightAlpha(output)) {
        layout.attribute("oiio:UnassociatedAlpha", 1);
    }
    return layout;
}

/// Writes the picture in strips, so that it isn't in memory twice. `fill` makes a row of the file
/// from the row of the given number.
template <typename Channel, typename Fill>
bool WriteStrips(ImageOutput& output, const World& world, Fill fill) {
    constexpr A_long kStripRows = 256; // a whole number of the blocks that formats compress
    constexpr TypeDesc kType{OIIO::BaseTypeFromC<Channel>::value};
    const auto rowChannels = static_cast<std::size_t>(world.width()) * 4;
    const auto strip = std::make_unique_for_overwrite<Channel[]>(
        rowChannels * static_cast<std::size_t>(std::min(kStripRows, world.height())));
    const int top = output.spec().y;
    for (A_long first = 0; first < world.height(); first += kStripRows) {
        const A_long end = std::min(first + kStripRows, world.height());
        Channel* row = strip.get();
        for (A_long y = first; y < end; ++y, row += rowChannels) {
            fill(y, row);
        }
        // The stride lets a file of three channels leave the fourth out.
        if (!output.write_scanlines(top + first, top + end, 0, kType, strip.get(),
                                    4 * sizeof(Channel))) {
            return false;
        }
    }
    return true;
}

template <typename Pixel>
bool WriteStraight(ImageOutput& output, const World& world) {
    using Channel = LayerChannel<Pixel>; // as many bits in the file
    return WriteStrips<Channel>(
        output, world, [&world](A_long y, Channel* row) { WriteRow(world.row<Pixel>(y), row); });
}

/// Premultiplied, which is also the picture over black. In floats, so that it is rounded only once.
template <typename Pixel>
bool WritePremultiplied(ImageOutput& output, const World& world) {
    return WriteStrips<float>(output, world, [&world](A_long y, float* row) {
        WriteRow(world.row<Pixel>(y), row);
        const float* end = row + std::ptrdiff_t{world.width()} * 4;
        for (float* pixel = row; pixel != end; pixel += 4) {
            for (int channel = 0; channel < 3; ++channel) {
                pixel[channel] *= pixel[3];
            }
        }
    });
}

bool WriteWorld(ImageOutput& output, const World& world) {
    const bool straight = output.supports("alpha") && StoresStraightAlpha(output);
    return withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        return straight ? WriteStraight<Pixel>(output, world)
                        : WritePremultiplied<Pixel>(output, world);
    });
}

} // namespace

PictureWriter::PictureWriter(std::filesystem::path target) : mTarget(std::move(target)) {
    if (std::filesystem::is_directory(mTarget)) {
        Fail(mTarget, "it is a directory");
    }
    CreateOutput(mTarget);
    const std::filesystem::path parent = mTarget.parent_path();
    const bool exists = std::filesystem::exists(mTarget);
    if (access(parent.empty() ? "." : parent.c_str(), W_OK | X_OK) != 0 ||
        (exists && access(mTarget.c_str(), W_OK) != 0)) {
        Fail(mTarget, std::generic_category().message(errno));
    }
}

void PictureWriter::write(const World& world, const ImageSpec& origin) const {
    // In memory first: few of the formats' writers notice a full disk, and some end the process.
    MemoryFile encoded;
    const std::unique_ptr<ImageOutput> output = CreateOutput(mTarget);
    if (!output->open(encoded.path().string(), FileSpec(world, origin, *output)) ||
        !WriteWorld(*output, world) || !output->close()) {
        Fail(mTarget, output->geterror());
    }
    const std::span<const std::byte> content = encoded.content();
    if (content.empty()) {
        Fail(mTarget, "the format's writer produced nothing");
    }
    ReplaceFile(mTarget, content);
}

} // namespace Kerovane::Host
