#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Panel/CellFinder.h"
#include "Host/Panel/CommandLines.h"
#include "Host/Panel/FramePainter.h"
#include "Host/Panel/History.h"
#include "Host/Panel/OutputFolder.h"
#include "Host/Panel/PictureCoding.h"
#include "Host/Panel/RenderJob.h"
#include "Host/Parameters/Preset.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

struct NamedPreset {
    std::string name;
    Preset preset;
};

/// What a panel starts with.
struct PanelSetup {
    FrameRenderer& renderer;
    LineSetting line;
    std::shared_ptr<Footage> footage;
    Look look;
    std::vector<NamedPreset> presets;   ///< to choose from
    std::string program;                ///< that renders, by its path
    std::string programVersion;         ///< "tesselune 1.0.0"
    Words programWords;                 ///< before its command: "--effect", "other.so"
    std::filesystem::path outputFolder; ///< empty: nothing is written
};

/// Which of the two looks that a panel compares.
enum class LookSide { Current, Other };

/**
 * The work on a panel, which all its pages share. Operations may be called from any thread; they
 * throw Error if they can't do what they are asked for, and nothing has changed then.
 */
class PanelSession {
public:
    using Json = nlohmann::ordered_json;

    explicit PanelSession(PanelSetup setup);

    /// What pages show, but for pictures.
    Json state() const;

    /// What changes from frame to frame: values, and the lines for other programs.
    Json frameState(A_long frame) const;

    /// Values of a parameter at `count` frames from `first` to `last`.
    Json curve(const std::string& option, double first, double last, std::size_t count) const;

    /// Does what "do" names.
    void edit(const Json& order);

    /// `values`, by option, are tried without a change of the look.
    PaintedFrame paint(A_long frame, LookSide side,
                       const std::map<std::string, std::string>& values = {}) const;

    /// The same with a preset.
    PaintedFrame paintPreset(A_long frame, const std::string& name) const;

    /// The picture without the effect: a JPEG of a part of it, and a PNG of it all.
    std::string sourcePreview(A_long frame, const PreviewView& view) const;
    std::string sourceStill(A_long frame) const;

    /// As the command writes it.
    std::string still(A_long frame, LookSide side, double& milliseconds) const;

    /// The colour of a pixel, and the cell that it lies in.
    Json cell(A_long frame, A_long x, A_long y);

    std::string presetFile() const;

    void savePreset(const std::string& name, bool replace);
    void saveStill(const std::string& name, bool replace, A_long frame);

    /// Shows another picture, from memory, or with an empty name the footage that the panel
    /// started with.
    void drop(const std::string& content, const std::string& name);

    /// Renders all of the footage into the output folder.
    void startRendering(const std::string& name, bool replace);
    void stopRendering();
    Json rendering() const;

    std::string rendererName() const;

private:
    struct Cells {
        std::uint64_t revision = 0;
        A_long frame = 0;
        World world;
        std::optional<CellFinder> finder;
    };

    std::shared_ptr<Footage> footage() const;
    World converted(const World& source) const;
    Look look(LookSide side) const;
    PlaceOfFrame placeOf() const;
    LineSetting lineSetting() const;
    Json parameterState(const Look& look) const;
    Json presetStates() const;
    const Preset& presetNamed(const std::string& name) const;
    void change(const Look& look, const std::string& gesture = {});
    void editLook(const Json& order);
    void loadPresetsOfFolder();
    OutputFolder& outputs();

    PanelSetup mSetup;
    std::shared_ptr<Footage> mFirstFootage;
    std::optional<OutputFolder> mOutputs;
    mutable std::recursive_mutex mMutex;
    History mHistory;
    std::optional<Look> mOther; ///< to compare with
    std::vector<NamedPreset> mSaved;
    std::uint64_t mRevision = 1;
    std::mutex mCellMutex;
    std::optional<Cells> mCells;
    std::optional<RenderJob> mJob;
    std::string mJobName;
    std::size_t mJobFrames = 0;
};

} // namespace Kerovane::Host
