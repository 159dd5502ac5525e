// Frames through the real module in one session, as a careless host might request them. The effect
// stays loaded from input to input, as in a host.
#include "Fuzz/CarelessHost.h"
#include "Fuzz/FuzzedFrame.h"
#include "Fuzz/Oracle.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Fuzz {

namespace {

using Host::World;

/// Fills output layers before rendering, so that the bytes that the effect wrote can be told from
/// the others.
constexpr std::byte kUntouched{0xa5};

bool IsUntouched(std::span<const std::byte> bytes) {
    return std::ranges::all_of(bytes, [](std::byte byte) { return byte == kUntouched; });
}

/// Returns whether all bytes of `output` outside the area that it shares with `input` are
/// unchanged.
bool IsUntouchedOutside(const World& output, const World& input) {
    const auto rowBytes = static_cast<std::size_t>(output.rowBytes());
    const auto width = static_cast<std::size_t>(std::min(input.width(), output.width()));
    const A_long height = std::min(input.height(), output.height());
    const std::size_t written =
        width * static_cast<std::size_t>(Host::BytesPerPixel(output.depth()));
    for (A_long y = 0; y < output.height(); ++y) {
        const auto row = output.bytes().subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
        if (!IsUntouched(row.subspan(y < height ? written : 0))) {
            return false;
        }
    }
    return true;
}

/// Renders into a new layer and checks what must hold for every frame.
World Render(CarelessHost& host, const FuzzedFrame& frame) {
    const World input = frame.input();
    const std::vector<std::byte> before(input.bytes().begin(), input.bytes().end());
    World output = frame.outputLayer.make(frame.depth);
    std::ranges::fill(output.bytes(), kUntouched);
    const Host::LiveCounts counts = host.liveCounts();

    Expect(host.render(frame, input, output) == PF_Err_NONE, "every frame is rendered");

    Expect(host.liveCounts() == counts, "a frame gives back what it takes of the host's");
    Expect(std::ranges::equal(input.bytes(), before), "the input is only read");
    if (frame.outputLayer.isStraight()) {
        Expect(IsUntouchedOutside(output, input), "only the frame's pixels are written");
    }
    return output;
}

/// Returns whether the frame's angle folds to exactly 360 degrees in single precision. Such an
/// angle is in no quadrant, so the transition's sweep starts at the same corner as in the previous
/// frame.
bool DependsOnEarlierFrames(const FuzzedFrame& frame) {
    constexpr std::size_t kDirection = 12;
    const auto degrees = static_cast<float>(frame.values[kDirection].whole * 0x1p-16);
    return degrees < 0 && std::fmod(degrees, 360.0F) + 360.0F >= 360.0F;
}

void Restart(CarelessHost& host) {
    Expect(host.call(PF_Cmd_GLOBAL_SETDOWN) == PF_Err_NONE, "the effect can be set down");
    Expect(host.liveCounts() == Host::LiveCounts{}, "nothing is left after a set-down");
    Expect(host.call(PF_Cmd_GLOBAL_SETUP) == PF_Err_NONE, "the effect can be set up again");
}

/// Sends a command that a host may send between two frames.
void SendCommand(CarelessHost& host, FuzzedDataProvider& data) {
    constexpr std::uint8_t kRestart = 0xff;
    const auto command = data.ConsumeIntegral<std::uint8_t>();
    if (command == kRestart) {
        Restart(host);
    } else if (command == PF_Cmd_ABOUT || command > PF_Cmd_RENDER) {
        Expect(host.call(command) == PF_Err_NONE, "other commands do nothing");
    }
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    static CarelessHost host;
    FuzzedDataProvider provider(data, size);
    const FuzzedFrame first(provider);
    const World picture = Render(host, first);
    constexpr int kMostFrames = 3;
    for (int frame = 0; frame < kMostFrames && provider.remaining_bytes() > 0; ++frame) {
        SendCommand(host, provider);
        Render(host, FuzzedFrame(provider));
    }
    if (!DependsOnEarlierFrames(first)) {
        Expect(std::ranges::equal(Render(host, first).bytes(), picture.bytes()),
               "a frame is the same whatever was rendered before it");
    }
    return 0;
}
