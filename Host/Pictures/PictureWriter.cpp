#include "Host/Pictures/PictureWriter.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureLayout.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <concepts>
#include <cstddef>
#include <iterator>
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

/// Returns the BT.709 luma.
template <typename Channel>
Channel GreyOf(const Channel* rgb) {
    const double luma = 0.2126 * static_cast<double>(rgb[0]) +
                        0.7152 * static_cast<double>(rgb[1]) + 0.0722 * static_cast<double>(rgb[2]);
    if constexpr (std::integral<Channel>) {
        return static_cast<Channel>(luma + 0.5);
    } else {
        return static_cast<Channel>(luma);
    }
}

/// Packs grey and alpha to the front of each RGBA pixel, if the file is grey.
template <typename Channel>
void Arrange(Channel* row, std::ptrdiff_t width, ColourChannels channels) {
    if (!channels.isGrey) {
        return;
    }
    for (Channel* pixel = row; pixel != row + width * 4; pixel += 4) {
        const bool isGreyAlready = pixel[0] == pixel[1] && pixel[1] == pixel[2];
        pixel[0] = isGreyAlready ? pixel[0] : GreyOf(pixel);
        pixel[1] = pixel[3];
    }
}

/// The form of the rows given to a writer.
struct RowForm {
    TypeDesc type; ///< of the channels; unknown: each channel in its type in the file
    std::size_t pixelBytes = 0;
};

/// Writes the picture in strips, so that it is not in memory twice. `fill` fills the row with the
/// given number.
template <typename Fill>
bool WriteStrips(ImageOutput& output, const RowForm& rows, Fill fill) {
    constexpr A_long kEnoughRows = 256; // a multiple of the block heights that formats compress
    const ImageSpec& layout = output.spec();
    const A_long tileHeight = layout.tile_height;
    const A_long stripRows =
        tileHeight > 0 ? (kEnoughRows + tileHeight - 1) / tileHeight * tileHeight : kEnoughRows;
    const std::size_t rowBytes = static_cast<std::size_t>(layout.width) * rows.pixelBytes;
    const auto strip = std::make_unique_for_overwrite<std::byte[]>(
        rowBytes * static_cast<std::size_t>(std::min(stripRows, layout.height)));
    const auto pixelStride = static_cast<OIIO::stride_t>(rows.pixelBytes);
    const auto rowStride = static_cast<OIIO::stride_t>(rowBytes);
    for (A_long first = 0; first < layout.height; first += stripRows) {
        const A_long end = std::min(first + stripRows, layout.height);
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

/// Writes a layer with straight alpha. The file takes the first channels of each RGBA pixel.
template <typename Pixel>
bool WriteStraight(ImageOutput& output, const World& world, ColourChannels channels) {
    using Channel = LayerChannel<Pixel>; // has the same number of bits in the file
    constexpr TypeDesc kType{OIIO::BaseTypeFromC<Channel>::value};
    return WriteStrips(output, {kType, 4 * sizeof(Channel)}, [&](A_long y, std::byte* to) {
        auto* const row = reinterpret_cast<Channel*>(to);
        WriteRow(world.row<Pixel>(y), row);
        Arrange(row, world.width(), channels);
    });
}

/// Converts to premultiplied colour, which is also the picture over black. Computes in floats, so
/// that values are rounded only once.
template <typename Pixel>
void FillPremultiplied(std::span<const Pixel> pixels, ColourChannels channels, float* row) {
    WriteRow(pixels, row);
    const float* end = row + pixels.size() * 4;
    for (float* pixel = row; pixel != end; pixel += 4) {
        for (int channel = 0; channel < 3; ++channel) {
            pixel[channel] *= pixel[3];
        }
    }
    Arrange(row, static_cast<std::ptrdiff_t>(pixels.size()), channels);
}

template <typename Pixel>
bool WritePremultiplied(ImageOutput& output, const World& world, ColourChannels channels) {
    constexpr RowForm kRows{TypeDesc::FLOAT, 4 * sizeof(float)};
    return WriteStrips(output, kRows, [&](A_long y, std::byte* row) {
        FillPremultiplied(world.row<Pixel>(y), channels, reinterpret_cast<float*>(row));
    });
}

bool WriteLayer(ImageOutput& output, const World& world, const PartLayout& layout) {
    const ColourChannels channels = layout.layers.front();
    return withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        return layout.isStraight ? WriteStraight<Pixel>(output, world, channels)
                                 : WritePremultiplied<Pixel>(output, world, channels);
    });
}

/// Fills complete rows of a part with channels of different types. A writer takes either all
/// channels in the file's types or all in one type.
class MixedRows {
public:
    MixedRows(const PicturePart& part, const PartLayout& layout, const ImageSpec& file)
        : mPart(part), mLayout(layout), mFile(file), mPixelBytes(file.pixel_bytes(true)) {
        for (int place = 0; place < file.nchannels; ++place) {
            mOffsets.push_back(file.pixel_bytes(0, place, true));
        }
    }

    RowForm form() const { return {TypeDesc::UNKNOWN, mPixelBytes}; }

    /// Fills row `y`, counted from the top of the file's data window.
    void fill(A_long y, std::byte* row) {
        std::fill_n(row, mPixelBytes * static_cast<std::size_t>(mFile.width), std::byte{});
        std::size_t place = 0;
        for (std::size_t i = 0; i < mPart.layers.size(); ++i) {
            const ColourChannels& channels = mLayout.layers[i];
            const std::size_t count = (channels.isGrey ? 1U : 3U) + (channels.hasAlpha ? 1U : 0U);
            if (mPart.stored.keepsOverscan()) {
                copyStored(y, place, count, row);
            }
            fillLayer(mPart.layers[i].world, channels, y, row + mOffsets[place]);
            place += count;
        }
        for (const int stored : mPart.stored.passing()) {
            copy(stored, y, place++, row);
        }
    }

private:
    void copy(int stored, A_long y, std::size_t place, std::byte* row) const {
        mPart.stored.copyRow(stored, mFile.y + y, mFile.x, mFile.x + mFile.width,
                             mFile.channelformat(static_cast<int>(place)), row + mOffsets[place],
                             mPixelBytes);
    }

    /// Copies those channels of a layer that the stored part has under the same names.
    void copyStored(A_long y, std::size_t first, std::size_t count, std::byte* row) const {
        for (std::size_t place = first; place < first + count; ++place) {
            const int stored = mPart.stored.layout().channelindex(mFile.channelnames[place]);
            if (stored >= 0) {
                copy(stored, y, place, row);
            }
        }
    }

    void fillLayer(const World& world, ColourChannels channels, A_long y, std::byte* to) {
        const A_long row = mFile.y + y - mFile.full_y;
        if (row < 0 || row >= world.height()) {
            return;
        }
        mFloats.resize(static_cast<std::size_t>(world.width()) * 4);
        withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
            FillPremultiplied(world.row<Pixel>(row), channels, mFloats.data());
        });
        const int count = (channels.isGrey ? 1 : 3) + (channels.hasAlpha ? 1 : 0);
        const auto left = static_cast<std::size_t>(mFile.full_x - mFile.x);
        OIIO::convert_image(
            count, world.width(), 1, 1, mFloats.data(), TypeDesc::FLOAT, 4 * sizeof(float),
            OIIO::AutoStride, OIIO::AutoStride, to + left * mPixelBytes, mFile.format,
            static_cast<OIIO::stride_t>(mPixelBytes), OIIO::AutoStride, OIIO::AutoStride);
    }

    const PicturePart& mPart;
    const PartLayout& mLayout;
    const ImageSpec& mFile;
    std::size_t mPixelBytes;
    std::vector<std::size_t> mOffsets;
    std::vector<float> mFloats;
};

bool WritePart(ImageOutput& output, const PicturePart& part, const PartLayout& layout,
               const OutputFormat& format) {
    const bool isPlain =
        !part.layers.empty() && (!format.hasNamedChannels || part.stored.isEmpty());
    if (isPlain) {
        return WriteLayer(output, part.layers.front().world, layout);
    }
    MixedRows rows(part, layout, output.spec());
    return WriteStrips(output, rows.form(), [&](A_long y, std::byte* row) { rows.fill(y, row); });
}

/// Returns the parts of the picture that the format can hold.
std::vector<const PicturePart*> PartsFor(const OutputFormat& format, const Picture& picture) {
    std::vector<const PicturePart*> parts;
    const bool holdsAll = format.hasParts && picture.format == format.writer;
    for (const PicturePart& part : picture.parts) {
        if (holdsAll || (parts.empty() && !part.layers.empty())) {
            parts.push_back(&part);
        }
    }
    return parts;
}

bool Open(ImageOutput& output, const std::string& name, const std::vector<PartLayout>& layouts) {
    if (layouts.size() == 1) {
        return output.open(name, layouts.front().file);
    }
    std::vector<ImageSpec> files;
    std::ranges::transform(layouts, std::back_inserter(files), &PartLayout::file);
    return output.open(name, static_cast<int>(files.size()), files.data());
}

bool WriteParts(ImageOutput& output, const std::string& name,
                const std::vector<const PicturePart*>& parts,
                const std::vector<PartLayout>& layouts, const OutputFormat& format) {
    if (!Open(output, name, layouts)) {
        return false;
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && !output.open(name, layouts[i].file, ImageOutput::AppendSubimage)) {
            return false;
        }
        if (!WritePart(output, *parts[i], layouts[i], format)) {
            return false;
        }
    }
    return output.close();
}

} // namespace

PictureWriter::PictureWriter(std::filesystem::path target, PictureSettings settings)
    : mTarget(std::move(target)), mFormat(OutputFormatOf(mTarget)), mSettings(std::move(settings)) {
    CheckSettings(mSettings, mFormat);
    if (std::filesystem::is_directory(mTarget)) {
        Fail(mTarget, "it is a directory");
    }
    const std::filesystem::path parent = mTarget.parent_path();
    const bool exists = std::filesystem::exists(mTarget);
    if (access(parent.empty() ? "." : parent.c_str(), W_OK | X_OK) != 0 ||
        (exists && access(mTarget.c_str(), W_OK) != 0)) {
        Fail(mTarget, std::generic_category().message(errno));
    }
}

std::vector<std::string> PictureWriter::write(const Picture& picture) const {
    // Few of the formats' writers detect a full disk, and some of them then end the process.
    MemoryFile encoded;
    std::vector<std::string> losses;
    std::span<const std::byte> content;
    try {
        losses = EncodePicture(picture, mFormat, mSettings, encoded);
        content = encoded.content();
    } catch (const Error& error) {
        Fail(mTarget, error.what());
    }
    if (content.empty()) {
        Fail(mTarget, "the format's writer produced nothing");
    }
    ReplaceFile(mTarget, content);
    return losses;
}

std::vector<std::string> EncodePicture(const Picture& picture, const OutputFormat& format,
                                       const PictureSettings& settings, const MemoryFile& file) {
    const std::vector<const PicturePart*> parts = PartsFor(format, picture);
    std::vector<PartLayout> layouts;
    std::vector<std::string> losses;
    for (const PicturePart* part : parts) {
        layouts.push_back(LayoutOf(*part, picture.format, format, settings));
        std::ranges::move(LossesOf(*part, layouts.back(), format, settings),
                          std::back_inserter(losses));
    }
    losses.push_back(LossOfParts(picture, parts.size()));
    std::erase(losses, "");
    const auto output = ImageOutput::create(std::string(format.writer));
    if (!WriteParts(*output, file.path().string(), parts, layouts, format)) {
        throw Error(output->geterror());
    }
    return losses;
}

} // namespace Kerovane::Host
