#include "Tests/Math/MathTest.h"

#include <glm/ext/matrix_clip_space.hpp>
#include <glm/ext/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

#include <functional>
#include <numeric>

namespace Kerovane::Tesselune {

namespace {

Mat4 fromGlm(const glm::dmat4& m) {
    return {glm::value_ptr(m), true};
}

Mat4 translation(const Vec3& v) {
    return after(Mat4(), [&](Mat4& m) { m.setTranslate(v); });
}

Mat4 scaling(const Vec3& v) {
    return after(Mat4(), [&](Mat4& m) { m.setScale(v); });
}

Mat4 rotation(const Quaternion& q) {
    return after(Mat4(), [&](Mat4& m) { m.setWithQuaternion(q); });
}

} // namespace

TEST(Mat4Construction, ReadsRowsOrColumns) {
    double n[16];
    std::iota(std::begin(n), std::end(n), 0.0);
    const Vec4 v[] = {{0.0, 1.0, 2.0, 3.0},
                      {4.0, 5.0, 6.0, 7.0},
                      {8.0, 9.0, 10.0, 11.0},
                      {12.0, 13.0, 14.0, 15.0}};
    const Mat4 inColumns(n, true);
    const Mat4 inRows = toMat4(toEigen(inColumns).transpose());
    EXPECT_EQ(numbers(inColumns), Numbers(std::begin(n), std::end(n)));
    EXPECT_EQ(inColumns.at(1, 2), 9.0);
    EXPECT_SAME(Mat4(n, false), inRows);
    EXPECT_SAME(Mat4(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, true), inColumns);
    EXPECT_SAME(Mat4(v[0], v[1], v[2], v[3], true), inRows);
    EXPECT_SAME(Mat4(v[0], v[1], v[2], v[3], false), inColumns);
    Mat4 m;
    m.set(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    EXPECT_SAME(m, inRows);
    m.setTranspose();
    EXPECT_SAME(m, inColumns);
    m.transpose(m);
    EXPECT_SAME(m, inRows);
    m.setZero();
    EXPECT_SAME(m, Mat4(Vec4(), Vec4(), Vec4(), Vec4(), true));
    m.setIdentity();
    EXPECT_SAME(m, toMat4(Eigen::Matrix4d::Identity()));
    EXPECT_TRUE(same(m, Mat4()) && same(m, Mat4::identity()));
    // An array without `columnMajor` must not convert to the bool constructor.
    static_assert(!std::is_constructible_v<Mat4, const double*>);
}

TEST(Mat4Algebra, AgreesWithEigen) {
    for (Random& random : trials()) {
        const Mat4 a = random.mat4();
        const Mat4 b = random.mat4();
        const Eigen::Matrix4d eigenA = toEigen(a);
        const Eigen::Matrix4d eigenB = toEigen(b);

        const Mat4 product = a * b;
        EXPECT_CLOSE(product, toMat4(eigenA * eigenB), 1e-11);
        EXPECT_SAME(after(a, [&](Mat4& m) { m.mult(b); }), product);
        EXPECT_SAME(after(a, [&](Mat4& m) { Mat4::mult(m, b, m); }), product);
        EXPECT_SAME(after(b, [&](Mat4& m) { Mat4::mult(a, m, m); }), product);

        EXPECT_SAME(a + b, toMat4(eigenA + eigenB));
        EXPECT_SAME(after(a, [&](Mat4& m) { m.add(b); }), a + b);
        EXPECT_SAME(a - b, toMat4(eigenA - eigenB));
        EXPECT_SAME(after(a, [&](Mat4& m) { m.subtract(b); }), a - b);
        EXPECT_SAME(a * 3.0, toMat4(eigenA * 3.0));

        EXPECT_NEAR(a.determinant(), eigenA.determinant(), 1e-9);
        Mat4 out;
        EXPECT_TRUE(a.getInverse(out));
        EXPECT_CLOSE(out, toMat4(eigenA.inverse()), 1e-9);
        EXPECT_CLOSE(a * out, Mat4(), 1e-9);
        out = a;
        EXPECT_TRUE(out.getInverse(out));
        EXPECT_CLOSE(out * a, Mat4(), 1e-9);
        const Eigen::Matrix3d axes = eigenA.topLeftCorner<3, 3>();
        EXPECT_DOUBLE_EQ(a.getMaxScaleOnAxis(), axes.colwise().norm().maxCoeff());
    }
}

TEST(Mat4Algebra, ReportsASingularMatrixAndGivesTheIdentity) {
    Random random;
    const auto expectSingular = [&](const Mat4& m) {
        EXPECT_EQ(m.determinant(), 0.0);
        Mat4 out = random.mat4();
        EXPECT_FALSE(m.getInverse(out));
        EXPECT_SAME(out, Mat4());
    };
    for (int i = 0; i < 4; ++i) {
        Mat4 zeroColumn = random.mat4();
        zeroColumn.setColumn(i, Vec4());
        expectSingular(zeroColumn);
        Mat4 zeroRow = random.mat4();
        zeroRow.setRow(i, Vec4());
        expectSingular(zeroRow);
        for (int j = 0; j < i; ++j) {
            Mat4 equalColumns = random.mat4();
            equalColumns.setColumn(i, equalColumns.getColumn(j));
            expectSingular(equalColumns);
        }
    }
}

TEST(Mat4Vectors, TransformPointsDirectionsAndProjections) {
    for (Random& random : trials()) {
        const Mat4 m = random.mat4();
        const Vec4 v = random.vec4();
        const Eigen::Vector4d mapped = toEigen(m) * Eigen::Vector4d(v.x, v.y, v.z, v.w);
        EXPECT_CLOSE(m * v, Vec4(mapped.x(), mapped.y(), mapped.z(), mapped.w()));
        EXPECT_SAME(m.mult(v), m * v);

        const Vec3 p = v.getVec3();
        const Vec4 point = m * Vec4(p, 1.0);
        EXPECT_SAME(m * p, point.getVec3());
        EXPECT_SAME(m.mult(p), point.getVec3());
        EXPECT_CLOSE(m.multWithoutTranslate(p) + m.getColumn(3).getVec3(), m * p);
        EXPECT_CLOSE(m.multAndProject(p) * point.w, point.getVec3());
    }
}

TEST(Mat4Transforms, AgreeWithEigenAndReplaceTheWhole) {
    for (Random& random : trials()) {
        const Vec3 v = random.vec3();
        const double angle = random.number();
        const auto about = [&](const Vec3& axis) {
            return toMat4(Eigen::Affine3d(Eigen::AngleAxisd(angle, toEigen(axis).normalized())));
        };
        const auto replaced = [&](auto replace) { return after(random.mat4(), replace); };
        EXPECT_SAME(replaced([&](Mat4& m) { m.setTranslate(v.x, v.y, v.z); }),
                    toMat4(Eigen::Affine3d(Eigen::Translation3d(toEigen(v)))));
        EXPECT_SAME(replaced([&](Mat4& m) { m.setScale(v.x, v.y, v.z); }),
                    toMat4(Eigen::Affine3d(Eigen::Scaling(toEigen(v)))));
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setRotation(angle, v); }), about(v));
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setRotation(angle, v.x, v.y, v.z); }), about(v));
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setXRotation(angle); }), about({1.0, 0.0, 0.0}));
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setYRotation(angle); }), about({0.0, 1.0, 0.0}));
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setZRotation(angle); }), about({0.0, 0.0, 1.0}));
        const Quaternion q = random.rotation();
        EXPECT_CLOSE(replaced([&](Mat4& m) { m.setWithQuaternion(q); }),
                     toMat4(Eigen::Affine3d(toEigen(q))));
    }
    EXPECT_TRUE(after(Mat4(), [](Mat4& m) { m.setRotation(0.5, Vec3()); }) ==
                after(Mat4(), [](Mat4& m) { m.setXRotation(0.5); }));
}

TEST(Mat4Transforms, DoNotScaleAQuaternionToLengthOne) {
    EXPECT_EQ(rotation(Quaternion(2.0, 0.0, 0.0, 0.0)).at(1, 1), -7.0);
}

TEST(Mat4Transforms, EmbedAffineTransforms) {
    const Affine plane(1.0, 2.0, 3.0, 4.0, 5.0, 6.0);
    const Mat4 m = after(Random().mat4(), [&](Mat4& whole) { whole.setWithAffine(plane); });
    const Vec2 p(7.0, 8.0);
    EXPECT_SAME(m * Vec3(p, 9.0), Vec3(plane.getTransform(p), 9.0));
    EXPECT_SAME(m.getRow(2), Vec4(0.0, 0.0, 1.0, 0.0));
    EXPECT_SAME(m.getRow(3), Vec4(0.0, 0.0, 0.0, 1.0));
    EXPECT_SAME(m.getAffine(), plane);
}

TEST(Mat4Steps, ApplyBeforeTheMatrix) {
    using Change = std::function<void(Mat4&)>;
    const Vec3 v(2.0, -3.0, 0.5);
    const Vec4 v4(v, 99.0);
    const Table<Change, std::vector<Change>> steps = {
        {[=](Mat4& m) { m.setTranslate(v); },
         {[=](Mat4& m) { m.translate(v); }, [=](Mat4& m) { m.translate(v4); },
          [=](Mat4& m) { m.translate(v.x, v.y, v.z); }}},
        {[=](Mat4& m) { m.setScale(v); },
         {[=](Mat4& m) { m.scale(v); }, [=](Mat4& m) { m.scale(v4); },
          [=](Mat4& m) { m.scale(v.x, v.y, v.z); }}},
        {[=](Mat4& m) { m.setRotation(0.7, v); },
         {[=](Mat4& m) { m.rotate(0.7, v); }, [=](Mat4& m) { m.rotate(0.7, v4); },
          [=](Mat4& m) { m.rotate(0.7, v.x, v.y, v.z); }}},
        {[](Mat4& m) { m.setXRotation(0.7); }, {[](Mat4& m) { m.rotateX(0.7); }}},
        {[](Mat4& m) { m.setYRotation(0.7); }, {[](Mat4& m) { m.rotateY(0.7); }}},
        {[](Mat4& m) { m.setZRotation(0.7); }, {[](Mat4& m) { m.rotateZ(0.7); }}},
    };
    Random random;
    for (const auto& [replace, spellings] : steps) {
        const Mat4 before = random.mat4(); // its fourth row is arbitrary
        for (const Change& spelling : spellings) {
            EXPECT_CLOSE(after(before, spelling), before * after(Mat4(), replace));
        }
    }
}

TEST(Mat4Projection, AgreesWithGlm) {
    for (Random& random : trials()) {
        const double left = random.number(-5.0, -1.0);
        const double right = random.number(1.0, 5.0);
        const double bottom = random.number(-5.0, -1.0);
        const double top = random.number(1.0, 5.0);
        const double zNear = random.number(0.1, 1.0);
        const double zFar = random.number(10.0, 100.0);
        const double fovy = random.number(0.1, 3.0);
        Mat4 m = random.mat4();
        m.setPerspective(fovy, 1.5, zNear, zFar);
        EXPECT_CLOSE(m, fromGlm(glm::perspective(fovy, 1.5, zNear, zFar)), 1e-11);
        EXPECT_EQ(m.at(3, 3), 0.0);
        m = random.mat4();
        m.setFrustum(left, right, bottom, top, zNear, zFar);
        EXPECT_CLOSE(m, fromGlm(glm::frustum(left, right, bottom, top, zNear, zFar)));
        EXPECT_EQ(m.at(3, 3), 0.0);
        m = random.mat4();
        // Top comes before bottom, the reverse of GLM's order.
        m.setOrtho(left, right, top, bottom, zNear, zFar);
        EXPECT_CLOSE(m, fromGlm(glm::ortho(left, right, bottom, top, zNear, zFar)));
    }
}

TEST(Mat4LookAt, IsTheInverseOrientationOfGlmsViewMatrix) {
    for (Random& random : trials()) {
        const Vec3 eye = random.vec3();
        const Vec3 target = random.vec3();
        const Vec3 up = random.vec3();
        const glm::dmat4 view =
            glm::lookAt(glm::dvec3(eye.x, eye.y, eye.z), glm::dvec3(target.x, target.y, target.z),
                        glm::dvec3(up.x, up.y, up.z));
        const Mat4 before = random.mat4();
        Mat4 expected = fromGlm(glm::transpose(view));
        expected.setColumn(3, before.getColumn(3));
        expected.setRow(3, before.getRow(3));

        Mat4 m = before;
        m.setLookAt(eye, target, up);
        EXPECT_CLOSE(m, expected);
        Mat4 fromNumbers = before;
        fromNumbers.setLookAt(eye.x, eye.y, eye.z, target.x, target.y, target.z, up.x, up.y, up.z);
        EXPECT_SAME(fromNumbers, m);
    }
}

TEST(Mat4LookAt, HandlesDegenerateDirections) {
    constexpr double kNudge = 9.999999747378752e-5;
    const Table<Vec3, Vec3, Vec3, Vec3, Vec3> cases = {
        // eye at the target
        {{}, {0.0, 1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}},
        // up along the view: z is shifted and keeps its greater length
        {{0.0, 5.0, 0.0},
         {0.0, 1.0, 0.0},
         {1.0, 0.0, 0.0},
         {0.0, kNudge, -1.0},
         {0.0, 1.0, kNudge}},
        // up along the view and the shift: x takes the default of a zero vector
        {{0.0, 0.0, 5.0},
         {0.0, 0.0, 1.0},
         {1.0, 0.0, 0.0},
         {0.0, 1.0 + kNudge, 0.0},
         {0.0, 0.0, 1.0 + kNudge}},
    };
    for (const auto& [eye, up, x, y, z] : cases) {
        Mat4 m;
        m.setLookAt(eye, Vec3(), up);
        EXPECT_SAME(m, Mat4({x, 0.0}, {y, 0.0}, {z, 0.0}, {0.0, 0.0, 0.0, 1.0}, false));
    }
}

TEST(Mat4HostConversion, MapsLayerPointsToGl) {
    const Table<Vec3, Vec3> cases = {{{0.0, 0.0, 0.0}, {-50.0, 25.0, 0.0}},
                                     {{100.0, 50.0, 7.0}, {50.0, -25.0, -7.0}}};
    for (const auto& [layer, gl] : cases) {
        EXPECT_SAME(Mat4::getAEToGLConversionMatrix(100.0, 50.0) * layer, gl);
    }
}

TEST(Mat4Composition, ScalesThenRotatesThenMovesAboutAnAnchor) {
    int roundedCount = 0;
    for (Random& random : trials()) {
        const Vec3 anchor = random.vec3();
        const Vec3 position = random.vec3();
        const Quaternion q = random.rotation();
        const Vec3 scale = random.vec3();
        Mat4 m = random.mat4();
        m.compose(position, q, scale);
        EXPECT_CLOSE(m, translation(position) * rotation(q) * scaling(scale));
        EXPECT_SAME(m.getColumn(3), Vec4(position, 1.0));

        m = random.mat4();
        m.compose(anchor, position, q, scale);
        EXPECT_CLOSE(m * anchor, position, 1e-11);
        EXPECT_CLOSE(m,
                     translation(position) * rotation(q) * translation((anchor * scale).negate()) *
                         scaling(scale),
                     1e-11);

        // The anchor is added and subtracted, which may change the position's last bit.
        const Vec3 scaled = anchor * scale;
        Mat4 expected = translation(scaled + (position - scaled)) * rotation(q);
        expected.translate(scaled.negate());
        EXPECT_SAME(m.getColumn(3), expected.getColumn(3));
        Mat4 direct = translation(position) * rotation(q);
        direct.translate(scaled.negate());
        roundedCount += same(m.getColumn(3), direct.getColumn(3)) ? 0 : 1;

        m.compose(Vec3(), position, q, scale);
        EXPECT_SAME(m.getColumn(3), Vec4(position, 1.0));
    }
    EXPECT_GT(roundedCount, 0);
}

TEST(Mat4Decomposition, UndoesTheComposition) {
    for (Random& random : trials()) {
        const Vec3 anchor = random.vec3();
        const Vec3 position = random.vec3();
        const Quaternion q = random.rotation();
        const Vec3 scale(random.number(0.1, 5.0), random.number(0.1, 5.0), random.number(0.1, 5.0));
        Vec3 outPosition;
        Vec3 outScale;
        Quaternion outQ;
        Mat4 m;
        m.compose(position, q, scale);
        m.decompose(outPosition, outQ, outScale);
        EXPECT_SAME(outPosition, position);
        m.compose(anchor, position, q, scale);
        m.decompose(anchor, outPosition, outQ, outScale);
        EXPECT_CLOSE(outPosition, position, 1e-11);
        EXPECT_CLOSE(outScale, scale);
        EXPECT_NEAR(std::abs(outQ.dot(q)), 1.0, 1e-12);
    }
}

TEST(Mat4Decomposition, PutsAReflectionIntoXAndReplacesAZeroScale) {
    const Table<Vec3, Vec3> cases = {
        {{-2.0, 3.0, 4.0}, {-2.0, 3.0, 4.0}},   {{2.0, 3.0, -4.0}, {-2.0, 3.0, 4.0}},
        {{-2.0, -3.0, -4.0}, {-2.0, 3.0, 4.0}}, {{-2.0, -3.0, 4.0}, {2.0, 3.0, 4.0}},
        {{0.0, 3.0, 4.0}, {1e-6, 3.0, 4.0}},    {{2.0, 0.0, 0.0}, {2.0, 1e-6, 1e-6}},
    };
    for (const auto& [scale, result] : cases) {
        Vec3 outPosition;
        Vec3 outScale;
        Quaternion outQ;
        scaling(scale).decompose(outPosition, outQ, outScale);
        EXPECT_SAME(outScale, result) << testing::PrintToString(scale);
    }

    Random random;
    const Quaternion q = random.rotation();
    Mat4 mirrored;
    mirrored.compose({1.0, 2.0, 3.0}, q, {2.0, -3.0, 4.0});
    Vec3 position;
    Vec3 scale;
    Quaternion outQ;
    mirrored.decompose(position, outQ, scale);
    Mat4 again;
    again.compose(position, outQ, scale);
    EXPECT_CLOSE(again, mirrored);
}

} // namespace Kerovane::Tesselune
