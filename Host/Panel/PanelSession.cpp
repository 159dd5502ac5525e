#include "Host/Panel/PanelSession.h"

#include "Host/Panel/Frei0rLines.h"
#include "Host/Panel/Order.h"
#include "Host/Panel/PictureCoding.h"
#include "Host/Panel/Surprise.h"
#include "Host/Parameters/Holes.h"
#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/OptionNames.h"
#include "Host/Text/Error.h"
#include "Host/Text/JsonNumber.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <random>
#include <utility>

namespace Kerovane::Host {

namespace {

using Json = PanelSession::Json;
using Lock = std::lock_guard<std::recursive_mutex>;

constexpr std::size_t kMostPresetBytes = 4U << 20U;

std::string KindName(FootageKind kind) {
    switch (kind) {
    case FootageKind::Picture:
        return "picture";
    case FootageKind::Sequence:
        return "sequence";
    default:
        return "movie";
    }
}

/// Returns consecutive frames as ranges: [[0, 99], [200, 250]].
Json FrameRanges(const FrameList& frames) {
    Json ranges = Json::array();
    for (const A_long frame : frames) {
        if (!ranges.empty() && ranges.back()[1].get<A_long>() == frame - 1) {
            ranges.back()[1] = frame;
        } else {
            ranges.push_back({frame, frame});
        }
    }
    return ranges;
}

Json KeyStates(const Keyframes& keyframes, const Footage& footage) {
    Json keys = Json::array();
    for (const Keyframe& key : keyframes.keys()) {
        const FrameRate rate = footage.rate();
        const double frame = keyframes.unit() == KeyUnit::Frames
                                 ? key.place
                                 : key.place * rate.timeScale() / rate.timeStep();
        keys.push_back({{"frame", JsonNumber(frame)},
                        {"value", JsonNumber(key.value)},
                        {"way", InterpolationName(key.toNext)}});
    }
    return keys;
}

} // namespace

PanelSession::PanelSession(PanelSetup setup)
    : mSetup(std::move(setup)), mFirstFootage(mSetup.footage), mHistory(mSetup.look) {
    if (!mSetup.outputFolder.empty()) {
        mOutputs.emplace(mSetup.outputFolder);
        loadPresetsOfFolder();
    }
}

std::shared_ptr<Footage> PanelSession::footage() const {
    const Lock lock(mMutex);
    return mSetup.footage;
}

Look PanelSession::look(LookSide side) const {
    const Lock lock(mMutex);
    return side == LookSide::Other && mOther ? *mOther : mHistory.look();
}

PlaceOfFrame PanelSession::placeOf() const {
    return [footage = footage()](double frame, KeyUnit unit) {
        return unit == KeyUnit::Frames ? frame : footage->secondsOf(frame);
    };
}

/// Leaves out the options about the first input if another input is shown.
LineSetting PanelSession::lineSetting() const {
    LineSetting line = mSetup.line;
    if (footage() != mFirstFootage) {
        line.frames.clear();
        line.footageWords.clear();
    }
    return line;
}

Json PanelSession::parameterState(const Look& look) const {
    const std::vector<Parameter>& parameters = mSetup.line.parameters;
    Json states = Json::object();
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        if (!parameter.hasValue()) {
            continue;
        }
        const auto found = look.settings.find(parameter.id());
        const Keyframes keyframes =
            found != look.settings.end() ? found->second : Keyframes(parameter.defaultValue);
        Json state{{"value", JsonNumber(keyframes.keys().front().value)},
                   {"animated", look.animated.contains(parameter.id())},
                   {"isDefault", keyframes == Keyframes(parameter.defaultValue)}};
        if (look.animated.contains(parameter.id())) {
            state["keys"] = KeyStates(keyframes, *mSetup.footage);
        }
        states[mSetup.line.options[i]] = std::move(state);
    }
    return states;
}

Json PanelSession::presetStates() const {
    Json states = Json::array();
    const auto add = [&states](const std::vector<NamedPreset>& presets, bool isSaved) {
        for (const NamedPreset& preset : presets) {
            states.push_back({{"name", preset.name},
                              {"description", preset.preset.description},
                              {"saved", isSaved}});
        }
    };
    add(mSetup.presets, false);
    add(mSaved, true);
    return states;
}

Json PanelSession::state() const {
    const Lock lock(mMutex);
    const Footage& footage = *mSetup.footage;
    const FrameRate rate = footage.rate();
    const Look& look = mHistory.look();
    return {{"revision", mRevision},
            {"parameters", parameterState(look)},
            {"canUndo", mHistory.canUndo()},
            {"canRedo", mHistory.canRedo()},
            {"renderer", NameOf(look.renderer)},
            {"renderers", RendererNames()},
            {"hasOther", mOther.has_value()},
            {"footage",
             {{"kind", KindName(footage.kind())},
              {"name", footage.input().filename().string()},
              {"dropped", mSetup.footage != mFirstFootage},
              {"width", footage.width()},
              {"height", footage.height()},
              {"deep", footage.isDeep()},
              {"frames", FrameRanges(footage.frames())},
              {"fps", static_cast<double>(rate.timeScale()) / rate.timeStep()}}},
            {"presets", presetStates()},
            {"canSave", mOutputs.has_value()},
            {"outputFolder", mOutputs ? mOutputs->path().string() : ""}};
}

Json PanelSession::frameState(A_long frame) const {
    const Lock lock(mMutex);
    Footage& footage = *mSetup.footage;
    const Look& look = mHistory.look();
    const LineSetting line = lineSetting();
    Json values = Json::object();
    for (std::size_t i = 0; i < line.parameters.size(); ++i) {
        if (line.parameters[i].hasValue()) {
            values[line.options[i]] = JsonNumber(ValueAt(line.parameters[i], look, footage, frame));
        }
    }
    const std::string output = footage.kind() == FootageKind::Movie      ? "cells.mp4"
                               : footage.kind() == FootageKind::Sequence ? "cells.#.png"
                                                                         : "cells.png";
    Json lines{{"still", ShellLine("tesselune", StillWords(line, look, footage, frame))},
               {"render", ShellLine("tesselune", ShotWords(line, look, footage,
                                                           footage.input().string(), output))},
               {"ffmpeg", FfmpegLine(line, look, footage, frame)},
               {"melt", MeltLine(line, look, footage)},
               {"gstreamer", GStreamerLine(line, look, footage, frame)}};
    return {{"revision", mRevision}, {"values", std::move(values)}, {"lines", std::move(lines)}};
}

Json PanelSession::curve(const std::string& option, double first, double last,
                         std::size_t count) const {
    constexpr std::size_t kMost = 4096;
    if (count < 1 || count > kMost || !std::isfinite(first) || !std::isfinite(last)) {
        throw Error("no such part of a curve");
    }
    const Lock lock(mMutex);
    const Parameter& parameter = mSetup.line.parameters[IndexOfOption(mSetup.line.options, option)];
    Json values = Json::array();
    for (std::size_t i = 0; i < count; ++i) {
        const double share =
            count > 1 ? static_cast<double>(i) / static_cast<double>(count - 1) : 0;
        values.push_back(
            ValueAt(parameter, mHistory.look(), *mSetup.footage, first + share * (last - first)));
    }
    return values;
}

void PanelSession::change(const Look& look, const std::string& gesture) {
    mHistory.change(look, gesture);
    ++mRevision;
}

void PanelSession::edit(const Json& order) {
    const auto what = Entry<std::string>(order, "do");
    const Lock lock(mMutex);
    if (what == "undo" || what == "redo") {
        what == "undo" ? mHistory.undo() : mHistory.redo();
        ++mRevision;
    } else if (what == "keep") {
        mOther = mHistory.look();
        ++mRevision;
    } else if (what == "swap" && mOther) {
        const Look current = std::exchange(*mOther, mHistory.look());
        change(current);
    } else if (what == "forget") {
        mOther.reset();
        ++mRevision;
    } else {
        editLook(order);
    }
}

void PanelSession::editLook(const Json& order) {
    const auto what = Entry<std::string>(order, "do");
    const std::vector<Parameter>& parameters = mSetup.line.parameters;
    Look look = mHistory.look();
    if (what == "reset-all") {
        look = LookOf({}, look.renderer);
    } else if (what == "preset") {
        const Preset& preset = presetNamed(Entry<std::string>(order, "name"));
        look = LookOf(preset.settings, look.renderer);
    } else if (what == "preset-file") {
        const Preset preset = ParsePreset(parameters, Entry<std::string>(order, "content"));
        look = LookOf(preset.settings, look.renderer);
    } else if (what == "surprise") {
        look = Surprise(parameters, look.renderer, std::random_device()());
    } else if (what == "renderer") {
        look.renderer = ParseRenderer(Entry<std::string>(order, "name"));
        if (look.renderer == Renderer::OpenGL) {
            mSetup.renderer.checkDrawable();
        } else if (!mSetup.programWords.empty()) {
            throw Error("the software renderer draws the installed effect, not another one");
        }
    } else {
        ChangeParameter(order, parameters, mSetup.line.options, placeOf(), look);
    }
    change(look, EntryOr<std::string>(order, "gesture", ""));
}

PaintedFrame PanelSession::paint(A_long frame, LookSide side,
                                 const std::map<std::string, std::string>& values) const {
    Look tried = look(side);
    const PlaceOfFrame placeOfFrame = placeOf();
    for (const auto& [option, text] : values) {
        LookEditor(tried, mSetup.line.parameters[IndexOfOption(mSetup.line.options, option)],
                   placeOfFrame)
            .setValue(frame, text);
    }
    return Paint(mSetup.renderer, *footage(), tried, frame);
}

PaintedFrame PanelSession::paintPreset(A_long frame, const std::string& name) const {
    Look tried;
    {
        const Lock lock(mMutex);
        tried = LookOf(presetNamed(name).settings, mHistory.look().renderer);
    }
    return Paint(mSetup.renderer, *footage(), tried, frame);
}

std::string PanelSession::still(A_long frame, LookSide side, double& milliseconds) const {
    const Look drawn = look(side);
    PaintedFrame painted = Paint(mSetup.renderer, *footage(), drawn, frame);
    milliseconds = painted.milliseconds;
    const std::vector<Parameter>& parameters = mSetup.line.parameters;
    return EncodeStill(std::move(painted.world), *painted.source,
                       {.canLeaveHoles = CanLeaveHoles(parameters, drawn.settings),
                        .record = {.program = mSetup.programVersion,
                                   .settings = FormatRecord(
                                       parameters, mSetup.renderer.version(),
                                       {.settings = drawn.settings, .renderer = drawn.renderer})}});
}

World PanelSession::converted(const World& source) const {
    World copy = CopyOf(source);
    if (const ColourConversion* conversion = footage()->conversion()) {
        conversion->apply(copy);
    }
    return copy;
}

std::string PanelSession::sourcePreview(A_long frame, const PreviewView& view) const {
    const SharedPicture picture = footage()->frame(frame);
    const World& source = picture->first().world;
    return footage()->conversion() != nullptr ? EncodePreview(converted(source), view)
                                              : EncodePreview(source, view);
}

std::string PanelSession::sourceStill(A_long frame) const {
    const SharedPicture picture = footage()->frame(frame);
    return EncodeStill(converted(picture->first().world), *picture, {});
}

Json PanelSession::cell(A_long frame, A_long x, A_long y) {
    const std::lock_guard cellLock(mCellMutex);
    std::uint64_t revision = 0;
    {
        const Lock lock(mMutex);
        revision = mRevision;
    }
    if (!mCells || mCells->revision != revision || mCells->frame != frame) {
        // Finds no cells in larger pictures: CellFinder keeps four floats a pixel in memory.
        constexpr std::int64_t kMostPixels = 16'000'000;
        PaintedFrame painted = paint(frame, LookSide::Current);
        World world = In8Bits(painted.world);
        mCells.reset();
        std::optional<CellFinder> finder;
        if (std::int64_t{world.width()} * world.height() <= kMostPixels) {
            finder.emplace(mSetup.renderer, *footage(), look(LookSide::Current), frame, world);
        }
        mCells.emplace(Cells{.revision = revision,
                             .frame = frame,
                             .world = std::move(world),
                             .finder = std::move(finder)});
    }
    const World& world = mCells->world;
    if (x < 0 || y < 0 || x >= world.width() || y >= world.height()) {
        throw Error("there is no such pixel");
    }
    const PF_Pixel8 pixel = world.row<PF_Pixel8>(y)[static_cast<std::size_t>(x)];
    Json found{{"color", {pixel.red, pixel.green, pixel.blue, pixel.alpha}}};
    const std::optional<Cell> cell = mCells->finder ? mCells->finder->cellAt(x, y) : std::nullopt;
    if (cell) {
        found["reference"] = {cell->referenceX, cell->referenceY};
        Json runs = Json::array();
        for (const Cell::Run& run : cell->runs) {
            runs.push_back({run.y, run.begin, run.end});
        }
        found["runs"] = std::move(runs);
    }
    return found;
}

std::string PanelSession::presetFile() const {
    const Look current = look(LookSide::Current);
    return FormatPreset(mSetup.line.parameters, mSetup.renderer.version(),
                        {.settings = current.settings, .renderer = current.renderer});
}

OutputFolder& PanelSession::outputs() {
    if (!mOutputs) {
        throw Error("nothing is written without --output-folder");
    }
    return *mOutputs;
}

void PanelSession::savePreset(const std::string& name, bool replace) {
    outputs().write(name + ".json", presetFile(), replace);
    const Lock lock(mMutex);
    loadPresetsOfFolder();
    ++mRevision;
}

void PanelSession::saveStill(const std::string& name, bool replace, A_long frame) {
    double milliseconds = 0;
    outputs().write(name + ".png", still(frame, LookSide::Current, milliseconds), replace);
}

/// Loads the presets in the output folder. Ignores other JSON files.
void PanelSession::loadPresetsOfFolder() {
    constexpr std::size_t kMost = 100;
    mSaved.clear();
    for (const std::filesystem::path& path : mOutputs->files(".json")) {
        std::string content(kMostPresetBytes, '\0');
        std::ifstream file(path, std::ios::binary);
        file.read(content.data(), static_cast<std::streamsize>(content.size()));
        content.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, file.gcount())));
        try {
            Preset preset = ParsePreset(mSetup.line.parameters, content);
            if (mSaved.size() < kMost) {
                mSaved.push_back({.name = path.stem().string(), .preset = std::move(preset)});
            }
        } catch (const Error&) {
            continue; // not a preset
        }
    }
}

const Preset& PanelSession::presetNamed(const std::string& name) const {
    for (const std::vector<NamedPreset>* presets : {&mSaved, &mSetup.presets}) {
        const auto found = std::ranges::find(*presets, name, &NamedPreset::name);
        if (found != presets->end()) {
            return found->preset;
        }
    }
    throw Error(fmt::format("there is no preset '{}'", name));
}

void PanelSession::drop(const std::string& content, const std::string& name) {
    const std::string plainName = std::filesystem::path(OneLine(name)).filename().string();
    std::shared_ptr<Footage> dropped =
        plainName.empty() ? mFirstFootage
                          : std::shared_ptr<Footage>(FootageFrom(content, plainName));
    const Lock lock(mMutex);
    mSetup.footage = std::move(dropped);
    ++mRevision;
}

void PanelSession::startRendering(const std::string& name, bool replace) {
    const std::filesystem::path file = outputs().fileFor(name, true);
    const Lock lock(mMutex);
    if (mJob && !mJob->progress().status) {
        throw Error(fmt::format("'{}' is being rendered", mJobName));
    }
    const Footage& footage = *mSetup.footage;
    const std::string input = footage.descriptor() >= 0
                                  ? "/proc/self/fd/3"
                                  : std::filesystem::absolute(footage.input()).string();
    Words words = mSetup.programWords;
    std::ranges::copy(ShotWords(lineSetting(), mHistory.look(), footage, input, file.string()),
                      std::back_inserter(words));
    if (!replace) {
        words.emplace_back("--no-clobber");
    }
    mJob.reset();
    mJob.emplace(mSetup.program, std::move(words), footage.descriptor());
    mJobName = name;
    mJobFrames = footage.frames().size();
}

void PanelSession::stopRendering() {
    const Lock lock(mMutex);
    if (mJob) {
        mJob->stop();
    }
}

Json PanelSession::rendering() const {
    const Lock lock(mMutex);
    if (!mJob) {
        return nullptr;
    }
    const RenderJob::Progress progress = mJob->progress();
    return {{"name", mJobName},
            {"frames", mJobFrames},
            {"done", progress.done},
            {"failed", progress.failed},
            {"status", progress.status ? Json(*progress.status) : Json()},
            {"lines", progress.lines}};
}

std::string PanelSession::rendererName() const {
    return NameOf(look(LookSide::Current).renderer);
}

} // namespace Kerovane::Host
