// Frames drawn by the software renderer with out-of-range parameters, in all pixel forms. Each
// picture ends exactly where its memory does, so that the sanitizer sees any access beyond it.
#include "Fuzz/Oracle.h"
#include "Software/Mosaic.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Fuzz {

namespace {

using namespace Kerovane::Software;

MosaicParameters ParametersFrom(FuzzedDataProvider& data) {
    const auto number = [&data] { return data.ConsumeIntegral<std::int32_t>(); };
    return {.shape = data.ConsumeBool() ? Shape::Triangle : Shape::Square,
            .size = data.ConsumeBool() ? number() : data.ConsumeIntegralInRange(1, 40),
            .ratio = data.ConsumeBool() ? data.ConsumeFloatingPoint<double>()
                                        : data.ConsumeFloatingPointInRange(0.01, 10.0),
            .sizeRandom = number(),
            .sizeLevel = data.ConsumeBool() ? number() : data.ConsumeIntegralInRange(1, 5),
            .sizeRandomSeed = number(),
            .dissolve = number(),
            .dissolveRandomSeed = number(),
            .transition = static_cast<Transition>(data.ConsumeIntegralInRange(0, 2)),
            .transitionProgress = number(),
            .feather = number(),
            .direction = number(),
            .useAlpha = data.ConsumeBool(),
            .downsample = data.ConsumeIntegral<std::uint32_t>()};
}

/// A picture that ends exactly where its memory does.
struct Picture {
    Picture(FuzzedDataProvider& data, Host::Depth depth, std::ptrdiff_t width,
            std::ptrdiff_t height)
        : rowBytes(width * static_cast<int>(depth) / 2 + data.ConsumeIntegralInRange(0, 9)) {
        const bool isBottomUp = data.ConsumeBool();
        const std::ptrdiff_t lastRow = (height - 1) * rowBytes;
        bytes.resize(static_cast<std::size_t>(lastRow + width * static_cast<int>(depth) / 2));
        view = {.top = bytes.data() + (isBottomUp ? lastRow : 0),
                .rowBytes = isBottomUp ? -rowBytes : rowBytes,
                .width = width,
                .height = height,
                .depth = depth,
                .order = data.ConsumeBool() ? Host::ChannelOrder::Argb : Host::ChannelOrder::Rgba,
                .alpha = data.ConsumeBool() ? Host::Alpha::Straight : Host::Alpha::Premultiplied};
    }

    std::ptrdiff_t rowBytes;
    std::vector<std::byte> bytes;
    Host::PixelView view;
};

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace Kerovane;
    using namespace Kerovane::Fuzz;
    FuzzedDataProvider data(bytes, size);
    const MosaicParameters parameters = ParametersFrom(data);
    const auto depth =
        data.PickValueInArray({Host::Depth::Bits8, Host::Depth::Bits16, Host::Depth::Float32});
    const std::ptrdiff_t width = data.ConsumeIntegralInRange(1, 70);
    const std::ptrdiff_t height = data.ConsumeIntegralInRange(1, 50);
    Picture in(data, depth, width, height);
    Picture out(data, depth, width, height);
    for (std::byte& byte : in.bytes) {
        byte = static_cast<std::byte>(data.ConsumeIntegral<std::uint8_t>());
    }
    const Mosaic mosaic(parameters, width, height);
    mosaic.draw(in.view, out.view, 0, mosaic.bands());
    const std::vector<std::byte> whole = out.bytes;
    for (int band = mosaic.bands(); band-- > 0;) {
        mosaic.draw(in.view, out.view, band, band + 1);
    }
    Expect(out.bytes == whole, "a picture is the same in whatever bands it is drawn");
    return 0;
}
