#include "Host/Panel/PictureCoding.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr std::uint32_t kOpaque = 255;
constexpr std::size_t kChannels = 3;

std::string ContentOf(MemoryFile& file) {
    const std::span<const std::byte> content = file.content();
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

std::uint32_t GroundAt(Ground ground, A_long x, A_long y) {
    constexpr A_long kField = 8; // pixels
    constexpr std::array<std::uint32_t, 2> kFields{102, 153};
    switch (ground) {
    case Ground::Black:
        return 0;
    case Ground::White:
        return kOpaque;
    default:
        return kFields[static_cast<std::size_t>((x / kField + y / kField) % 2)];
    }
}

/// Pixels of the picture that one on the screen is the mean of: at most so many on a side that
/// their sum fits into 16 bits.
struct Span {
    static constexpr A_long kMost = 16;

    A_long begin = 0;
    A_long end = 0;
    A_long step = 1;
    std::uint32_t count = 1;
};

std::vector<Span> SpansOf(A_long start, A_long size, A_long shown) {
    std::vector<Span> spans;
    const auto edge = [&](A_long i) {
        return start + static_cast<A_long>(std::int64_t{i} * size / shown);
    };
    for (A_long i = 0; i < shown; ++i) {
        const A_long length = edge(i + 1) - edge(i);
        const A_long step = (length + Span::kMost - 1) / Span::kMost;
        spans.push_back({.begin = edge(i),
                         .end = edge(i + 1),
                         .step = step,
                         .count = static_cast<std::uint32_t>((length + step - 1) / step)});
    }
    return spans;
}

/// A pixel's channels, 16 bits each, in their order in memory: alpha lowest.
using Lanes = std::uint64_t;

std::uint32_t LaneOf(Lanes lanes, std::uint32_t index) {
    constexpr std::uint32_t kBits = 16;
    return static_cast<std::uint32_t>(lanes >> (index * kBits)) & 0xFFFFU;
}

/** Sums of a picture's rows, premultiplied. Its loops are such as compilers make vectors of. */
class RowSums {
public:
    explicit RowSums(std::size_t width) : mSums(width), mWeights(width) {}

    void clear() { std::ranges::fill(mSums, Lanes{0}); }

    void add(std::span<const PF_Pixel8> row) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(row.data());
        auto* const sums = reinterpret_cast<std::uint16_t*>(mSums.data());
        const std::size_t size = row.size() * sizeof(PF_Pixel8);
        if (weigh(row)) {
            const auto* const weights = reinterpret_cast<const std::uint8_t*>(mWeights.data());
            for (std::size_t i = 0; i < size; ++i) {
                sums[i] = static_cast<std::uint16_t>(sums[i] + product(bytes[i], weights[i]));
            }
        } else {
            for (std::size_t i = 0; i < size; ++i) {
                sums[i] = static_cast<std::uint16_t>(sums[i] + bytes[i]);
            }
        }
    }

    Lanes of(const Span& columns) const {
        Lanes sum = 0;
        for (A_long column = columns.begin; column < columns.end; column += columns.step) {
            sum += mSums[static_cast<std::size_t>(column)];
        }
        return sum;
    }

private:
    /// What each channel is multiplied by: alpha by white. Returns false if all are white.
    bool weigh(std::span<const PF_Pixel8> row) {
        std::uint32_t all = kOpaque;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::uint32_t alpha = row[i].alpha;
            all &= alpha;
            mWeights[i] = kOpaque | alpha << 8U | alpha << 16U | alpha << 24U;
        }
        return all != kOpaque;
    }

    /// Divided by white, and rounded to the nearest.
    static std::uint16_t product(std::uint8_t one, std::uint8_t other) {
        const auto raised = static_cast<std::uint16_t>(one * other + 128);
        return static_cast<std::uint16_t>(static_cast<std::uint16_t>(raised + (raised >> 8)) >> 8);
    }

    std::vector<Lanes> mSums;
    std::vector<std::uint32_t> mWeights;
};

/// What sums of so many pixels are multiplied by for their mean, times 65536. Rounded down, so that
/// a mean of whites stays within white.
std::array<std::uint32_t, Span::kMost + 1> SharesOf(const Span& rows) {
    std::array<std::uint32_t, Span::kMost + 1> shares{};
    for (std::uint32_t count = 1; count < shares.size(); ++count) {
        shares[count] = 0x10000U / (rows.count * count);
    }
    return shares;
}

/// The part over its ground, averaged where it is shown smaller.
std::vector<std::uint8_t> Shrink(const World& world, const PreviewView& view) {
    const std::vector<Span> columns = SpansOf(0, view.width, view.shownWidth);
    const std::vector<Span> rows = SpansOf(view.y, view.height, view.shownHeight);
    std::vector<std::uint8_t> pixels(columns.size() * rows.size() * kChannels);
    RowSums sums(static_cast<std::size_t>(view.width));
    std::uint8_t* to = pixels.data();
    A_long y = 0;
    for (const Span& span : rows) {
        sums.clear();
        for (A_long row = span.begin; row < span.end; row += span.step) {
            sums.add(world.row<PF_Pixel8>(row).subspan(static_cast<std::size_t>(view.x),
                                                       static_cast<std::size_t>(view.width)));
        }
        const auto shares = SharesOf(span);
        A_long x = 0;
        for (const Span& column : columns) {
            const Lanes sum = sums.of(column);
            const std::uint32_t share = shares[column.count];
            const auto mean = [sum, share](std::uint32_t lane) {
                return (LaneOf(sum, lane) * share + 0x8000U) >> 16U;
            };
            const std::uint32_t alpha = mean(0);
            const std::uint32_t behind =
                alpha == kOpaque ? 0 : (kOpaque - alpha) * GroundAt(view.ground, x, y) / kOpaque;
            for (const std::uint32_t lane : {1U, 2U, 3U}) {
                *to++ = static_cast<std::uint8_t>(std::min(mean(lane) + behind, kOpaque));
            }
            ++x;
        }
        ++y;
    }
    return pixels;
}

void Check(const World& world, const PreviewView& view) {
    const bool isWithin = view.x >= 0 && view.y >= 0 && view.width >= 1 && view.height >= 1 &&
                          view.width <= world.width() - view.x &&
                          view.height <= world.height() - view.y;
    const bool isShrunk = view.shownWidth >= 1 && view.shownWidth <= view.width &&
                          view.shownHeight >= 1 && view.shownHeight <= view.height;
    if (world.depth() != Depth::Bits8 || !isWithin || !isShrunk) {
        throw Error(fmt::format("no such view of {} x {} pixels", world.width(), world.height()));
    }
}

} // namespace

Ground ParseGround(const std::string& text) {
    static constexpr std::array<std::string_view, 3> kNames{"checker", "black", "white"};
    const auto* const found = std::ranges::find(kNames, text);
    if (found == kNames.end()) {
        throw Error(fmt::format("'{}' is no ground", text));
    }
    return static_cast<Ground>(found - kNames.begin());
}

PreviewView WholeView(const World& world, A_long mostPixels, Ground ground) {
    const double factor =
        std::min(1.0, static_cast<double>(mostPixels) / std::max(world.width(), world.height()));
    const auto shown = [factor](A_long size) {
        return std::max<A_long>(1, static_cast<A_long>(std::lround(size * factor)));
    };
    return {.x = 0,
            .y = 0,
            .width = world.width(),
            .height = world.height(),
            .shownWidth = shown(world.width()),
            .shownHeight = shown(world.height()),
            .ground = ground};
}

World In8Bits(const World& world) {
    constexpr ChannelPlaces kRgba{.red = 0, .green = 1, .blue = 2, .alpha = 3};
    World copy(Depth::Bits8, world.width(), world.height());
    std::vector<std::uint8_t> row(static_cast<std::size_t>(world.width()) * 4);
    withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        for (A_long y = 0; y < world.height(); ++y) {
            WriteRow(world.row<Pixel>(y), row.data());
            ReadRow(row.data(), 4, kRgba, copy.row<PF_Pixel8>(y));
        }
    });
    return copy;
}

std::string EncodePreview(const World& world, const PreviewView& view) {
    if (world.depth() != Depth::Bits8) {
        return EncodePreview(In8Bits(world), view);
    }
    Check(world, view);
    const std::vector<std::uint8_t> pixels = Shrink(world, view);
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create("jpeg");
    OIIO::ImageSpec layout(view.shownWidth, view.shownHeight, static_cast<int>(kChannels),
                           OIIO::TypeDesc::UINT8);
    layout.attribute("Compression", "jpeg:85");
    layout.attribute("jpeg:subsampling", "4:4:4"); // cells have hard borders
    MemoryFile file;
    if (output == nullptr || !output->open(file.path().string(), layout) ||
        !output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) || !output->close()) {
        throw Error(fmt::format("cannot encode a preview: {}",
                                output == nullptr ? OIIO::geterror() : output->geterror()));
    }
    return ContentOf(file);
}

std::string EncodeStill(World world, const Picture& source, PictureSettings settings) {
    settings.bits = ChannelBits::Bits8;
    Picture picture = PictureOf(std::move(world), source.origin(), source.first().channels);
    picture.format = source.format;
    MemoryFile file;
    EncodePicture(picture, OutputFormatOf("still.png"), settings, file);
    return ContentOf(file);
}

} // namespace Kerovane::Host
