#pragma once

#include "Plugins/Shared/Math/VectorFamily.h"

#include <type_traits>

namespace Kerovane::Tesselune {

/** A point or a size in the plane. Angles are in degrees, from the x axis towards the y axis. */
class Vec2 : public PointFamily<Vec2> {
public:
    double x = 0.0;
    double y = 0.0;

    // Construction and assignment

    constexpr Vec2() noexcept = default;
    constexpr Vec2(double newX, double newY) noexcept : x(newX), y(newY) {}

    constexpr void set(double newX, double newY) noexcept { *this = Vec2(newX, newY); }
    constexpr void set(const Vec2& other) noexcept { *this = other; }

    /// Reads array[offset] and array[offset + 1]. A null array changes nothing.
    constexpr void fromArray(const double* array, int offset) noexcept;

    /// Applies `function` to the components of `vectors`, one component at a time.
    template <typename Function, typename... Vectors>
    static constexpr Vec2 map(Function function, const Vectors&... vectors) {
        return {function(vectors.x...), function(vectors.y...)};
    }

    // Comparison

    /// Returns whether every component is exactly 0.
    constexpr bool isZero() const noexcept { return x == 0.0 && y == 0.0; }

    /// Returns whether each component differs by at most the tolerance, inclusive.
    constexpr bool equal(const Vec2& other, double tolerance = Float::epsilon) const noexcept;

    /// Returns whether the distance is below the tolerance, strictly.
    static constexpr bool equalWithTolerance(double x1, double y1, double x2, double y2,
                                             double tolerance) noexcept;
    static constexpr bool equalWithTolerance(const Vec2& a, const Vec2& b,
                                             double tolerance) noexcept;

    /// Returns whether both components differ by less than 0.25, strictly.
    static constexpr bool isDuplicate(const Vec2& a, const Vec2& b) noexcept;

    /// Return whether the number, or both components, are strictly within 1e-12 of 0.
    static constexpr bool negligible(double value) noexcept;
    constexpr bool negligible() const noexcept { return negligible(x) && negligible(y); }
    constexpr bool nonNegligible() const noexcept { return !negligible(); }

    // Return whether two vectors are parallel (isCollinear) or at a right angle (isOrthogonal). The
    // magnitude of their cross or dot product may be at most 1e-12 times the product of their
    // lengths. Both functions return true if one of the vectors is zero. The result is meaningless
    // if a squared length, or the product of the two squared lengths, overflows or underflows.

    bool isCollinear(const Vec2& other) const noexcept;
    bool isOrthogonal(const Vec2& other) const noexcept;

    // Arithmetic, in addition to that of VectorFamily

    /// Returns the component-wise remainders, with the signs of this vector, as fmod computes them.
    [[nodiscard]] Vec2 modulo(const Vec2& other) const noexcept;
    Vec2 operator%(const Vec2& other) const noexcept { return modulo(other); }

    // Products

    constexpr double dot(const Vec2& other) const noexcept { return x * other.x + y * other.y; }
    constexpr double dotProduction(const Vec2& other) const noexcept { return dot(other); }
    constexpr double cross(const Vec2& other) const noexcept { return x * other.y - y * other.x; }
    /// Returns the determinant a d - b c.
    static constexpr double cross(double a, double b, double c, double d) noexcept {
        return a * d - b * c;
    }

    // Length and distance

    using PointFamily::normalize;
    /// Scales the pair to length 1 in place. Does nothing if its length is 1e-12 or less.
    static void normalize(double* x, double* y) noexcept;

    static constexpr double distanceSquared(const Vec2& a, const Vec2& b) noexcept {
        return (a - b).lengthSquare();
    }
    /// Returns the distance to the line through a and b; NaN if a equals b.
    double distanceToLine(const Vec2& a, const Vec2& b) const noexcept;
    /// Returns the distance from a to this point's foot on the line through a and b; NaN if a
    /// equals b.
    double lineProjectionLength(const Vec2& a, const Vec2& b) const noexcept;
    /// Returns the projection of this vector onto `onto`; zero if `onto` is exactly zero.
    [[nodiscard]] constexpr Vec2 project(const Vec2& onto) const noexcept;

    // Rotation and direction, in degrees. A rotation by exactly 0 changes no bit.

    void rotate(double degrees) noexcept;
    void rotateAround(double degrees, const Vec2& center) noexcept;
    /// Returns this point rotated about the centre.
    [[nodiscard]] Vec2 rotateRound(double degrees, const Vec2& center) const noexcept;

    /// Returns the direction, -180 to 180; 0 for the zero vector.
    double getAngle() const noexcept;
    /// Turns the vector to the direction; keeps the length.
    void setAngle(double degrees) noexcept;
    /// Returns the signed angle from this vector to the other, -180 to 180.
    double angleBetween(const Vec2& other) const noexcept;

    /// Returns the quadrant, 1 to 4, counterclockwise with y upwards. Zero counts as positive.
    constexpr int getQuadrant() const noexcept;
    /// Returns whether the signs (negative, zero or positive) of a and b differ in both x and y, or
    /// differ in one while the other is zero in both vectors.
    static constexpr bool oppositeQuadrant(const Vec2& a, const Vec2& b) noexcept;

    /// Returns the vector after a quarter turn from x towards y: (-y, x).
    constexpr Vec2 normal() const noexcept { return {-y, x}; }
    constexpr Vec2 perpindicularLeft() const noexcept { return normal(); }
    constexpr Vec2 perpindicularRight() const noexcept { return {y, -x}; }
    /// Becomes normal().
    constexpr void prepen() noexcept { *this = normal(); }

    /// Returns y / x; infinite or NaN if x is 0.
    constexpr double slope() const noexcept { return y / x; }

    /// Gives each component the sign of the same component of `other`. Zero counts as not positive.
    constexpr void followSigns(const Vec2& other) noexcept;

    // Conversion between picture coordinates with the origin at the centre and y up, and those with
    // the origin at the top left and y down

    static constexpr Vec2 centerToTopLefetPoint(const Vec2& point, const Vec2& size) noexcept {
        return {point.x + size.x * 0.5, size.y * 0.5 - point.y};
    }
    static constexpr Vec2 topLeftToCenterPoint(const Vec2& point, const Vec2& size) noexcept {
        return {point.x - size.x * 0.5, size.y * 0.5 - point.y};
    }

    // Lines and triangles

    /// Returns twice the area of the triangle; positive if a, b, c turn from x towards y.
    static constexpr double signedArea(const Vec2& a, const Vec2& b, const Vec2& c) noexcept {
        return (b - a).cross(c - a);
    }

    /// Returns whether the line through a and b separates c from d. A point on the line counts as
    /// on the side of negative area.
    static constexpr bool intersecting(const Vec2& a, const Vec2& b, const Vec2& c,
                                       const Vec2& d) noexcept;

    /// Returns whether p points from b towards a: (a - b) . p > 0.
    static constexpr bool anchorOutwardD(const Vec2& p, const Vec2& a, const Vec2& b) noexcept {
        return (a - b).dot(p) > 0.0;
    }
    /// Negates p unless anchorOutwardD(p, a, b) holds; if `inward`, negates p if anchorOutwardD
    /// does hold. Returns whether p was negated.
    static constexpr bool anchorOutward(Vec2& p, const Vec2& a, const Vec2& b,
                                        bool inward = false) noexcept;
    static constexpr bool anchorInward(Vec2& p, const Vec2& a, const Vec2& b) noexcept {
        return anchorOutward(p, a, b, true);
    }

    /**
     * Intersects the segments a-b and c-d. `out` gets the point at t along a-b (0 at a, 1 at b),
     * which is the point at u along c-d; t and u may be null. The result is
     *
     * - 1: the segments meet, ends included;
     * - 3: their lines meet outside a-b; 4: outside c-d; 5: outside both;
     * - 0: the lines are parallel; `out` is (0, 0), t and u are not written;
     * - 2: the lines coincide; `out` is the middle of a-b, t and u are not written.
     */
    static constexpr int intersect(const Vec2& a, const Vec2& b, const Vec2& c, const Vec2& d,
                                   Vec2& out, double* t, double* u) noexcept;
};

static_assert(std::is_trivially_copyable_v<Vec2> && std::is_standard_layout_v<Vec2>);
static_assert(sizeof(Vec2) == 2 * sizeof(double));

constexpr void Vec2::fromArray(const double* array, int offset) noexcept {
    if (array != nullptr) {
        set(array[offset], array[offset + 1]);
    }
}

constexpr bool Vec2::equal(const Vec2& other, double tolerance) const noexcept {
    return Float::fuzzyEqual(x, other.x, tolerance) && Float::fuzzyEqual(y, other.y, tolerance);
}

constexpr bool Vec2::equalWithTolerance(double x1, double y1, double x2, double y2,
                                        double tolerance) noexcept {
    return equalWithTolerance(Vec2(x1, y1), Vec2(x2, y2), tolerance);
}

constexpr bool Vec2::equalWithTolerance(const Vec2& a, const Vec2& b, double tolerance) noexcept {
    return tolerance * tolerance > distanceSquared(a, b);
}

constexpr bool Vec2::isDuplicate(const Vec2& a, const Vec2& b) noexcept {
    const auto isNear = [](double difference) { return -0.25 < difference && difference < 0.25; };
    return isNear(b.x - a.x) && isNear(b.y - a.y);
}

constexpr bool Vec2::negligible(double value) noexcept {
    return -Float::epsilon < value && value < Float::epsilon;
}

constexpr Vec2 Vec2::project(const Vec2& onto) const noexcept {
    return onto.isZero() ? Vec2() : onto * (dot(onto) / onto.dot(onto));
}

constexpr int Vec2::getQuadrant() const noexcept {
    if (x >= 0.0) {
        return y >= 0.0 ? 1 : 4;
    }
    return y >= 0.0 ? 2 : 3;
}

constexpr bool Vec2::oppositeQuadrant(const Vec2& a, const Vec2& b) noexcept {
    const auto sign = [](double value) { return (value > 0.0 ? 1 : 0) - (value < 0.0 ? 1 : 0); };
    const bool differInX = sign(a.x) != sign(b.x);
    const bool differInY = sign(a.y) != sign(b.y);
    if (differInX && differInY) {
        return true;
    }
    return (differInX && sign(a.y) == 0) || (differInY && sign(a.x) == 0);
}

constexpr void Vec2::followSigns(const Vec2& other) noexcept {
    const auto withSignOf = [](double value, double model) {
        return (value > 0.0) != (model > 0.0) ? -value : value;
    };
    *this = map(withSignOf, *this, other);
}

constexpr bool Vec2::intersecting(const Vec2& a, const Vec2& b, const Vec2& c,
                                  const Vec2& d) noexcept {
    return (signedArea(a, b, c) > 0.0) != (signedArea(a, b, d) > 0.0);
}

constexpr bool Vec2::anchorOutward(Vec2& p, const Vec2& a, const Vec2& b, bool inward) noexcept {
    if (anchorOutwardD(p, a, b) != inward) {
        return false;
    }
    p = p.negate();
    return true;
}

constexpr int Vec2::intersect(const Vec2& a, const Vec2& b, const Vec2& c, const Vec2& d, Vec2& out,
                              double* t, double* u) noexcept {
    const Vec2 alongAB = b - a;
    const Vec2 alongCD = d - c;
    const double denominator = alongAB.cross(alongCD);
    const double numeratorT = alongCD.cross(a - c);
    const double numeratorU = alongAB.cross(a - c);
    if (negligible(denominator)) {
        const bool coincident = negligible(numeratorT) && negligible(numeratorU);
        out = coincident ? (a + b) * 0.5 : Vec2();
        return coincident ? 2 : 0;
    }

    const double atT = numeratorT / denominator;
    const double atU = numeratorU / denominator;
    if (t != nullptr) {
        *t = atT;
    }
    if (u != nullptr) {
        *u = atU;
    }
    out = alongAB * atT + a;

    const auto isOutside = [](double position) { return position < 0.0 || position > 1.0; };
    if (isOutside(atT)) {
        return isOutside(atU) ? 5 : 3;
    }
    return isOutside(atU) ? 4 : 1;
}

} // namespace Kerovane::Tesselune
