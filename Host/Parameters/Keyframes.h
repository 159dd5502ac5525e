#pragma once

#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// How a value goes from one key to the next.
enum class Interpolation {
    Linear,
    Hold,     ///< it stays until the next key
    Smooth,   ///< it leaves slowly and arrives slowly: 3 t^2 - 2 t^3 of the way at t of the time
    EaseIn,   ///< it leaves slowly: t^2
    EaseOut,  ///< it arrives slowly: 2 t - t^2
    EaseInOut ///< both, each in half of the time: 2 t^2, then 1 - 2 (1 - t)^2
};

/// "linear", "hold", "smooth", "ease-in", "ease-out" or "ease-in-out".
std::string_view InterpolationName(Interpolation interpolation);

/// What the places of keys count.
enum class KeyUnit { Frames, Seconds };

struct Keyframe {
    double place = 0; ///< in a KeyUnit
    double value = 0;
    Interpolation toNext = Interpolation::Linear;

    bool operator==(const Keyframe&) const = default;
};

/** A value over time. Before the first key it has the first's value, after the last the last's.
 */
class Keyframes {
public:
    /// The same value at all times.
    explicit Keyframes(double value);

    /// Throws Error if there is no key or their places don't grow from key to key.
    explicit Keyframes(std::vector<Keyframe> keys, KeyUnit unit = KeyUnit::Frames);

    /// At a place in unit().
    double at(double place) const;

    KeyUnit unit() const { return mUnit; }

    /// At least one.
    const std::vector<Keyframe>& keys() const { return mKeys; }

    bool operator==(const Keyframes&) const = default;

private:
    std::vector<Keyframe> mKeys;
    KeyUnit mUnit = KeyUnit::Frames;
};

} // namespace Kerovane::Host
