// Compares frames that take turns in one process: the effect with its lower bounds, with other
// parameters, its two modules, or another build of the effect; and the software renderer with the
// effect and a copy of the bytes.

#include "Benchmarks/BareFrame/BareFrame.h"
#include "Benchmarks/BenchmarkPicture.h"
#include "Benchmarks/EffectFrame.h"
#include "Benchmarks/Names.h"
#include "Benchmarks/PairedFrames/PairedTiming.h"
#include "Host/Frames/SilentThread.h"
#include "Host/Frames/SoftwareFrame.h"
#include "Host/Frames/WorldView.h"
#include "Platform/Memory/FreedMemory.h"
#include "Platform/OpenGL/HostContext.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace Kerovane::Benchmarks {

namespace {

using nlohmann::json;

struct PictureSize {
    int width;
    int height;
};

/// The options of the command line.
struct Settings {
    std::string module = TESSELUNE_MODULE;
    std::string base;
    std::string report;
    int rounds = 21;
    bool small = false;
};

int Bits(Host::Depth depth) {
    return static_cast<int>(depth);
}

/// An input picture and the output of the same size.
struct Worlds {
    Worlds(Host::Depth depth, const PictureSize& size)
        : input(BenchmarkPicture(depth, size.width, size.height)),
          output(depth, size.width, size.height) {}

    Host::World input;
    Host::World output;
};

/// Makes a side that sends the render command of `effect` on `worlds`, which must outlive the side.
/// No host context is current.
Side EffectSide(std::string name, Host::Effect& effect, const Cells& cells, Worlds& worlds) {
    return {.name = std::move(name),
            .prepare = [] { Platform::ReleaseCurrentEglContext(); },
            .frame =
                [&effect, &worlds, values = ValuesOf(cells, effect.parameters())] {
                    effect.render({}, values, worlds.input, worlds.output);
                }};
}

json ToJson(const Estimate& estimate) {
    return {{"median", estimate.median}, {"low", estimate.low}, {"high", estimate.high}};
}

/// Times the sides and reports them, with the ratios of the first side to each.
json Compare(const std::vector<Side>& sides, int rounds) {
    const std::vector<Times> times = TimeInTurn(sides, rounds);
    json row;
    for (std::size_t index = 0; index < sides.size(); ++index) {
        json& side = row["sides"][sides[index].name];
        side["wall_ms"] = ToJson(EstimateMedian(times[index].wall));
        side["cpu_ms"] = ToJson(EstimateMedian(times[index].cpu));
        side["wall_ratio"] = ToJson(EstimateRatio(times[0].wall, times[index].wall));
        side["cpu_ratio"] = ToJson(EstimateRatio(times[0].cpu, times[index].cpu));
    }
    return row;
}

json Described(json row, const Worlds& worlds, const Cells& cells) {
    row["width"] = worlds.input.width();
    row["height"] = worlds.input.height();
    row["bits"] = Bits(worlds.input.depth());
    row["shape"] = ShapeName(cells.shapeType);
    row["size"] = cells.size;
    row["levels"] = cells.sizeRandom > 0 ? cells.levels : 0;
    std::cerr << fmt::format("{} x {}, {} bits, {}:", worlds.input.width(), worlds.input.height(),
                             Bits(worlds.input.depth()), ShapeName(cells.shapeType));
    for (const auto& [name, side] : row["sides"].items()) {
        std::cerr << fmt::format("  {} {:.2f} ms", name, side["cpu_ms"]["median"].get<double>());
    }
    std::cerr << '\n';
    return row;
}

void RequireSamePicture(const Worlds& one, const Worlds& other) {
    const auto a = one.output.bytes();
    const auto b = other.output.bytes();
    if (std::memcmp(a.data(), b.data(), a.size()) != 0) {
        throw std::runtime_error("the compared frames differ, so their times say nothing");
    }
}

/// Returns fewer rounds for larger pictures, because a round takes time in proportion to the
/// pixels, but no fewer than the bounds of an estimate need.
int RoundsFor(const PictureSize& size, int rounds) {
    constexpr double kFullHd = 1920.0 * 1080.0;
    constexpr double kFewest = 8;
    const double share = kFullHd / (static_cast<double>(size.width) * size.height);
    return static_cast<int>(std::clamp(rounds * share, kFewest, 3.0 * rounds));
}

/// Compares the effect with the bare frame and with a copy of the bytes.
json CompareWithFloor(Host::Effect& effect, Host::Depth depth, const PictureSize& size,
                      const Cells& cells, int rounds) {
    Worlds ofEffect(depth, size);
    Worlds ofBareFrame(depth, size);
    std::vector<std::byte> copy(ofEffect.input.bytes().size());
    BareFrame bareFrame(cells);
    const std::vector<Side> sides = {
        EffectSide("effect", effect, cells, ofEffect),
        {.name = "bare",
         .prepare = [&] { bareFrame.makeCurrent(); },
         .frame = [&] { bareFrame.render(ofBareFrame.input, ofBareFrame.output); }},
        {.name = "memcpy",
         .prepare = [] {},
         .frame = [&] { std::memcpy(copy.data(), ofEffect.input.bytes().data(), copy.size()); }},
    };
    json row = Described(Compare(sides, RoundsFor(size, rounds)), ofEffect, cells);
    RequireSamePicture(ofEffect, ofBareFrame);
    bareFrame.makeCurrent();
    return row;
}

json CompareWithFloors(Host::Effect& effect, const Settings& settings) {
    const std::vector<PictureSize> sizes =
        settings.small
            ? std::vector<PictureSize>{{640, 360}, {1920, 1080}}
            : std::vector<PictureSize>{{640, 360}, {1920, 1080}, {3840, 2160}, {7680, 4320}};
    json rows = json::array();
    for (const PictureSize& size : sizes) {
        for (const Host::Depth depth : kDepths) {
            rows.push_back(CompareWithFloor(effect, depth, size, Cells{}, settings.rounds));
        }
    }
    constexpr PictureSize kFullHd = {1920, 1080};
    for (const int shape : {0, 1}) {
        const Cells fiveLevels{.shapeType = shape, .levels = 5, .sizeRandom = 100};
        rows.push_back(
            CompareWithFloor(effect, Host::Depth::Bits8, kFullHd, fiveLevels, settings.rounds));
    }
    return rows;
}

/// Compares the effect at its defaults with other parameters.
json CompareParameters(Host::Effect& effect, const Settings& settings) {
    constexpr PictureSize kFullHd = {1920, 1080};
    json rows = json::array();
    for (const int shape : {0, 1}) {
        const Cells plain{.shapeType = shape};
        Worlds worlds(Host::Depth::Bits8, kFullHd);
        std::vector<Side> sides;
        const auto add = [&](std::string name, Cells cells) {
            cells.shapeType = shape;
            sides.push_back(EffectSide(std::move(name), effect, cells, worlds));
        };
        add("Size 10", {});
        add("Size 2", {.size = 2});
        add("Size 50", {.size = 50});
        add("Size 500", {.size = 500});
        add("5 levels", {.levels = 5, .sizeRandom = 100});
        rows.push_back(Described(Compare(sides, settings.rounds), worlds, plain));
    }
    return rows;
}

/// Compares two builds of the effect.
json CompareModules(Host::Effect& effect, const Settings& settings) {
    Host::Effect base(settings.base);
    json rows = json::array();
    for (const Host::Depth depth : kDepths) {
        constexpr PictureSize kFullHd = {1920, 1080};
        Worlds ofEffect(depth, kFullHd);
        Worlds ofBase(depth, kFullHd);
        const std::vector<Side> sides = {EffectSide("effect", effect, Cells{}, ofEffect),
                                         EffectSide("base", base, Cells{}, ofBase)};
        rows.push_back(Described(Compare(sides, settings.rounds), ofEffect, Cells{}));
    }
    return rows;
}

/// Compares the module that stores floats with the one that stores 8 bits, at the depths that the
/// float module is for.
json CompareFloats(Host::Effect& effect, const Settings& settings) {
    Host::Effect floats(TESSELUNE_FLOAT_MODULE);
    json rows = json::array();
    for (const Host::Depth depth : {Host::Depth::Bits16, Host::Depth::Float32}) {
        constexpr PictureSize kFullHd = {1920, 1080};
        Worlds worlds(depth, kFullHd);
        const std::vector<Side> sides = {EffectSide("floats", floats, Cells{}, worlds),
                                         EffectSide("effect", effect, Cells{}, worlds)};
        rows.push_back(Described(Compare(sides, settings.rounds), worlds, Cells{}));
    }
    return rows;
}

/// Compares the software renderer on one thread with two threads, with a copy of the bytes and, at
/// 1920 x 1080 and 8 bits, with the effect.
json CompareSoftware(Host::Effect& effect, const Settings& settings) {
    struct Row {
        Cells cells;
        Host::Depth depth = Host::Depth::Bits8;
        PictureSize size{1920, 1080};
    };
    const Cells triangles{.shapeType = 1};
    const Row rows[] = {
        {.cells = {}},
        {.cells = {.size = 20}},
        {.cells = {.size = 100}},
        {.cells = {.size = 2}},
        {.cells = {.size = 2, .levels = 5, .sizeRandom = 50}},
        {.cells = triangles},
        {.cells = {.shapeType = 1, .size = 20}},
        {.cells = {.shapeType = 1, .size = 2, .levels = 5, .sizeRandom = 50}},
        {.cells = {}, .depth = Host::Depth::Bits16},
        {.cells = {}, .depth = Host::Depth::Float32},
        {.cells = {}, .size = {3840, 2160}},
        {.cells = {}, .size = {7680, 4320}},
    };
    json report = json::array();
    for (const auto& [cells, depth, size] : rows) {
        Worlds worlds(depth, size);
        std::vector<std::byte> copy(worlds.input.bytes().size());
        const auto parameters =
            Host::MosaicParametersOf(effect.parameters(), ValuesOf(cells, effect.parameters()), {});
        const auto software = [&](std::string name, int threads) {
            return Side{.name = std::move(name),
                        .prepare = [] {},
                        .frame =
                            [&, threads] {
                                Host::DrawSoftwareFrame(parameters, ViewOf(worlds.input),
                                                        ViewOf(worlds.output), threads);
                            }};
        };
        std::vector<Side> sides = {
            software("software", 1),
            software("two threads", 2),
            {.name = "memcpy",
             .prepare = [] {},
             .frame = [&] { std::memcpy(copy.data(), worlds.input.bytes().data(), copy.size()); }}};
        if (depth == Host::Depth::Bits8 && size.width == 1920) {
            sides.push_back(EffectSide("effect", effect, cells, worlds));
        }
        report.push_back(
            Described(Compare(sides, RoundsFor(size, settings.rounds)), worlds, cells));
    }
    return report;
}

/// Runs `compare` on the effect, whose output to standard output is dropped.
json Compared(json (*compare)(Host::Effect&, const Settings&), const Settings& settings) {
    const Host::SilentThread silent;
    Host::Effect effect(settings.module);
    return compare(effect, settings);
}

/// Prints a line for each row and the verdict. Returns true if the effect is slower than its base.
bool ReportVerdict(const json& rows) {
    constexpr double kTolerance = 1.01;
    bool isSlower = false;
    for (const json& row : rows) {
        const json& base = row["sides"]["base"];
        std::cout << fmt::format("{:2} bits:", row["bits"].get<int>());
        for (const auto& [key, label] :
             {std::pair{"cpu_ratio", "processor time"}, std::pair{"wall_ratio", "wall time"}}) {
            const json& ratio = base[key];
            isSlower = isSlower || ratio["low"].get<double>() > kTolerance;
            std::cout << fmt::format("  {} x {:.3f} ({:.3f} to {:.3f})", label,
                                     ratio["median"].get<double>(), ratio["low"].get<double>(),
                                     ratio["high"].get<double>());
        }
        std::cout << '\n';
    }
    std::cout << (isSlower ? "The render command is slower than the base beyond the noise.\n"
                           : "The render command is not slower than the base beyond the noise.\n");
    return isSlower;
}

void Write(const json& report, const std::string& file) {
    if (file.empty()) {
        return;
    }
    std::ofstream stream(file);
    stream << report.dump(1) << '\n';
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + file);
    }
}

int Run(int argc, char** argv) {
    Settings settings;
    CLI::App app("Times frames by turns in one process.");
    app.add_option("--module", settings.module, "the effect")->check(CLI::ExistingFile);
    app.add_option("--rounds", settings.rounds, "rounds at 1920 x 1080")
        ->check(CLI::Range(3, 10000));
    app.add_option("--report", settings.report, "JSON file to write");
    app.require_subcommand(1);
    CLI::App* floors = app.add_subcommand("floors", "against bare GL calls and a memory copy");
    floors->add_flag("--small", settings.small, "leave the pictures beyond 1920 x 1080 out");
    CLI::App* parameters = app.add_subcommand("parameters", "against other parameters");
    CLI::App* floats = app.add_subcommand("floats", "the module with floats against the other");
    CLI::App* software = app.add_subcommand("software", "the software renderer");
    CLI::App* modules = app.add_subcommand("modules", "against another build of the effect");
    modules->add_option("BASE", settings.base, "the other build's module")
        ->required()
        ->check(CLI::ExistingFile);
    CLI11_PARSE(app, argc, argv);

    // Keeps freed memory, as the command does. Otherwise page faults would hit either side by
    // chance.
    Platform::KeepFreedMemory();
    const json rows = Compared(*modules      ? CompareModules
                               : *floats     ? CompareFloats
                               : *software   ? CompareSoftware
                               : *parameters ? CompareParameters
                                             : CompareWithFloors,
                               settings);
    Write(rows, settings.report);
    return *modules && ReportVerdict(rows) ? 1 : 0;
}

} // namespace

} // namespace Kerovane::Benchmarks

int main(int argc, char** argv) {
    try {
        return Kerovane::Benchmarks::Run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "PairedFrames: " << error.what() << '\n';
        return 2;
    }
}
