#include "Host/Frames/SoftwareFrame.h"

#include "Host/Frames/WorldView.h"
#include "Host/Pixels/ConvertPixels.h"
#include "Host/Text/Error.h"
#include "Software/DrawMosaic.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Kerovane::Host {

namespace {

/// The disk ids of the effect's parameters.
enum Id : A_long {
    kShapeType = 1,
    kSize,
    kRatio,
    kSizeRandom,
    kSizeLevel,
    kSizeRandomSeed,
    kDissolve,
    kDissolveRandomSeed,
    kTransitionType,
    kTransitionProgress,
    kFeather,
    kDirection,
    kUseAlpha = 15
};

/// Returns the range of memory from the first row's start to the last row's end, in address order.
std::pair<const std::byte*, const std::byte*> ExtentOf(const ConstPixelView& view) {
    const auto [first, last] = std::minmax({view.row(0), view.row(view.height - 1)});
    return {first, last + view.width * BytesPerPixel(view.depth)};
}

bool ShareMemory(const ConstPixelView& one, const ConstPixelView& other) {
    if (one.width <= 0 || one.height <= 0) {
        return false;
    }
    const auto [begin, end] = ExtentOf(one);
    const auto [otherBegin, otherEnd] = ExtentOf(other);
    return begin < otherEnd && otherBegin < end;
}

} // namespace

Software::MosaicParameters MosaicParametersOf(const std::vector<Parameter>& parameters,
                                              const ParameterValues& values, const Frame& frame) {
    const auto record = [&](Id id) {
        const Parameter* const parameter = FindParameter(parameters, id);
        if (parameter == nullptr) {
            throw Error("the software renderer draws the effect Tesselune alone");
        }
        const double value = values.at(id, frame.time).value_or(parameter->defaultValue);
        return DefinitionWithValue(*parameter, value).u;
    };
    return {.shape = static_cast<Software::Shape>(record(kShapeType).pd.value - 1),
            .size = record(kSize).sd.value,
            .ratio = record(kRatio).fs_d.value,
            .sizeRandom = record(kSizeRandom).fd.value,
            .sizeLevel = record(kSizeLevel).sd.value,
            .sizeRandomSeed = record(kSizeRandomSeed).sd.value,
            .dissolve = record(kDissolve).fd.value,
            .dissolveRandomSeed = record(kDissolveRandomSeed).sd.value,
            .transition = static_cast<Software::Transition>(record(kTransitionType).pd.value - 1),
            .transitionProgress = record(kTransitionProgress).fd.value,
            .feather = record(kFeather).sd.value,
            .direction = record(kDirection).ad.value,
            .useAlpha = record(kUseAlpha).bd.value != 0,
            .downsample = static_cast<std::uint32_t>(frame.downsample)};
}

void DrawSoftwareFrame(const Software::MosaicParameters& parameters, const ConstPixelView& in,
                       const PixelView& out, int threads) {
    if (!HaveSameShape(in, out)) {
        throw Error("the output differs from the input in depth or size");
    }
    if (ShareMemory(in, out)) {
        World copy(in.depth, in.width, in.height);
        ConvertPixels(in, ViewOf(copy));
        Software::DrawMosaic(parameters, ViewOf(copy), out, threads);
    } else {
        Software::DrawMosaic(parameters, in, out, threads);
    }
}

} // namespace Kerovane::Host
