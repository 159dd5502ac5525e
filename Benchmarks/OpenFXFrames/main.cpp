// Times frames of 1920 x 1080 floats in turns: through the OpenFX module, and with the renderer
// alone on layers in the renderer's own pixel form. Prints what the module adds to a frame, in
// copies of the frame's bytes.
#include "Host/Frames/FrameRenderer.h"
#include "Platform/Memory/FreedMemory.h"
#include "Tests/Adapters/OpenFX/OpenFXHost.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {

using namespace Kerovane;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kRounds = 25;

double MillisecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double Median(std::vector<double> sample) {
    std::ranges::nth_element(sample, sample.begin() + std::ssize(sample) / 2);
    return sample[sample.size() / 2];
}

void Measure(const OpenFX::OpenFXHost& host, Host::FrameRenderer& renderer, Host::Renderer with) {
    OpenFX::TestEffect effect = host.described();
    effect.set("renderer", with == Host::Renderer::Software ? 2 : 1);
    effect.setProject(0, 0, kWidth, kHeight);
    OpenFX::Image source{.bounds = {0, 0, kWidth, kHeight}};
    source.make([](int x, int y) {
        return std::array{static_cast<float>(x) / kWidth, static_cast<float>(y) / kHeight, 0.5F,
                          1.0F};
    });
    OpenFX::Image output = source;
    output.make();
    effect.connect(source, output);

    Host::World in(Host::Depth::Float32, kWidth, kHeight);
    Host::World out(Host::Depth::Float32, kWidth, kHeight);
    std::memcpy(in.bytes().data(), source.bytes.data(), source.bytes.size());
    std::vector<std::byte> copy(source.bytes.size());

    std::vector<double> adapter;
    std::vector<double> bare;
    std::vector<double> copies;
    std::vector<double> added;
    for (int round = -2; round < kRounds; ++round) { // those below 0 warm up
        const double byAdapter = MillisecondsOf([&] { host.render(effect); });
        const double byRenderer =
            MillisecondsOf([&] { renderer.render({}, {}, ViewOf(in), ViewOf(out), with); });
        const double byCopy =
            MillisecondsOf([&] { std::memcpy(copy.data(), source.bytes.data(), copy.size()); });
        if (round >= 0) {
            adapter.push_back(byAdapter);
            bare.push_back(byRenderer);
            copies.push_back(byCopy);
            added.push_back((byAdapter - byRenderer) / byCopy);
        }
    }
    fmt::print("{}: OpenFX {:.2f} ms, the renderer alone {:.2f} ms, memcpy {:.2f} ms; the adapter "
               "adds {:.2f} memcpys\n",
               Host::NameOf(with), Median(adapter), Median(bare), Median(copies), Median(added));
}

} // namespace

int main() {
    try {
        Platform::KeepFreedMemory(); // otherwise page faults would hit either side by chance
        const OpenFX::OpenFXHost host;
        Host::FrameRenderer renderer{Host::EffectModules{TESSELUNE_MODULE, TESSELUNE_FLOAT_MODULE}};
        Measure(host, renderer, Host::Renderer::Software);
        Measure(host, renderer, Host::Renderer::OpenGL);
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "OpenFXFrames: {}\n", error.what());
        return 1;
    }
}
