#include "Host/Panel/PreviewView.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/parallel_for.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>

namespace Kerovane::Host {

namespace {

constexpr std::uint32_t kOpaque = 255;
constexpr std::size_t kChannels = 3;

std::uint32_t GroundAt(Ground ground, A_long x, A_long y) {
    constexpr A_long kField = 8; // side of a square of the checkerboard, in pixels
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

/// The columns or rows of the picture that are averaged for one screen pixel: every `step`-th from
/// `begin` to before `end`. `count` of them are used, at most kMost: then the sum of kMost rows and
/// columns fits into 16 bits.
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

/// A pixel's channels, 16 bits each: alpha in the lowest bits, then red, green and blue.
using Lanes = std::uint64_t;

/**
 * Sums rows of pixels, premultiplied by their alpha. The loops are written for the compiler to
 * vectorize.
 */
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
    /// Sets the factors of each pixel's channels: 255 for alpha, and the pixel's alpha for colour.
    /// Returns false if the whole row is opaque.
    bool weigh(std::span<const PF_Pixel8> row) {
        std::uint32_t all = kOpaque;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::uint32_t alpha = row[i].alpha;
            all &= alpha;
            mWeights[i] = kOpaque | alpha << 8U | alpha << 16U | alpha << 24U;
        }
        return all != kOpaque;
    }

    /// Returns the product divided by 255, rounded to nearest.
    static std::uint16_t product(std::uint8_t one, std::uint8_t other) {
        const auto raised = static_cast<std::uint16_t>(one * other + 128);
        return static_cast<std::uint16_t>(static_cast<std::uint16_t>(raised + (raised >> 8)) >> 8);
    }

    std::vector<Lanes> mSums;
    std::vector<std::uint32_t> mWeights;
};

/** The factors that turn sums of pixels into means. */
class Shares {
public:
    /// Computes the factors for sums over `rows` rows.
    explicit Shares(std::uint32_t rows) {
        for (std::uint32_t count = 1; count < mShares.size(); ++count) {
            mShares[count] = kWhole / (rows * count);
        }
    }

    /// Returns the means of two channels of a sum over `columns` columns. Takes the channels from
    /// bits 0 to 15 and 32 to 47, and leaves their means in bits 24 to 31 and 56 to 63.
    Lanes mean(Lanes sum, std::uint32_t columns) const {
        constexpr Lanes kTwo = 0x0000FFFF0000FFFFU;
        constexpr Lanes kHalves = 0x0080000000800000U;
        return (sum & kTwo) * mShares[columns] + kHalves;
    }

private:
    static constexpr std::uint32_t kWhole = 1U << 24U;

    std::array<std::uint32_t, Span::kMost + 1> mShares{};
};

/** Scales a part of a picture down to the pixels shown. */
class Shrinker {
public:
    Shrinker(const World& world, const PreviewView& view)
        : mWorld(world),
          mView(view),
          mColumns(SpansOf(0, view.width, view.shownWidth)),
          mRows(SpansOf(view.y, view.height, view.shownHeight)) {}

    std::vector<std::uint8_t> pixels() const {
        constexpr std::size_t kRowsAtATime = 32;
        std::vector<std::uint8_t> pixels(mColumns.size() * mRows.size() * kChannels);
        const tbb::blocked_range<std::size_t> all(0, mRows.size(), kRowsAtATime);
        tbb::parallel_for(all, [&](const tbb::blocked_range<std::size_t>& range) {
            RowSums sums(static_cast<std::size_t>(mView.width));
            for (std::size_t y = range.begin(); y < range.end(); ++y) {
                gather(mRows[y], sums);
                write(y, sums, &pixels[y * mColumns.size() * kChannels]);
            }
        });
        return pixels;
    }

private:
    void gather(const Span& rows, RowSums& sums) const {
        sums.clear();
        for (A_long row = rows.begin; row < rows.end; row += rows.step) {
            sums.add(mWorld.row<PF_Pixel8>(row).subspan(static_cast<std::size_t>(mView.x),
                                                        static_cast<std::size_t>(mView.width)));
        }
    }

    void write(std::size_t y, const RowSums& sums, std::uint8_t* to) const {
        constexpr std::uint32_t kLower = 24;
        constexpr std::uint32_t kUpper = 56;
        const Shares shares(mRows[y].count);
        for (std::size_t x = 0; x < mColumns.size(); ++x) {
            const Lanes sum = sums.of(mColumns[x]);
            const Lanes alphaAndGreen = shares.mean(sum, mColumns[x].count);
            const Lanes redAndBlue = shares.mean(sum >> 16U, mColumns[x].count);
            const std::uint32_t alpha = (alphaAndGreen >> kLower) & kOpaque;
            const std::uint32_t behind = alpha == kOpaque ? 0 : behindAt(x, y, alpha);
            for (const Lanes mean :
                 {redAndBlue >> kLower, alphaAndGreen >> kUpper, redAndBlue >> kUpper}) {
                const auto colour = static_cast<std::uint32_t>(mean & kOpaque);
                *to++ = static_cast<std::uint8_t>(std::min(colour + behind, kOpaque));
            }
        }
    }

    /// Returns what the ground adds to a pixel's channel if the pixel has `alpha`.
    std::uint32_t behindAt(std::size_t x, std::size_t y, std::uint32_t alpha) const {
        return (kOpaque - alpha) *
               GroundAt(mView.ground, static_cast<A_long>(x), static_cast<A_long>(y)) / kOpaque;
    }

    const World& mWorld;
    const PreviewView& mView;
    std::vector<Span> mColumns;
    std::vector<Span> mRows;
};

void Check(const World& world, const PreviewView& view) {
    const bool isWithin = view.x >= 0 && view.y >= 0 && view.width >= 1 && view.height >= 1 &&
                          view.width <= world.width() - view.x &&
                          view.height <= world.height() - view.y;
    const bool isShrunk = view.shownWidth >= 1 && view.shownWidth <= view.width &&
                          view.shownHeight >= 1 && view.shownHeight <= view.height;
    if (world.depth() != Depth::Bits8 || !isWithin || !isShrunk) {
        throw Error(fmt::format("the view is not within the {} x {} pixels of the picture",
                                world.width(), world.height()));
    }
}

} // namespace

Ground ParseGround(const std::string& text) {
    static constexpr std::array<std::string_view, 3> kNames{"checker", "black", "white"};
    const auto* const found = std::ranges::find(kNames, text);
    if (found == kNames.end()) {
        throw Error(fmt::format("the ground is checker, black or white, not '{}'", text));
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

std::vector<std::uint8_t> PixelsOf(const World& world, const PreviewView& view) {
    Check(world, view);
    return Shrinker(world, view).pixels();
}

} // namespace Kerovane::Host
