#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"
#include "Host/Parameters/Renderer.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/** The settings that a frame is drawn with: everything that can be undone. */
struct Look {
    ParameterSettings settings; ///< parameters that are absent have their defaults
    std::set<A_long> animated;  ///< disk ids of parameters with keys, even if with only one
    Renderer renderer = Renderer::OpenGL;

    bool operator==(const Look&) const = default;
};

/// Returns the look of a preset or a command line. Parameters with more than one key are animated.
Look LookOf(ParameterSettings settings, Renderer renderer);

/// Converts a frame number to a keyframe's place in `unit`.
using PlaceOfFrame = std::function<double(double frame, KeyUnit unit)>;

/// Changes one parameter of a look. Operations throw Error if the change is not possible; the look
/// may then be partly changed.
class LookEditor {
public:
    /// All arguments must outlive the editor.
    LookEditor(Look& look, const Parameter& parameter, const PlaceOfFrame& placeOf)
        : mLook(look), mParameter(parameter), mPlaceOf(placeOf) {}

    /// Sets a value or keys, given as on the command line.
    void setText(std::string_view text);

    /// Restores the default and removes all keys.
    void reset();

    /// Sets the key at `frame` if the parameter is animated, adding a key if there is none.
    /// Otherwise sets the constant value.
    void setValue(double frame, std::string_view text);

    /// Adds or changes the key at `frame`. An empty `text` keeps the value at that time.
    /// `interpolation` names the interpolation to the next key. If it is empty, an existing key
    /// keeps its interpolation.
    void putKey(double frame, std::string_view text, std::string_view interpolation);

    /// Removes a key. When the only key is removed, its value stays as a constant.
    void removeKey(std::size_t index);

    /// Moves a key. It replaces any key at its new place.
    void moveKey(std::size_t index, double frame);

    /// Replaces all keys by the value at `frame`.
    void removeKeys(double frame);

private:
    const Keyframes& current() const;
    std::vector<Keyframe> keysWithout(std::size_t index) const;
    void store(std::vector<Keyframe> keys, KeyUnit unit);
    void put(std::vector<Keyframe>& keys, const Keyframe& key) const;
    double valueAt(double frame) const;

    Look& mLook;
    const Parameter& mParameter;
    const PlaceOfFrame& mPlaceOf;
};

} // namespace Kerovane::Host
