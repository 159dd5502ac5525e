// Measures the memory that a frame takes beyond the host's layers. Writes JSON to standard output.

#include "Benchmarks/BenchmarkPicture.h"
#include "Benchmarks/FrameMemory/AllocationMeter.h"
#include "Benchmarks/Names.h"
#include "Host/Frames/FrameRenderer.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <iostream>

namespace Kerovane::Benchmarks {

namespace {

nlohmann::json Measure(Host::FrameRenderer& renderer, Host::Depth depth) {
    constexpr A_long kWidth = 1920;
    constexpr A_long kHeight = 1080;
    const Host::World input = BenchmarkPicture(depth, kWidth, kHeight);
    Host::World output(depth, kWidth, kHeight);
    const std::size_t peak = PeakAllocatedBytes(TESSELUNE_MODULE, [&] {
        renderer.render({}, {}, Host::ViewOf(input), Host::ViewOf(output));
    });
    const double frame = static_cast<double>(kWidth) * kHeight * Host::BytesPerPixel(depth);
    return {{"bits", static_cast<int>(depth)}, {"frames", static_cast<double>(peak) / frame}};
}

} // namespace

} // namespace Kerovane::Benchmarks

int main() {
    using namespace Kerovane;
    try {
        Host::FrameRenderer renderer(TESSELUNE_MODULE);
        nlohmann::json rows = nlohmann::json::array();
        for (const Host::Depth depth : Benchmarks::kDepths) {
            rows.push_back(Benchmarks::Measure(renderer, depth));
        }
        std::cout << rows.dump(1) << '\n';
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "FrameMemory: " << error.what() << '\n';
        return 2;
    }
}
