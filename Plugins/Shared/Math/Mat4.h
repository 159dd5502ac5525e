#pragma once

#include "Plugins/Shared/Math/Affine.h"
#include "Plugins/Shared/Math/Vec3.h"
#include "Plugins/Shared/Math/Vec4.h"

#include <algorithm>
#include <concepts>
#include <functional>
#include <iterator>
#include <type_traits>

namespace Kerovane::Tesselune {

class Quaternion;

/**
 * A 4x4 transform matrix, right-handed, with angles in radians. Vectors are columns: a point
 * becomes M (x, y, z, 1), and in a product the right factor is applied first. Elements are stored
 * column by column: row r, column c at index 4 c + r, the translation at 12, 13 and 14.
 */
class Mat4 {
public:
    double mElements[16] = {
        1.0, 0.0, 0.0, 0.0, //
        0.0, 1.0, 0.0, 0.0, //
        0.0, 0.0, 1.0, 0.0, //
        0.0, 0.0, 0.0, 1.0,
    };

    // Construction and assignment

    constexpr Mat4() noexcept = default;
    /// Makes the identity if `identity`, else sets all elements to 0. Accepts only a bool, so that
    /// an array passed without `columnMajor` does not compile.
    explicit constexpr Mat4(std::same_as<bool> auto identity) noexcept;
    /// Takes the numbers column by column (storage order) if `columnMajor`, else row by row.
    constexpr Mat4(double n0, double n1, double n2, double n3, double n4, double n5, double n6,
                   double n7, double n8, double n9, double n10, double n11, double n12, double n13,
                   double n14, double n15, bool columnMajor) noexcept;
    /// Takes sixteen numbers from `array`: column by column if `columnMajor`, else row by row.
    constexpr Mat4(const double* array, bool columnMajor) noexcept;
    /// Takes the vectors as rows if `rows`, else as columns.
    constexpr Mat4(const Vec4& a, const Vec4& b, const Vec4& c, const Vec4& d, bool rows) noexcept;

    /// Takes the numbers row by row.
    constexpr void set(double n0, double n1, double n2, double n3, double n4, double n5, double n6,
                       double n7, double n8, double n9, double n10, double n11, double n12,
                       double n13, double n14, double n15) noexcept;
    constexpr void setZero() noexcept { *this = Mat4(false); }
    constexpr void setIdentity() noexcept { *this = Mat4(true); }
    [[nodiscard]] static constexpr Mat4 identity() noexcept { return Mat4(true); }

    // Basic transforms: each replaces the whole matrix

    constexpr void setTranslate(const Vec3& v) noexcept { setTranslate(v.x, v.y, v.z); }
    constexpr void setTranslate(double x, double y, double z) noexcept;
    constexpr void setScale(const Vec3& v) noexcept { setScale(v.x, v.y, v.z); }
    constexpr void setScale(double x, double y, double z) noexcept;
    /// Rotates about an axis of any length, right-handed. A zero axis counts as (1, 0, 0).
    void setRotation(double angle, const Vec3& axis) noexcept;
    void setRotation(double angle, double x, double y, double z) noexcept;
    void setXRotation(double angle) noexcept;
    void setYRotation(double angle) noexcept;
    void setZRotation(double angle) noexcept;
    /// Does not normalise the quaternion.
    void setWithQuaternion(const Quaternion& q) noexcept;
    /// Transforms the x and y of points and leaves z unchanged.
    constexpr void setWithAffine(const Affine& affine) noexcept;

    // Projections: each replaces the whole matrix. The view is along -z; the distances `zNear` and
    // `zFar` map to -1 and 1. Equal limits give infinities or NaN.

    /// `fovy` is the vertical angle of view, `aspect` is width / height.
    void setPerspective(double fovy, double aspect, double zNear, double zFar) noexcept;
    constexpr void setFrustum(double left, double right, double bottom, double top, double zNear,
                              double zFar) noexcept;
    /// Note the order: top before bottom, unlike setFrustum.
    constexpr void setOrtho(double left, double right, double top, double bottom, double zNear,
                            double zFar) noexcept;

    /**
     * Replaces the upper-left 3x3 part with an orientation whose z axis points from the target to
     * the eye. This is not a view matrix, which would be its inverse. All other elements stay. If
     * eye and target are equal, z is (0, 0, 1). If `up` is parallel to z, z is shifted by 1e-4
     * along (0, 0, 1) without being normalised again.
     */
    void setLookAt(const Vec3& eye, const Vec3& target, const Vec3& up) noexcept;
    void setLookAt(double eyeX, double eyeY, double eyeZ, double targetX, double targetY,
                   double targetZ, double upX, double upY, double upZ) noexcept;

    /// Returns the transform from a layer of the host (origin at the top left, y down) to GL
    /// (origin in the middle, y up, z reversed), both in pixels.
    static constexpr Mat4 getAEToGLConversionMatrix(double width, double height) noexcept;

    // Comparison

    /// Returns whether each element differs by at most 1e-12, inclusive.
    constexpr bool operator==(const Mat4& other) const noexcept;

    // Element by element

    constexpr void add(const Mat4& other) noexcept { add(*this, other, *this); }
    constexpr void subtract(const Mat4& other) noexcept { subtract(*this, other, *this); }
    static constexpr void add(const Mat4& a, const Mat4& b, Mat4& out) noexcept;
    static constexpr void subtract(const Mat4& a, const Mat4& b, Mat4& out) noexcept;
    constexpr Mat4 operator+(const Mat4& other) const noexcept;
    constexpr Mat4 operator-(const Mat4& other) const noexcept;
    constexpr Mat4 operator*(double factor) const noexcept;

    // Access: rows and columns from 0 to 3

    constexpr double at(int row, int column) const noexcept { return mElements[4 * column + row]; }
    constexpr void setRow(int i, const Vec4& row) noexcept;
    constexpr Vec4 getRow(int i) const noexcept;
    constexpr void setColumn(int i, const Vec4& column) noexcept;
    constexpr Vec4 getColumn(int i) const noexcept;
    /// Sets the translation only.
    constexpr void position(const Vec3& translation) noexcept;
    /// Returns the effect of the matrix on x and y at z = 0.
    constexpr Affine getAffine() const noexcept;
    /// Returns the length of the longest axis: of the upper three elements of columns 0 to 2.
    double getMaxScaleOnAxis() const noexcept;

    // Transposition and inverse. `out` may be this matrix.

    constexpr void setTranspose() noexcept { transpose(*this); }
    constexpr void transpose(Mat4& out) const noexcept;
    constexpr double determinant() const noexcept;
    /// Returns false and writes the identity if the determinant is exactly 0.
    [[nodiscard]] constexpr bool getInverse(Mat4& out) const noexcept;

    // Product of matrices

    /// this = this * other: `other` is applied first.
    constexpr void mult(const Mat4& other) noexcept { mult(*this, other, *this); }
    /// out = a * b. `out` may be a or b.
    static constexpr void mult(const Mat4& a, const Mat4& b, Mat4& out) noexcept;
    constexpr Mat4 operator*(const Mat4& other) const noexcept;

    // Each of these steps is applied before this matrix. The w of a Vec4 is ignored.

    constexpr void translate(double x, double y, double z) noexcept;
    constexpr void translate(const Vec3& v) noexcept { translate(v.x, v.y, v.z); }
    constexpr void translate(const Vec4& v) noexcept { translate(v.x, v.y, v.z); }
    constexpr void scale(double x, double y, double z) noexcept;
    constexpr void scale(const Vec3& v) noexcept { scale(v.x, v.y, v.z); }
    constexpr void scale(const Vec4& v) noexcept { scale(v.x, v.y, v.z); }
    void rotate(double angle, double x, double y, double z) noexcept;
    void rotate(double angle, const Vec3& axis) noexcept;
    void rotate(double angle, const Vec4& axis) noexcept { rotate(angle, axis.getVec3()); }
    void rotateX(double angle) noexcept;
    void rotateY(double angle) noexcept;
    void rotateZ(double angle) noexcept;

    // Product with vectors

    [[nodiscard]] constexpr Vec4 mult(const Vec4& v) const noexcept;
    constexpr Vec4 operator*(const Vec4& v) const noexcept { return mult(v); }
    /// Transforms a point, without division by w.
    [[nodiscard]] constexpr Vec3 mult(const Vec3& v) const noexcept;
    constexpr Vec3 operator*(const Vec3& v) const noexcept { return mult(v); }
    /// Transforms a direction: ignores the translation.
    [[nodiscard]] constexpr Vec3 multWithoutTranslate(const Vec3& v) const noexcept;
    /// Transforms a point and divides by w.
    [[nodiscard]] constexpr Vec3 multAndProject(const Vec3& v) const noexcept;

    // Composition and decomposition

    /// Scales, then rotates, then moves.
    void compose(const Vec3& position, const Quaternion& q, const Vec3& scale) noexcept;

    /// Scales and rotates about `anchor` and moves it to `position`, as the host places a layer.
    void compose(const Vec3& anchor, const Vec3& position, const Quaternion& q,
                 const Vec3& scale) noexcept;

    /**
     * The inverse of compose, for a matrix without shear. A reflection is put into the sign of the
     * x scale; a scale of exactly 0 becomes 1e-6.
     */
    void decompose(Vec3& position, Quaternion& q, Vec3& scale) const noexcept;
    void decompose(const Vec3& anchor, Vec3& position, Quaternion& q, Vec3& scale) const noexcept;

private:
    constexpr double& element(int row, int column) noexcept { return mElements[4 * column + row]; }

    /// The 2x2 minors of a pair of rows, named after their two columns.
    struct Minors {
        double xy, xz, xw, yz, yw, zw;
    };
    constexpr Minors minors(int row, int otherRow) const noexcept;

    /// Computes the determinant from the minors of the first two rows and those of the last two.
    static constexpr double determinant(const Minors& upper, const Minors& lower) noexcept;

    /// Returns the 3x3 minors of `row` and the two rows whose minors are `pair`, with alternating
    /// signs; component i leaves out column i.
    static constexpr Vec4 cofactors(const Vec4& row, const Minors& pair) noexcept;

    /// Multiplies the upper three elements of each of the first three columns by its factor.
    constexpr void scaleAxes(const Vec3& factors) noexcept;
};

static_assert(std::is_trivially_copyable_v<Mat4> && std::is_standard_layout_v<Mat4>);
static_assert(sizeof(Mat4) == 16 * sizeof(double));

constexpr Mat4::Mat4(std::same_as<bool> auto identity) noexcept {
    if (!identity) {
        std::ranges::fill(mElements, 0.0);
    }
}

constexpr Mat4::Mat4(double n0, double n1, double n2, double n3, double n4, double n5, double n6,
                     double n7, double n8, double n9, double n10, double n11, double n12,
                     double n13, double n14, double n15, bool columnMajor) noexcept
    : mElements{n0, n1, n2, n3, n4, n5, n6, n7, n8, n9, n10, n11, n12, n13, n14, n15} {
    if (!columnMajor) {
        setTranspose();
    }
}

constexpr Mat4::Mat4(const double* array, bool columnMajor) noexcept {
    std::copy_n(array, std::size(mElements), mElements);
    if (!columnMajor) {
        setTranspose();
    }
}

constexpr Mat4::Mat4(const Vec4& a, const Vec4& b, const Vec4& c, const Vec4& d,
                     bool rows) noexcept {
    setColumn(0, a);
    setColumn(1, b);
    setColumn(2, c);
    setColumn(3, d);
    if (rows) {
        setTranspose();
    }
}

constexpr void Mat4::set(double n0, double n1, double n2, double n3, double n4, double n5,
                         double n6, double n7, double n8, double n9, double n10, double n11,
                         double n12, double n13, double n14, double n15) noexcept {
    *this = Mat4(n0, n1, n2, n3, n4, n5, n6, n7, n8, n9, n10, n11, n12, n13, n14, n15, false);
}

constexpr void Mat4::setTranslate(double x, double y, double z) noexcept {
    setIdentity();
    position({x, y, z});
}

constexpr void Mat4::setScale(double x, double y, double z) noexcept {
    set(x, 0.0, 0.0, 0.0, //
        0.0, y, 0.0, 0.0, //
        0.0, 0.0, z, 0.0, //
        0.0, 0.0, 0.0, 1.0);
}

constexpr void Mat4::setWithAffine(const Affine& affine) noexcept {
    set(affine.a, affine.c, 0.0, affine.e, //
        affine.b, affine.d, 0.0, affine.f, //
        0.0, 0.0, 1.0, 0.0,                //
        0.0, 0.0, 0.0, 1.0);
}

constexpr void Mat4::setFrustum(double left, double right, double bottom, double top, double zNear,
                                double zFar) noexcept {
    const double width = right - left;
    const double height = top - bottom;
    const double depth = zFar - zNear;
    set(2.0 * zNear / width, 0.0, (right + left) / width, 0.0,          //
        0.0, 2.0 * zNear / height, (top + bottom) / height, 0.0,        //
        0.0, 0.0, -(zNear + zFar) / depth, -2.0 * zFar * zNear / depth, //
        0.0, 0.0, -1.0, 0.0);
}

constexpr void Mat4::setOrtho(double left, double right, double top, double bottom, double zNear,
                              double zFar) noexcept {
    const double width = right - left;
    const double height = top - bottom;
    const double depth = zFar - zNear;
    set(2.0 / width, 0.0, 0.0, -(right + left) / width,   //
        0.0, 2.0 / height, 0.0, -(top + bottom) / height, //
        0.0, 0.0, -2.0 / depth, -(zNear + zFar) / depth,  //
        0.0, 0.0, 0.0, 1.0);
}

constexpr Mat4 Mat4::getAEToGLConversionMatrix(double width, double height) noexcept {
    return {1.0, 0.0,  0.0,  -width * 0.5, //
            0.0, -1.0, 0.0,  height * 0.5, //
            0.0, 0.0,  -1.0, 0.0,          //
            0.0, 0.0,  0.0,  1.0,          false};
}

constexpr bool Mat4::operator==(const Mat4& other) const noexcept {
    return std::ranges::equal(mElements, other.mElements,
                              [](double a, double b) { return Float::fuzzyEqual(a, b); });
}

constexpr void Mat4::add(const Mat4& a, const Mat4& b, Mat4& out) noexcept {
    std::ranges::transform(a.mElements, b.mElements, out.mElements, std::plus());
}

constexpr void Mat4::subtract(const Mat4& a, const Mat4& b, Mat4& out) noexcept {
    std::ranges::transform(a.mElements, b.mElements, out.mElements, std::minus());
}

constexpr Mat4 Mat4::operator+(const Mat4& other) const noexcept {
    Mat4 sum;
    add(*this, other, sum);
    return sum;
}

constexpr Mat4 Mat4::operator-(const Mat4& other) const noexcept {
    Mat4 difference;
    subtract(*this, other, difference);
    return difference;
}

constexpr Mat4 Mat4::operator*(double factor) const noexcept {
    Mat4 scaled = *this;
    for (double& element : scaled.mElements) {
        element *= factor;
    }
    return scaled;
}

constexpr void Mat4::setRow(int i, const Vec4& row) noexcept {
    element(i, 0) = row.x;
    element(i, 1) = row.y;
    element(i, 2) = row.z;
    element(i, 3) = row.w;
}

constexpr Vec4 Mat4::getRow(int i) const noexcept {
    return {at(i, 0), at(i, 1), at(i, 2), at(i, 3)};
}

constexpr void Mat4::setColumn(int i, const Vec4& column) noexcept {
    element(0, i) = column.x;
    element(1, i) = column.y;
    element(2, i) = column.z;
    element(3, i) = column.w;
}

constexpr Vec4 Mat4::getColumn(int i) const noexcept {
    return {at(0, i), at(1, i), at(2, i), at(3, i)};
}

constexpr void Mat4::position(const Vec3& translation) noexcept {
    translation.toArray(mElements, 12);
}

constexpr Affine Mat4::getAffine() const noexcept {
    return {mElements[0], mElements[1], mElements[4], mElements[5], mElements[12], mElements[13]};
}

constexpr void Mat4::transpose(Mat4& out) const noexcept {
    out = Mat4(getRow(0), getRow(1), getRow(2), getRow(3), false);
}

constexpr Mat4::Minors Mat4::minors(int row, int otherRow) const noexcept {
    const Vec4 a = getRow(row);
    const Vec4 b = getRow(otherRow);
    return {a.x * b.y - a.y * b.x, a.x * b.z - a.z * b.x, a.x * b.w - a.w * b.x,
            a.y * b.z - a.z * b.y, a.y * b.w - a.w * b.y, a.z * b.w - a.w * b.z};
}

constexpr double Mat4::determinant(const Minors& upper, const Minors& lower) noexcept {
    // Summed in pairs, so that the terms of two equal columns cancel to exactly 0.
    return (upper.xy * lower.zw + upper.zw * lower.xy) -
           (upper.xz * lower.yw + upper.yw * lower.xz) +
           (upper.xw * lower.yz + upper.yz * lower.xw);
}

constexpr Vec4 Mat4::cofactors(const Vec4& row, const Minors& pair) noexcept {
    return {row.y * pair.zw - row.z * pair.yw + row.w * pair.yz,
            row.z * pair.xw - row.x * pair.zw - row.w * pair.xz,
            row.x * pair.yw - row.y * pair.xw + row.w * pair.xy,
            row.y * pair.xz - row.x * pair.yz - row.z * pair.xy};
}

constexpr double Mat4::determinant() const noexcept {
    return determinant(minors(0, 1), minors(2, 3));
}

constexpr bool Mat4::getInverse(Mat4& out) const noexcept {
    const Minors upper = minors(0, 1);
    const Minors lower = minors(2, 3);
    const double fullDeterminant = determinant(upper, lower);
    if (fullDeterminant == 0.0) {
        out.setIdentity();
        return false;
    }
    const double i = 1.0 / fullDeterminant;
    out = Mat4(cofactors(getRow(1), lower) * i, cofactors(getRow(0), lower) * -i,
               cofactors(getRow(3), upper) * i, cofactors(getRow(2), upper) * -i, false);
    return true;
}

constexpr void Mat4::mult(const Mat4& a, const Mat4& b, Mat4& out) noexcept {
    out = Mat4(a.mult(b.getColumn(0)), a.mult(b.getColumn(1)), a.mult(b.getColumn(2)),
               a.mult(b.getColumn(3)), false);
}

constexpr Mat4 Mat4::operator*(const Mat4& other) const noexcept {
    Mat4 product;
    mult(*this, other, product);
    return product;
}

constexpr void Mat4::translate(double x, double y, double z) noexcept {
    const Vec4 step = getColumn(0) * x + getColumn(1) * y + getColumn(2) * z;
    setColumn(3, getColumn(3) + step);
}

constexpr void Mat4::scale(double x, double y, double z) noexcept {
    setColumn(0, getColumn(0) * x);
    setColumn(1, getColumn(1) * y);
    setColumn(2, getColumn(2) * z);
}

constexpr void Mat4::scaleAxes(const Vec3& factors) noexcept {
    const Vec4 fourthRow = getRow(3);
    scale(factors);
    setRow(3, fourthRow);
}

constexpr Vec4 Mat4::mult(const Vec4& v) const noexcept {
    return getColumn(0) * v.x + getColumn(1) * v.y + getColumn(2) * v.z + getColumn(3) * v.w;
}

constexpr Vec3 Mat4::mult(const Vec3& v) const noexcept {
    return mult(Vec4(v, 1.0)).getVec3();
}

constexpr Vec3 Mat4::multWithoutTranslate(const Vec3& v) const noexcept {
    return mult(Vec4(v, 0.0)).getVec3();
}

constexpr Vec3 Mat4::multAndProject(const Vec3& v) const noexcept {
    const Vec4 homogeneous = mult(Vec4(v, 1.0));
    return homogeneous.getVec3() * (1.0 / homogeneous.w);
}

} // namespace Kerovane::Tesselune
