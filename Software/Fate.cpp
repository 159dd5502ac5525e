#include "Software/Fate.h"

#include <algorithm>
#include <cmath>

namespace Kerovane::Software {

namespace {

inline float Distance(Location one, Location other) {
    const float x = one.x - other.x;
    const float y = one.y - other.y;
    return std::sqrt(x * x + y * y);
}

/// Returns the distance of `point` from the line through two others.
inline float DistanceFromLine(Location point, Location start, Location other) {
    const Location along{other.x - start.x, other.y - start.y};
    const Location to{point.x - start.x, point.y - start.y};
    const float share = (to.x * along.x + to.y * along.y) / (along.x * along.x + along.y * along.y);
    return Distance(point, {start.x + share * along.x, start.y + share * along.y});
}

float HalfDiagonal(std::ptrdiff_t width, std::ptrdiff_t height) {
    const double x = static_cast<double>(width) * 0.5;
    const double y = static_cast<double>(height) * 0.5;
    return static_cast<float>(std::sqrt(x * x + y * y));
}

/// Returns the angle folded into 0 to 360. 360 itself occurs: single precision rounds a tiny
/// negative angle plus 360 to it.
float Folded(float degrees) {
    const float folded = std::fmod(degrees, 360.0F);
    return folded < 0 ? folded + 360.0F : folded;
}

} // namespace

Fate::Front::Front(Fixed direction, float width, float height) {
    constexpr double kRadiansPerDegree = 0.017453292519943;
    const auto degrees = static_cast<float>(direction * 0x1p-16);
    const auto radians = static_cast<float>(degrees * kRadiansPerDegree);
    const Location unit{static_cast<float>(Sine(-static_cast<double>(radians))),
                        static_cast<float>(Cosine(static_cast<double>(radians)))};

    // The sweep starts at the corner that it moves away from. To get the depth, measures how far
    // both ends of that corner's diagonal are from the line through the origin that is parallel to
    // the front, and adds the two distances.
    const float folded = Folded(degrees);
    const bool fromLeft = folded < 90 || folded >= 270;
    const bool fromTop = folded < 180;
    start = {fromLeft ? 0 : width, fromTop ? 0 : height};
    along = {start.x + unit.x, start.y + unit.y};
    const bool falling = fromLeft == fromTop;
    const Location one{falling ? 0 : width, 0};
    const Location other{falling ? width : 0, height};
    depth = DistanceFromLine(one, {}, unit) + DistanceFromLine(other, {}, unit);
}

Fate::Fate(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height)
    : mRight(static_cast<float>(width) - 1),
      mBottom(static_cast<float>(height) - 1),
      mDissolved(Share(parameters.dissolve)),
      mRandom(0.34F, parameters.dissolveRandomSeed),
      mTransition(parameters.transition),
      mFront(parameters.direction, static_cast<float>(width), static_cast<float>(height)),
      mMiddle{static_cast<float>(width) * 0.5F, static_cast<float>(height) * 0.5F},
      mDepth(mTransition == Transition::Linear ? mFront.depth : HalfDiagonal(width, height)),
      mFeather(static_cast<float>(parameters.feather) / static_cast<float>(parameters.downsample)),
      mProgress(Share(parameters.transitionProgress)) {}

template <Transition kTransition, bool kRagged, bool kRandom>
bool Fate::isRemaining(Location point) const {
    point.x = std::min(std::max(point.x, 1.0F), mRight);
    point.y = std::min(std::max(point.y, 1.0F), mBottom);
    const float random = kRandom ? mRandom.atNear(point.x, point.y) : 0;
    const bool isDissolved = kRandom && random < mDissolved;

    constexpr bool kInward = kTransition == Transition::RadialIn;
    const float progress = kInward ? 1 - mProgress : mProgress;
    const float distance = kTransition == Transition::Linear
                               ? DistanceFromLine(point, mFront.start, mFront.along)
                               : Distance(point, mMiddle);
    bool isSwept = false;
    if constexpr (kRagged) {
        const float place = distance / (mDepth + mFeather);
        const bool isBehind = random * (mFeather / (mDepth + mFeather)) < progress - place;
        isSwept = isBehind != kInward;
    } else {
        const float place = distance / mDepth;
        isSwept = kInward ? progress < place : !(progress < place);
    }
    return !isDissolved && !isSwept;
}

template <Transition kTransition>
void Fate::decideSwept(std::span<const Location> points, std::span<std::int32_t> remains) const {
    const auto decideAll = [&]<bool kRagged, bool kRandom>() {
        for (std::size_t index = 0; index < points.size(); ++index) {
            remains[index] = isRemaining<kTransition, kRagged, kRandom>(points[index]) ? 1 : 0;
        }
    };
    if (mFeather >= 1) {
        decideAll.template operator()<true, true>();
    } else if (mDissolved > 0) {
        decideAll.template operator()<false, true>();
    } else {
        decideAll.template operator()<false, false>();
    }
}

void Fate::decide(std::span<const Location> points, std::span<std::int32_t> remains) const {
    switch (mTransition) {
    case Transition::Linear:
        return decideSwept<Transition::Linear>(points, remains);
    case Transition::RadialIn:
        return decideSwept<Transition::RadialIn>(points, remains);
    case Transition::RadialOut:
        return decideSwept<Transition::RadialOut>(points, remains);
    }
}

} // namespace Kerovane::Software
