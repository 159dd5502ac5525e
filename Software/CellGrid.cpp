#include "Software/CellGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Kerovane::Software {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Returns the side of a cell in pixels; 1, the finest cell, if `pixels` is not finite or not above
/// 0. Sides larger than any picture are limited, so that values computed from them stay finite.
float Side(float pixels) {
    constexpr float kLargest = 0x1p80F;
    return std::isfinite(pixels) && pixels > 0 ? std::min(pixels, kLargest) : 1;
}

/// Returns the smallest float whose quotient by `divisor` is `quotient` or more. Both must be above
/// 0.
float LeastDividend(float quotient, float divisor) {
    float least = quotient * divisor;
    while (least / divisor < quotient) {
        least = std::nextafter(least, kInfinity);
    }
    for (float below = std::nextafter(least, 0.0F); below > 0 && below / divisor >= quotient;) {
        least = below;
        below = std::nextafter(below, 0.0F);
    }
    return least;
}

/// Returns where cells with that side begin, up to the cell that contains `last`, followed by
/// infinity.
std::vector<float> Edges(float side, float last) {
    const auto count = static_cast<std::size_t>(last / side) + 1;
    std::vector<float> edges(count + 1, kInfinity);
    edges[0] = 0;
    for (std::size_t index = 1; index < count; ++index) {
        edges[index] = LeastDividend(static_cast<float>(index), side);
    }
    return edges;
}

} // namespace

CellGrid::CellGrid(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height)
    : mShape(parameters.shape), mRungs(std::clamp(parameters.sizeLevel, 0, kMostRungs)) {
    const float size =
        std::trunc(static_cast<float>(parameters.size) / static_cast<float>(parameters.downsample));
    const float normalWidth = Side(static_cast<float>(parameters.ratio) * size);
    const float normalHeight = Side(size);
    for (int rung = 0; rung <= kMostRungs; ++rung) {
        mWidths[static_cast<std::size_t>(rung)] = std::ldexp(normalWidth, rung);
        mHeights[static_cast<std::size_t>(rung)] = std::ldexp(normalHeight, rung);
    }
    mShear = mShape == Shape::Triangle ? normalWidth * 0.5F / normalHeight : 0;

    const auto lastY = static_cast<float>(height - 1);
    if (!isFinerThanPixels()) {
        mColumnEdges = Edges(cellWidth(0), static_cast<float>(width - 1) + shift(height - 1));
    }
    for (const float edge : Edges(cellHeight(0), lastY)) {
        mRowEdges.push_back(edge <= lastY ? static_cast<std::ptrdiff_t>(std::ceil(edge)) : height);
    }
}

float CellGrid::columnAt(float x) const {
    return std::floor(x / cellWidth(0));
}

Location CellGrid::centre(int rung, float column, float row) const {
    return {left(rung, column) + cellWidth(rung) * 0.5F, top(rung, row) + cellHeight(rung) * 0.5F};
}

Location CellGrid::lowerPoint(int rung, float column, float row) const {
    return inPicture(
        {left(rung, column) + cellWidth(rung) * 0.32F, top(rung, row) + cellHeight(rung) * 0.625F});
}

Location CellGrid::upperPoint(int rung, float column, float row) const {
    return inPicture({left(rung, column) + cellWidth(rung) * 0.675F,
                      top(rung, row) + cellHeight(rung) * 0.375F});
}

Location CellGrid::inPicture(Location sheared) const {
    return {sheared.x - mShear * sheared.y, sheared.y};
}

bool CellGrid::isUpper(float x, float y) const {
    return !(y > 0) || x / y >= cellWidth(0) / cellHeight(0);
}

float CellGrid::cut(float y) const {
    return y > 0 ? LeastDividend(cellWidth(0) / cellHeight(0), y) : -kInfinity;
}

} // namespace Kerovane::Software
