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

/** What the picture is drawn with: all that can be undone. */
struct Look {
    ParameterSettings settings; ///< what isn't there has its default
    std::set<A_long> animated;  ///< those with keys, be it a single one
    Renderer renderer = Renderer::OpenGL;

    bool operator==(const Look&) const = default;
};

/// The look with what a preset or a command line sets, and nothing else.
Look LookOf(ParameterSettings settings, Renderer renderer);

/// Where a frame lies among keys of that unit.
using PlaceOfFrame = std::function<double(double frame, KeyUnit unit)>;

/// Changes of one parameter of a look. Each throws Error if the parameter can't be changed so; the
/// look may be half changed then.
class LookEditor {
public:
    /// All outlive the editor.
    LookEditor(Look& look, const Parameter& parameter, const PlaceOfFrame& placeOf)
        : mLook(look), mParameter(parameter), mPlaceOf(placeOf) {}

    /// Sets what `text` says, as on the command line: a value or keys.
    void setText(std::string_view text);

    /// The default, without keys.
    void reset();

    /// If the parameter has keys, the one at `frame` gets the value or is added; else the parameter
    /// has it at all times.
    void setValue(double frame, std::string_view text);

    /// Adds a key at `frame`, or changes the one that is there. Without `text` it has the value of
    /// that time, and the way to the next stays if `way` is empty.
    void putKey(double frame, std::string_view text, std::string_view way);

    /// Without the last key the parameter stays as it is at that time.
    void removeKey(std::size_t index);

    /// A key that comes to lie on another one replaces it.
    void moveKey(std::size_t index, double frame);

    /// Has the value that it has at `frame` at all times.
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
