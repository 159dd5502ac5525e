#pragma once

#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// How a value goes from one key to the next.
enum class Interpolation {
    Linear,
    Hold,     ///< keeps its value until the next key
    Smooth,   ///< starts and ends slowly: 3 t^2 - 2 t^3 of the way at fraction t of the time
    EaseIn,   ///< starts slowly: t^2
    EaseOut,  ///< ends slowly: 2 t - t^2
    EaseInOut ///< starts and ends slowly: 2 t^2 in the first half, 1 - 2 (1 - t)^2 in the second
};

/// Returns "linear", "hold", "smooth", "ease-in", "ease-out" or "ease-in-out".
std::string_view InterpolationName(Interpolation interpolation);

/// The unit of keys' places.
enum class KeyUnit { Frames, Seconds };

struct Keyframe {
    double place = 0; ///< in frames or seconds, as KeyUnit says
    double value = 0;
    Interpolation toNext = Interpolation::Linear;

    bool operator==(const Keyframe&) const = default;
};

/** A value over time, constant before the first key and after the last. */
class Keyframes {
public:
    /// A constant value.
    explicit Keyframes(double value);

    /// Throws Error if there are no keys or their places do not increase.
    explicit Keyframes(std::vector<Keyframe> keys, KeyUnit unit = KeyUnit::Frames);

    /// Returns the value at `place`, in frames or seconds as unit() says.
    double at(double place) const;

    KeyUnit unit() const { return mUnit; }

    /// The keys, in the order of their places. There is at least one.
    const std::vector<Keyframe>& keys() const { return mKeys; }

    bool operator==(const Keyframes&) const = default;

private:
    std::vector<Keyframe> mKeys;
    KeyUnit mUnit = KeyUnit::Frames;
};

} // namespace Kerovane::Host
