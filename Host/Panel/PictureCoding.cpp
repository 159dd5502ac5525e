#include "Host/Panel/PictureCoding.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
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

/// Premultiplied, summed over some pixels.
struct PixelSum {
    std::uint64_t alpha = 0;
    std::uint64_t red = 0;
    std::uint64_t green = 0;
    std::uint64_t blue = 0;

    void add(const PF_Pixel8& pixel) {
        const std::uint32_t weight = pixel.alpha;
        alpha += weight;
        red += pixel.red * weight;
        green += pixel.green * weight;
        blue += pixel.blue * weight;
    }
};

/// Where the pixels shown begin in the part, one more than there are.
std::vector<A_long> Edges(A_long start, A_long size, A_long shown) {
    std::vector<A_long> edges;
    for (A_long i = 0; i <= shown; ++i) {
        edges.push_back(start + static_cast<A_long>(std::int64_t{i} * size / shown));
    }
    return edges;
}

/// The part over its ground, averaged where it is shown smaller.
std::vector<std::uint8_t> Shrink(const World& world, const PreviewView& view) {
    const auto width = static_cast<std::size_t>(view.shownWidth);
    const std::vector<A_long> columns = Edges(view.x, view.width, view.shownWidth);
    const std::vector<A_long> rows = Edges(view.y, view.height, view.shownHeight);
    std::vector<std::uint8_t> pixels(width * static_cast<std::size_t>(view.shownHeight) *
                                     kChannels);
    std::vector<PixelSum> sums(width);
    std::uint8_t* to = pixels.data();
    for (A_long y = 0; y < view.shownHeight; ++y) {
        const A_long top = rows[static_cast<std::size_t>(y)];
        const A_long bottom = rows[static_cast<std::size_t>(y) + 1];
        std::ranges::fill(sums, PixelSum());
        for (A_long row = top; row < bottom; ++row) {
            const PF_Pixel8* const from = world.row<PF_Pixel8>(row).data();
            for (std::size_t x = 0; x < width; ++x) {
                for (A_long column = columns[x]; column < columns[x + 1]; ++column) {
                    sums[x].add(from[column]);
                }
            }
        }
        for (std::size_t x = 0; x < width; ++x) {
            const PixelSum& sum = sums[x];
            const auto count = static_cast<std::uint64_t>(bottom - top) *
                               static_cast<std::uint64_t>(columns[x + 1] - columns[x]);
            const std::uint64_t whole = count * kOpaque;
            const std::uint64_t behind =
                (whole - sum.alpha) * GroundAt(view.ground, static_cast<A_long>(x), y);
            for (const std::uint64_t colour : {sum.red, sum.green, sum.blue}) {
                *to++ = static_cast<std::uint8_t>((colour + behind + whole / 2) / whole);
            }
        }
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

std::string EncodePreview(const World& world, const PreviewView& view) {
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

std::string EncodeStill(const World& world, const Picture& origin, bool canLeaveHoles) {
    PictureForm form = origin.form;
    form.hasAlpha = form.hasAlpha || canLeaveHoles;
    MemoryFile file;
    EncodePicture("still.png", world, origin.origin, form, nullptr, file);
    return ContentOf(file);
}

} // namespace Kerovane::Host
