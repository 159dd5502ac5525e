// Times a frame of the headless host from file to file, and each part of that work.

#include "Benchmarks/BenchmarkPicture.h"
#include "Benchmarks/Names.h"
#include "Benchmarks/Suites.h"
#include "Host/Frames/FrameRenderer.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Shots/ShotRenderer.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace Kerovane::Benchmarks {

namespace {

constexpr A_long kWidth = 1920;
constexpr A_long kHeight = 1080;

/// A picture file of the depth in a temporary folder, deleted with the object.
class PictureFiles {
public:
    explicit PictureFiles(Host::Depth depth)
        : mFolder(std::filesystem::temp_directory_path() /
                  ("tesselune-benchmark-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(mFolder);
        const auto type =
            depth == Host::Depth::Bits8 ? OIIO::TypeDesc::UINT8 : OIIO::TypeDesc::UINT16;
        Host::PictureWriter(input()).write(Host::PictureOf(
            BenchmarkPicture(depth, kWidth, kHeight), OIIO::ImageSpec(kWidth, kHeight, 4, type)));
    }

    ~PictureFiles() {
        std::error_code ignored;
        std::filesystem::remove_all(mFolder, ignored);
    }

    PictureFiles(const PictureFiles&) = delete;
    PictureFiles& operator=(const PictureFiles&) = delete;

    std::filesystem::path input() const { return mFolder / "input.png"; }
    std::filesystem::path output() const { return mFolder / "output.png"; }

private:
    std::filesystem::path mFolder;
};

void Render(Host::FrameRenderer& renderer, const Host::World& input, Host::World& output) {
    renderer.render({}, {}, ViewOf(input), ViewOf(output));
}

void RenderInPlace(Host::FrameRenderer& renderer, Host::Picture& picture) {
    Host::World& world = picture.first().world;
    Host::World output(world.depth(), world.width(), world.height());
    Render(renderer, world, output);
    world = std::move(output);
}

void Read(benchmark::State& state, Host::Depth depth) {
    const PictureFiles files(depth);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(Host::ReadPicture(files.input()));
    }
}

/// Times writing a rendered picture, which compresses better than the input.
void Write(benchmark::State& state, Host::Depth depth) {
    const PictureFiles files(depth);
    Host::Picture picture = Host::ReadPicture(files.input());
    Host::FrameRenderer renderer(Host::WithFloatModule(TESSELUNE_MODULE));
    RenderInPlace(renderer, picture);
    const Host::PictureWriter writer(files.output());
    for ([[maybe_unused]] auto _ : state) {
        writer.write(picture);
    }
}

void RenderPicture(benchmark::State& state, Host::Depth depth) {
    const Host::World input = BenchmarkPicture(depth, kWidth, kHeight);
    Host::World output(depth, kWidth, kHeight);
    Host::FrameRenderer renderer(Host::WithFloatModule(TESSELUNE_MODULE));
    Render(renderer, input, output);
    for ([[maybe_unused]] auto _ : state) {
        Render(renderer, input, output);
    }
}

void FileToFile(benchmark::State& state, Host::Depth depth) {
    const PictureFiles files(depth);
    Host::FrameRenderer renderer(Host::WithFloatModule(TESSELUNE_MODULE));
    const Host::PictureWriter writer(files.output());
    const auto renderFile = [&] {
        Host::Picture picture = Host::ReadPicture(files.input());
        RenderInPlace(renderer, picture);
        writer.write(picture);
    };
    renderFile(); // builds the GL programs, so that their build is not timed
    for ([[maybe_unused]] auto _ : state) {
        renderFile();
    }
}

/// Times a shot rendered as the command does, with files and stages overlapping. The times are per
/// frame.
void RenderShot(benchmark::State& state, Host::Depth depth) {
    constexpr int kFrames = 60;
    const PictureFiles files(depth);
    std::vector<Host::ShotFrame> frames(kFrames,
                                        {.input = files.input(), .output = files.output()});
    for (int number = 0; number < kFrames; ++number) {
        frames[static_cast<std::size_t>(number)].output.replace_filename(
            "output." + std::to_string(number) + ".png");
    }
    const std::size_t threads = std::max(std::thread::hardware_concurrency(), 1U);
    Host::ShotSetting setting;
    setting.framesInFlight = threads + 1;
    Host::FrameRenderer renderer(Host::WithFloatModule(TESSELUNE_MODULE));
    const Host::ShotDrawing drawing{.renderer = renderer, .values = {}, .rate = {}};
    const auto ended = [&state](const auto&, const Host::FrameReport& report) {
        if (report.ending != Host::FrameEnding::Rendered) {
            state.SkipWithError(report.reason.c_str());
        }
    };
    const std::atomic<bool> stop = false;
    while (state.KeepRunningBatch(kFrames)) {
        Host::RenderShot(frames, setting, drawing, ended, stop);
    }
}

} // namespace

void RegisterPictureBenchmarks() {
    for (const Host::Depth depth : {Host::Depth::Bits8, Host::Depth::Bits16}) {
        const auto add = [depth](const std::string& name, auto function) {
            benchmark::RegisterBenchmark(("PNG/" + name + '/' + BitsName(depth)).c_str(), function,
                                         depth)
                ->MeasureProcessCPUTime()
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
        };
        add("read", Read);
        add("write", Write);
        add("render", RenderPicture);
        add("file to file", FileToFile);
        add("shot", RenderShot);
    }
}

} // namespace Kerovane::Benchmarks
