// Times a frame in ffmpeg: with this project's filter, ffmpeg's pixelize and frei0r's pixeliz0r,
// beside the bare render command on the same frame. Each round runs each of the four once, so that
// other load on the machine affects all alike. Prints the medians of the rounds.

#include "Host/Frames/SilentThread.h"
#include "Host/Frames/WorldView.h"
#include "Host/Pixels/ConvertPixels.h"
#include "Host/Session/Effect.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Kerovane;

constexpr A_long kWidth = 1920;
constexpr A_long kHeight = 1080;
constexpr int kRounds = 25;
constexpr int kFrames = 11;
constexpr int kWarmUp = 2; ///< first frames, left out of the median

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

void Run(const std::string& line) {
    if (std::system(line.c_str()) != 0) { // NOLINT(cert-env33-c): the shell redirects the output
        throw std::runtime_error("failed: " + line);
    }
}

class Measurement {
public:
    Measurement() {
        setenv("FREI0R_PATH", FREI0R_FOLDER ":/usr/lib/frei0r-1", 1);
        Run(fmt::format("{} -frames:v 1 -pix_fmt rgba -f rawvideo {}", source("error"),
                        path("frame")));
    }

    /// Returns the milliseconds per RGBA frame in an ffmpeg filter, measured by ffmpeg itself.
    double inFfmpeg(const std::string& filter) const {
        Run(fmt::format("{} -frames:v {} -vf format=rgba,bench=start,{},bench=stop -f null - 2>{}",
                        source("info"), kFrames, filter, path("log")));
        std::vector<double> times;
        std::istringstream log(mFolder.contentOf("log"));
        for (std::string line; std::getline(log, line);) {
            const std::size_t found = line.find("] t:");
            if (found != std::string::npos) {
                times.push_back(1000 * std::stod(line.substr(found + 4)));
            }
        }
        if (times.size() != kFrames) {
            throw std::runtime_error(filter + " did not run:\n" + mFolder.contentOf("log"));
        }
        return Median({times.begin() + kWarmUp, times.end()});
    }

    /// Returns the milliseconds of PF_Cmd_RENDER alone, on layers that exist already.
    double bare() const {
        Host::Effect effect(TESSELUNE_MODULE);
        Host::World input(Host::Depth::Bits8, kWidth, kHeight, kWidth * 4);
        Host::World output(Host::Depth::Bits8, kWidth, kHeight, kWidth * 4);
        std::vector<std::uint32_t> in = frame();
        Host::ConvertPixels(ViewOf(in), Host::ViewOf(input));
        return timeOf([&] { effect.render({}, {}, input, output); });
    }

    /// Returns the milliseconds for converting a frame from the host's channel order to the
    /// effect's and back.
    double channelOrder() const {
        std::vector<std::uint32_t> in = frame();
        std::vector<std::uint32_t> out(in.size());
        Host::World layer(Host::Depth::Bits8, kWidth, kHeight);
        return timeOf([&] {
            Host::ConvertPixels(ViewOf(in), Host::ViewOf(layer));
            Host::ConvertPixels(Host::ViewOf(layer), ViewOf(out));
        });
    }

private:
    template <typename Frame>
    static double timeOf(const Frame& frame) {
        using Clock = std::chrono::steady_clock;
        std::vector<double> times;
        for (int i = 0; i < kFrames; ++i) {
            const Clock::time_point start = Clock::now();
            frame();
            times.push_back(
                std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
        return Median({times.begin() + kWarmUp, times.end()});
    }

    static Host::PixelView ViewOf(std::vector<std::uint32_t>& frame) {
        return {.top = std::as_writable_bytes(std::span(frame)).data(),
                .rowBytes = kWidth * 4,
                .width = kWidth,
                .height = kHeight,
                .order = Host::ChannelOrder::Rgba};
    }

    std::vector<std::uint32_t> frame() const {
        const std::string bytes = mFolder.contentOf("frame");
        std::vector<std::uint32_t> pixels(bytes.size() / 4);
        std::memcpy(pixels.data(), bytes.data(), bytes.size());
        return pixels;
    }

    static std::string source(const char* loglevel) {
        return fmt::format("{} -hide_banner -nostdin -y -loglevel {} -f lavfi "
                           "-i testsrc2=size={}x{}:rate=25",
                           FFMPEG_PROGRAM, loglevel, kWidth, kHeight);
    }
    std::string path(const char* name) const { return (mFolder / name).string(); }

    TemporaryFolder mFolder;
};

} // namespace

int main() {
    try {
        const Host::SilentThread silent; // drops the effect's output
        const Measurement measurement;
        std::vector<double> bare;
        std::vector<double> tesselune;
        std::vector<double> overhead;
        std::vector<double> channelOrder;
        std::vector<double> pixelize;
        std::vector<double> pixeliz0r;
        for (int round = 0; round < kRounds; ++round) {
            bare.push_back(measurement.bare());
            tesselune.push_back(measurement.inFfmpeg("frei0r=tesselune"));
            overhead.push_back(100 * (tesselune.back() / bare.back() - 1));
            channelOrder.push_back(measurement.channelOrder());
            pixelize.push_back(measurement.inFfmpeg("pixelize=w=10:h=10"));
            pixeliz0r.push_back(measurement.inFfmpeg("frei0r=pixeliz0r"));
        }
        std::ranges::sort(overhead);
        fmt::print(
            "{} rounds of {} frames of {} x {}, medians a frame:\n"
            "bare render command      {:7.2f} ms\n"
            "ffmpeg frei0r=tesselune  {:7.2f} ms\n"
            "  over the bare command  {:+7.1f} % (half of the rounds' pairs {:+.1f} to {:+.1f})\n"
            "  order of channels      {:7.2f} ms of it, both ways\n"
            "ffmpeg pixelize          {:7.2f} ms\n"
            "ffmpeg frei0r=pixeliz0r  {:7.2f} ms\n",
            kRounds, kFrames - kWarmUp, kWidth, kHeight, Median(bare), Median(tesselune),
            Median(overhead), overhead[kRounds / 4], overhead[kRounds - 1 - kRounds / 4],
            Median(channelOrder), Median(pixelize), Median(pixeliz0r));
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }
}
