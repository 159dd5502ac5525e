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
#include <cstring>
#include <memory>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

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

/// The formats of which it is known that one channel is grey, or one and alpha.
bool StoresGrey(const ImageOutput& output, bool withAlpha) {
    static constexpr std::array<std::string_view, 5> kFormats{"openexr", "png", "tiff", "jpeg",
                                                              "pnm"};
    constexpr std::ptrdiff_t kWithAlpha = 3; // of them, from the first on
    const auto* const found = std::ranges::find(kFormats, output.format_name());
    return found - kFormats.begin() < (withAlpha ? kWithAlpha : std::ssize(kFormats));
}

PictureForm FileForm(PictureForm form, const ImageOutput& output) {
    form.hasAlpha = form.hasAlpha && output.supports("alpha");
    form.isGrey = form.isGrey && StoresGrey(output, form.hasAlpha);
    return form;
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

/// Whether an ICC profile is for the colours that the file has.
bool IsProfileFor(const PictureForm& form, const OIIO::ParamValue& profile) {
    constexpr std::size_t kColourSpaceOffset = 16;
    const std::string_view colours = form.isGrey ? "GRAY" : "RGB ";
    const std::string_view bytes(static_cast<const char*>(profile.data()),
                                 static_cast<std::size_t>(profile.datasize()));
    return bytes.size() > kColourSpaceOffset + colours.size() &&
           bytes.substr(kColourSpaceOffset, colours.size()) == colours;
}

/// Whether an attribute tells how a file held its picture rather than something of the picture.
bool DescribesTheFile(const OIIO::ParamValue& attribute, const PictureForm& form,
                      const ImageOutput& output) {
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
        return !IsProfileFor(form, attribute);
    }
    return std::ranges::find(kNames, name) != kNames.end() ||
           std::ranges::any_of(kPrefixes, [name](auto prefix) { return name.starts_with(prefix); });
}

void CopyMetadata(const ImageSpec& origin, const PictureForm& form, const ImageOutput& output,
                  ImageSpec& layout) {
    for (const OIIO::ParamValue& attribute : origin.extra_attribs) {
        if (!DescribesTheFile(attribute, form, output)) {
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

/// How the picture's own file held it, as far as that goes for a file of the same format.
void CopyStorage(const ImageSpec& origin, const PictureForm& form, const ImageOutput& output,
                 ImageSpec& layout) {
    if (form.format != output.format_name()) {
        return;
    }
    const int bits = origin.get_int_attribute("oiio:BitsPerSample");
    constexpr int kMost = 16;
    if (layout.format == TypeDesc::UINT16 && bits > 8 && bits < kMost) {
        layout.attribute("oiio:BitsPerSample", bits);
    }
    if (output.supports("tiles") && origin.tile_width > 0 && origin.tile_depth <= 1) {
        layout.tile_width = origin.tile_width;
        layout.tile_height = origin.tile_height;
        layout.tile_depth = 1;
    }
    for (const char* name : {"openexr:dwaCompressionLevel", "openexr:lineOrder"}) {
        if (const OIIO::ParamValue* value = origin.find_attribute(name)) {
            layout.extra_attribs.push_back(*value);
        }
    }
    static constexpr std::array<std::string_view, 4> kCompressionsOfTiff{"none", "lzw", "zip",
                                                                         "packbits"};
    const std::string compression = origin.get_string_attribute("compression");
    if (std::ranges::find(kCompressionsOfTiff, compression) != kCompressionsOfTiff.end()) {
        layout.attribute("compression", compression);
    }
}

ImageSpec FileSpec(const World& world, const ImageSpec& origin, const PictureForm& form,
                   const ImageOutput& output) {
    const int channels = (form.isGrey ? 1 : 3) + (form.hasAlpha ? 1 : 0);
    ImageSpec layout(world.width(), world.height(), channels,
                     FileType(world.depth(), origin, output));
    CopyMetadata(origin, form, output, layout);
    CopyStorage(origin, form, output, layout);
    // In cells most rows repeat the one above. With that filter, and at this level, a file is as
    // small as at the library's own level of 6 and takes less than half of the time.
    constexpr int kFilterUp = 0x20;
    constexpr int kLevel = 4;
    layout.attribute("png:filter", kFilterUp);
    layout.attribute("png:compressionLevel", kLevel);
    // Cells have hard borders, which a file with colour at half the resolution would smear.
    layout.attribute("jpeg:subsampling", "4:4:4");
    if (form.hasAlpha && StoresStraightAlpha(output)) {
        layout.attribute("oiio:UnassociatedAlpha", 1);
    }
    return layout;
}

/// Moves the channels that `form` has of a row's RGBA pixels to the front of each.
template <typename Channel>
void Arrange(Channel* row, std::ptrdiff_t width, const PictureForm& form) {
    if (form.isGrey && form.hasAlpha) {
        for (Channel* pixel = row; pixel != row + width * 4; pixel += 4) {
            pixel[1] = pixel[3];
        }
    }
}

/// How rows are given to a writer.
struct RowForm {
    TypeDesc type; ///< of the channels; unknown: as the file has them
    std::size_t pixelBytes = 0;
};

/// Writes the picture in strips, so that it isn't in memory twice. `fill` makes the row of the
/// given number.
template <typename Fill>
bool WriteStrips(ImageOutput& output, const World& world, const RowForm& rows, Fill fill) {
    constexpr A_long kEnoughRows = 256; // a whole number of the blocks that formats compress
    const ImageSpec& layout = output.spec();
    const A_long tileHeight = layout.tile_height;
    const A_long stripRows =
        tileHeight > 0 ? (kEnoughRows + tileHeight - 1) / tileHeight * tileHeight : kEnoughRows;
    const std::size_t rowBytes = static_cast<std::size_t>(world.width()) * rows.pixelBytes;
    const auto strip = std::make_unique_for_overwrite<std::byte[]>(
        rowBytes * static_cast<std::size_t>(std::min(stripRows, world.height())));
    const auto pixelStride = static_cast<OIIO::stride_t>(rows.pixelBytes);
    const auto rowStride = static_cast<OIIO::stride_t>(rowBytes);
    for (A_long first = 0; first < world.height(); first += stripRows) {
        const A_long end = std::min(first + stripRows, world.height());
        std::byte* row = strip.get();
        for (A_long y = first; y < end; ++y, row += rowBytes) {
            fill(y, row);
        }
        const int top = layout.y + first;
        const int bottom = layout.y + end;
        const bool isWritten =
            tileHeight > 0 ? output.write_tiles(layout.x, layout.x + layout.width, top, bottom, 0,
                                                1, rows.type, strip.get(), pixelStride, rowStride)
                           : output.write_scanlines(top, bottom, 0, rows.type, strip.get(),
                                                    pixelStride, rowStride);
        if (!isWritten) {
            return false;
        }
    }
    return true;
}

/// Fills rows of which a file takes the first channels of each pixel, as `form` has them.
template <typename Pixel>
bool WriteStraight(ImageOutput& output, const World& world, const PictureForm& form) {
    using Channel = LayerChannel<Pixel>; // as many bits in the file
    constexpr TypeDesc kType{OIIO::BaseTypeFromC<Channel>::value};
    return WriteStrips(output, world, {kType, 4 * sizeof(Channel)}, [&](A_long y, std::byte* to) {
        auto* const row = reinterpret_cast<Channel*>(to);
        WriteRow(world.row<Pixel>(y), row);
        Arrange(row, world.width(), form);
    });
}

/// Premultiplied, which is also the picture over black. In floats, so that it is rounded only once.
template <typename Pixel>
void FillPremultiplied(std::span<const Pixel> pixels, const PictureForm& form, float* row) {
    WriteRow(pixels, row);
    const float* end = row + pixels.size() * 4;
    for (float* pixel = row; pixel != end; pixel += 4) {
        for (int channel = 0; channel < 3; ++channel) {
            pixel[channel] *= pixel[3];
        }
    }
    Arrange(row, static_cast<std::ptrdiff_t>(pixels.size()), form);
}

template <typename Pixel>
bool WritePremultiplied(ImageOutput& output, const World& world, const PictureForm& form) {
    constexpr RowForm kRows{TypeDesc::FLOAT, 4 * sizeof(float)};
    return WriteStrips(output, world, kRows, [&](A_long y, std::byte* row) {
        FillPremultiplied(world.row<Pixel>(y), form, reinterpret_cast<float*>(row));
    });
}

/// The colour converted to the file's type here, as the writer takes all channels as they are or
/// none.
template <typename Pixel>
bool WriteWithOthers(ImageOutput& output, const World& world, const PictureForm& form,
                     const OtherChannels& others) {
    const ImageSpec& layout = output.spec();
    const std::size_t channels = (form.isGrey ? 1 : 3) + (form.hasAlpha ? 1 : 0);
    const std::size_t colourBytes = channels * layout.format.size();
    const auto width = static_cast<std::size_t>(world.width());
    std::vector<float> floats(width * 4);
    const RowForm rows{TypeDesc::UNKNOWN, colourBytes + others.pixelBytes()};
    return WriteStrips(output, world, rows, [&](A_long y, std::byte* pixel) {
        FillPremultiplied(world.row<Pixel>(y), form, floats.data());
        const std::byte* other = others.row(y);
        for (std::size_t x = 0; x < width; ++x, pixel += rows.pixelBytes) {
            OIIO::convert_pixel_values(TypeDesc::FLOAT, &floats[x * 4], layout.format, pixel,
                                       static_cast<int>(channels));
            std::memcpy(pixel + colourBytes, other, others.pixelBytes());
            other += others.pixelBytes();
        }
    });
}

bool WriteWorld(ImageOutput& output, const World& world, const PictureForm& form,
                const OtherChannels* others) {
    const bool straight = form.hasAlpha && StoresStraightAlpha(output);
    return withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        return others != nullptr ? WriteWithOthers<Pixel>(output, world, form, *others)
               : straight        ? WriteStraight<Pixel>(output, world, form)
                                 : WritePremultiplied<Pixel>(output, world, form);
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

bool PictureWriter::holds(const OtherChannels& channels) const {
    return channels.isRead() && IsOpenExr(*CreateOutput(mTarget));
}

void PictureWriter::write(const World& world, const ImageSpec& origin, const PictureForm& form,
                          const OtherChannels* others) const {
    // In memory first: few of the formats' writers notice a full disk, and some end the process.
    MemoryFile encoded;
    EncodePicture(mTarget, world, origin, form, others, encoded);
    const std::span<const std::byte> content = encoded.content();
    if (content.empty()) {
        Fail(mTarget, "the format's writer produced nothing");
    }
    ReplaceFile(mTarget, content);
}

void EncodePicture(const std::filesystem::path& target, const World& world, const ImageSpec& origin,
                   const PictureForm& form, const OtherChannels* others, MemoryFile& file) {
    const std::unique_ptr<ImageOutput> output = CreateOutput(target);
    const PictureForm fileForm = FileForm(form, *output);
    ImageSpec layout = FileSpec(world, origin, fileForm, *output);
    const bool hasOthers = others != nullptr && !others->isEmpty();
    if (hasOthers) {
        others->addTo(layout);
    }
    if (!output->open(file.path().string(), layout) ||
        !WriteWorld(*output, world, fileForm, hasOthers ? others : nullptr) || !output->close()) {
        Fail(target, output->geterror());
    }
}

} // namespace Kerovane::Host
