#include "Host/Sheet/ContactSheet.h"

#include "Host/Pictures/PixelConversion.h"
#include "Host/Text/Error.h"

#include <OpenImageIO/imagebufalgo.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

namespace {

using OIIO::ImageBuf;
using OIIO::ImageSpec;
using OIIO::ROI;
using OIIO::TypeDesc;
namespace Algo = OIIO::ImageBufAlgo;

constexpr int kMargin = 16;       ///< around the page and between columns and rows, in pixels
constexpr int kAboveLabel = 8;    ///< between a picture and its label, in pixels
constexpr int kCheckerSquare = 8; ///< side of a square of the checkerboard, in pixels
constexpr int kChannels = 4;
constexpr std::array<float, kChannels> kPaper{0.12F, 0.12F, 0.12F, 1};
constexpr std::array<float, kChannels> kDarkSquare{0.20F, 0.20F, 0.20F, 1};
constexpr std::array<float, kChannels> kLightSquare{0.26F, 0.26F, 0.26F, 1};

/// Returns the number of cells in the longest row.
std::size_t Columns(const std::vector<std::vector<Label>>& rows) {
    std::size_t columns = 0;
    for (const std::vector<Label>& row : rows) {
        columns = std::max(columns, row.size());
    }
    return columns;
}

int WidestLine(const Font& font, const std::vector<std::vector<Label>>& rows) {
    int width = 0;
    for (const std::vector<Label>& row : rows) {
        for (const Label& label : row) {
            for (const std::string& line : label) {
                width = std::max(width, font.widthOf(line));
            }
        }
    }
    return width;
}

int LabelHeight(const std::vector<Label>& row) {
    std::size_t lines = 0;
    for (const Label& label : row) {
        lines = std::max(lines, label.size());
    }
    return kAboveLabel + static_cast<int>(lines) * Font::kLineHeight;
}

/// Returns the length of a side of the page as an int. Throws Error if it is more than
/// World::kMaxSide.
int PageSide(std::int64_t side) {
    if (side > World::kMaxSide) {
        throw Error(fmt::format("the sheet would be {} pixels wide or high, more than {}", side,
                                World::kMaxSide));
    }
    return static_cast<int>(side);
}

ImageSpec FloatSpec(int width, int height) {
    ImageSpec spec(width, height, kChannels, TypeDesc::FLOAT);
    spec.alpha_channel = kChannels - 1;
    return spec;
}

std::size_t ValuesOf(const ImageSpec& spec) {
    return spec.image_pixels() * static_cast<std::size_t>(spec.nchannels);
}

template <typename Pixel>
void ReadPixels(const World& world, float* rgba) {
    for (A_long y = 0; y < world.height(); ++y) {
        WriteRow(world.row<Pixel>(y), rgba);
        rgba += std::ptrdiff_t{world.width()} * kChannels;
    }
}

std::vector<float> StraightPixels(const World& world) {
    std::vector<float> pixels(ValuesOf(FloatSpec(world.width(), world.height())));
    withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        ReadPixels<Pixel>(world, pixels.data());
    });
    return pixels;
}

template <typename Pixel>
void FillWorld(const float* rgba, World& world) {
    constexpr ChannelPlaces kOpaque{.red = 0, .green = 1, .blue = 2};
    for (A_long y = 0; y < world.height(); ++y) {
        ReadRow(rgba, kChannels, kOpaque, world.row<Pixel>(y));
        rgba += std::ptrdiff_t{world.width()} * kChannels;
    }
}

/// Returns `world` scaled down to the given size, with premultiplied alpha.
ImageBuf Thumbnail(const World& world, const ROI& size) {
    std::vector<float> pixels = StraightPixels(world);
    ImageBuf picture(FloatSpec(world.width(), world.height()), pixels.data());
    Algo::premult(picture, picture);
    // A filter without negative weights keeps cells in their own colours up to their borders.
    return Algo::resize(picture, "triangle", 0, size);
}

} // namespace

ContactSheet::ContactSheet(std::vector<std::vector<Label>> labels, int pictureWidth,
                           int pictureHeight)
    : mLabels(std::move(labels)),
      mPictureWidth(pictureWidth),
      mPictureHeight(pictureHeight),
      mColumnWidth(std::max(pictureWidth, WidestLine(mFont, mLabels)) + kMargin) {
    std::int64_t height = kMargin;
    for (const std::vector<Label>& row : mLabels) {
        mRowTops.push_back(PageSide(height));
        height += pictureHeight + LabelHeight(row) + kMargin;
    }
    const auto columns = static_cast<std::int64_t>(Columns(mLabels));
    const ImageSpec spec = FloatSpec(PageSide(kMargin + columns * mColumnWidth), PageSide(height));
    mPixels.resize(ValuesOf(spec));
    mPage = ImageBuf(spec, mPixels.data());
    Algo::fill(mPage, kPaper);
}

void ContactSheet::place(std::size_t row, std::size_t column, const World& picture) {
    const int left = kMargin + static_cast<int>(column) * mColumnWidth;
    const int top = mRowTops[row];
    const ROI size(0, mPictureWidth, 0, mPictureHeight, 0, 1, 0, kChannels);
    const ImageBuf squares =
        Algo::checker(kCheckerSquare, kCheckerSquare, 1, kDarkSquare, kLightSquare, 0, 0, 0, size);
    Algo::paste(mPage, left, top, 0, 0, Algo::over(Thumbnail(picture, size), squares));
    int line = top + mPictureHeight + kAboveLabel;
    for (const std::string& text : mLabels[row][column]) {
        mFont.draw(mPage, left, line, text);
        line += Font::kLineHeight;
    }
}

World ContactSheet::world(Depth depth) const {
    World world(depth, mPage.spec().width, mPage.spec().height);
    withPixelType(depth, [&]<typename Pixel>(std::type_identity<Pixel>) {
        FillWorld<Pixel>(mPixels.data(), world);
    });
    return world;
}

} // namespace Kerovane::Host
