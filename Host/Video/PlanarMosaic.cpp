#include "Host/Video/PlanarMosaic.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace Kerovane::Host {

namespace {

constexpr int kPlanes = 3;

/// The samples of one plane, whose sides are the frame's divided by 2 to the power of `shiftX` and
/// `shiftY`.
template <typename Sample>
struct Plane {
    Sample* samples;
    std::ptrdiff_t step; ///< from row to row, in samples
    std::ptrdiff_t width;
    std::ptrdiff_t height;
    int shiftX;
    int shiftY;

    Sample* row(std::ptrdiff_t y) const { return samples + y * step; }
};

template <typename Sample>
Plane<Sample> PlaneOf(const AVFrame& frame, int index) {
    const AVPixFmtDescriptor& format =
        *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const int shiftX = index > 0 ? format.log2_chroma_w : 0;
    const int shiftY = index > 0 ? format.log2_chroma_h : 0;
    return {.samples = reinterpret_cast<Sample*>(frame.data[index]),
            .step = frame.linesize[index] / std::ptrdiff_t{sizeof(Sample)},
            .width = AV_CEIL_RSHIFT(frame.width, shiftX),
            .height = AV_CEIL_RSHIFT(frame.height, shiftY),
            .shiftX = shiftX,
            .shiftY = shiftY};
}

/// Rounds a value that is not negative.
std::int32_t Nearest(float value) {
    const float raised = value + 0.5F; // truncation rounds this to nearest
    return static_cast<std::int32_t>(raised);
}

/// Two neighbouring samples on an axis, with the weight of the second one.
struct Neighbours {
    std::ptrdiff_t first;
    std::ptrdiff_t second;
    float share;

    /// `place` is on the frame's axis; `size` is the number of samples on the plane's axis.
    Neighbours(float place, int shift, std::ptrdiff_t size) {
        const float inPlane = (place + 0.5F) / static_cast<float>(1 << shift) - 0.5F;
        const float kept = std::clamp(inPlane, 0.0F, static_cast<float>(size - 1));
        first = static_cast<std::ptrdiff_t>(kept);
        second = std::min(first + 1, size - 1);
        share = kept - static_cast<float>(first);
    }
};

/// Interpolates between the four samples around a place.
template <typename Sample>
Sample SampleAt(const Plane<Sample>& plane, CellMap::Place place) {
    const Neighbours x(place.x, plane.shiftX, plane.width);
    const Neighbours y(place.y, plane.shiftY, plane.height);
    const auto along = [&x](const Sample* row) {
        return static_cast<float>(row[x.first]) * (1 - x.share) +
               static_cast<float>(row[x.second]) * x.share;
    };
    const float value =
        along(plane.row(y.first)) * (1 - y.share) + along(plane.row(y.second)) * y.share;
    return static_cast<Sample>(Nearest(value));
}

template <typename Sample>
std::vector<Sample> SamplesOf(const CellMap& map, const Plane<Sample>& plane) {
    std::vector<Sample> samples;
    samples.reserve(map.cells().size());
    for (const CellMap::Place& place : map.cells()) {
        samples.push_back(SampleAt(plane, place));
    }
    return samples;
}

/// Adds each pixel's sample, multiplied by `times`, to its column's sum. A column covers 2 to the
/// power of `shift` pixels.
template <typename Sample>
void AddRow(const std::vector<CellMap::Run>& runs, const std::vector<Sample>& samples, int shift,
            std::uint32_t times, std::uint32_t* sums) {
    std::int32_t x = 0;
    for (const auto& [end, cell] : runs) {
        const std::uint32_t sample = samples[cell] * times;
        const std::int32_t first = x >> shift;
        const std::int32_t last = (end - 1) >> shift;
        if (first == last) {
            sums[first] += sample * static_cast<std::uint32_t>(end - x);
        } else {
            sums[first] += sample * static_cast<std::uint32_t>(((first + 1) << shift) - x);
            for (std::int32_t column = first + 1; column < last; ++column) {
                sums[column] += sample << shift;
            }
            sums[last] += sample * static_cast<std::uint32_t>(end - (last << shift));
        }
        x = end;
    }
}

template <typename Sample>
void FillRow(const std::vector<CellMap::Run>& runs, const std::vector<Sample>& samples,
             Sample* row) {
    std::int32_t x = 0;
    for (const auto& [end, cell] : runs) {
        std::fill(row + x, row + end, samples[cell]);
        x = end;
    }
}

/// The frame's rows that one row of a plane covers, from `begin` up to but not including `end`.
struct FrameRows {
    std::ptrdiff_t begin;
    std::ptrdiff_t end;
};

/// Fills a row of a plane with the mean of the pixels that each sample covers.
template <typename Sample>
void MeanRow(const CellMap& map, FrameRows rows, const std::vector<Sample>& samples,
             const Plane<Sample>& plane, Sample* row) {
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(plane.width));
    const auto height = static_cast<std::uint32_t>(rows.end - rows.begin);
    if (map.firstAlike(rows.end - 1) <= rows.begin) {
        AddRow(map.runs(rows.begin), samples, plane.shiftX, height, sums.data());
    } else {
        for (std::ptrdiff_t y = rows.begin; y < rows.end; ++y) {
            AddRow(map.runs(y), samples, plane.shiftX, 1, sums.data());
        }
    }
    const auto divide = [&](std::ptrdiff_t begin, std::ptrdiff_t end, std::ptrdiff_t columns) {
        const std::uint32_t count = height * static_cast<std::uint32_t>(columns);
        // Exact enough, because sums are below 2^24.
        const float share = 1 / static_cast<float>(count);
        for (std::ptrdiff_t x = begin; x < end; ++x) {
            const auto sum = static_cast<std::int32_t>(sums[static_cast<std::size_t>(x)]);
            row[x] = static_cast<Sample>(Nearest(static_cast<float>(sum) * share));
        }
    };
    const std::ptrdiff_t last = plane.width - 1; // the last sample may cover fewer pixels
    divide(0, last, std::ptrdiff_t{1} << plane.shiftX);
    divide(last, plane.width, map.width() - (last << plane.shiftX));
}

template <typename Sample>
void DrawPlane(const CellMap& map, const Plane<Sample>& in, const Plane<Sample>& out) {
    const std::vector<Sample> samples = SamplesOf(map, in);
    for (std::ptrdiff_t y = 0; y < out.height; ++y) {
        const FrameRows rows{y << out.shiftY, std::min((y + 1) << out.shiftY, map.height())};
        const bool isLikeAbove = y > 0 && map.firstAlike(rows.end - 1) <= (y - 1) << out.shiftY;
        if (isLikeAbove) {
            std::copy_n(out.row(y - 1), out.width, out.row(y));
        } else if (out.shiftX == 0 && out.shiftY == 0) {
            FillRow(map.runs(y), samples, out.row(y));
        } else {
            MeanRow(map, rows, samples, out, out.row(y));
        }
    }
}

template <typename Sample>
void DrawPlanes(const CellMap& map, const AVFrame& in, const AVFrame& out) {
    for (int plane = 0; plane < kPlanes; ++plane) {
        DrawPlane(map, PlaneOf<Sample>(in, plane), PlaneOf<Sample>(out, plane));
    }
}

} // namespace

bool PlanarMosaic::canDraw(AVPixelFormat format) {
    const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
    constexpr std::uint64_t kOthers = AV_PIX_FMT_FLAG_BE | AV_PIX_FMT_FLAG_PAL |
                                      AV_PIX_FMT_FLAG_BITSTREAM | AV_PIX_FMT_FLAG_HWACCEL |
                                      AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_ALPHA |
                                      AV_PIX_FMT_FLAG_FLOAT;
    constexpr int kMostBits = 16;
    return descriptor != nullptr && (descriptor->flags & kOthers) == 0 &&
           (descriptor->flags & AV_PIX_FMT_FLAG_PLANAR) != 0 &&
           descriptor->nb_components == kPlanes && av_pix_fmt_count_planes(format) == kPlanes &&
           descriptor->comp[0].depth <= kMostBits && descriptor->comp[0].shift == 0;
}

PlanarMosaic::PlanarMosaic(CellMap map, const PixelCoding& coding)
    : mMap(std::move(map)),
      mCoding(coding),
      mFrames(coding.format, static_cast<int>(mMap.width()), static_cast<int>(mMap.height())) {}

AvFrame PlanarMosaic::draw(const AVFrame& in) {
    AvFrame out = mFrames.take();
    if (BitsOf(mCoding.format) > 8) {
        DrawPlanes<std::uint16_t>(mMap, in, *out);
    } else {
        DrawPlanes<std::uint8_t>(mMap, in, *out);
    }
    SetTags(*out, mCoding.color);
    return out;
}

} // namespace Kerovane::Host
