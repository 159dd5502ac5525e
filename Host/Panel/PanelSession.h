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
    std::vector<NamedPreset> presets;   ///< offered on the page
    std::string program;                ///< path of the program that renders
    std::string programVersion;         ///< "tesselune 1.0.0"
    Words programWords;                 ///< options before the subcommand: "--effect", "other.so"
    std::filesystem::path outputFolder; ///< empty: nothing can be written
};

/// The two looks that a panel compares: the current one, and another one that was kept.
enum class LookSide { Current, Other };

/**
 * The state of a panel, shared by all its pages. Thread-safe. Operations throw Error if they are
 * not possible, and then leave the look unchanged.
 */
class PanelSession {
public:
    using Json = nlohmann::ordered_json;

    explicit PanelSession(PanelSetup setup);

    /// Returns what pages show, except pictures and what depends on the frame.
    Json state() const;

    /// Returns what depends on the frame: the parameters' values, and the shell lines.
    Json frameState(A_long frame) const;

    /// Returns a parameter's values at `count` evenly spaced places from frame `first` to `last`.
    Json curve(const std::string& option, double first, double last, std::size_t count) const;

    /// Executes an order. Its entry "do" tells what to do.
    void edit(const Json& order);

    /// Renders a frame. `values` maps options to texts, which replace the look's values for this
    /// frame only.
    PaintedFrame paint(A_long frame, LookSide side,
                       const std::map<std::string, std::string>& values = {}) const;

    /// Renders a frame with the preset `name`.
    PaintedFrame paintPreset(A_long frame, const std::string& name) const;

    /// Return the picture without the effect: a part of it as JPEG, and all of it as PNG.
    std::string sourcePreview(A_long frame, const PreviewView& view) const;
    std::string sourceStill(A_long frame) const;

    /// Returns the rendered frame as the PNG that the command writes. Sets `milliseconds` to the
    /// rendering time.
    std::string still(A_long frame, LookSide side, double& milliseconds) const;

    /// Returns a pixel's colour, and the cell that contains the pixel if one is found.
    Json cell(A_long frame, A_long x, A_long y);

    std::string presetFile() const;

    void savePreset(const std::string& name, bool replace);
    void saveStill(const std::string& name, bool replace, A_long frame);

    /// Shows a picture given as bytes. An empty `name` returns to the input that the panel started
    /// with.
    void drop(const std::string& content, const std::string& name);

    /// Starts rendering all frames into the output folder.
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
    std::optional<Look> mOther; ///< the look that was kept to compare with
    std::vector<NamedPreset> mSaved;
    std::uint64_t mRevision = 1;
    std::mutex mCellMutex;
    std::optional<Cells> mCells;
    std::optional<RenderJob> mJob;
    std::string mJobName;
    std::size_t mJobFrames = 0;
};

} // namespace Kerovane::Host
