#include "Plugins/Tesselune/Sources/MosaicRender.h"

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"
#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/FaultyHost.h"

#include <glbinding/gl/gl.h>

#include <cmath>
#include <string>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

/** A renderer fed by the host's parameters, whose uniforms are read back from its program. */
class FramePreparation : public TestSupport::EffectFixture {
protected:
    ~FramePreparation() override { MosaicShaderManager::PurgeAllShaders(); }

    /// Prepares and draws a frame of the given size; `err` is what the fetch must return.
    void drawFrame(int width, int height, float multiplier = 1.0F, PF_Err err = PF_Err_NONE) {
        mContext.makeContextCurrent();
        PF_LayerDef layer{};
        layer.width = width;
        layer.height = height;
        EXPECT_EQ(mRender.preaprea(&mSession.inData(), nullptr, 0, nullptr), err);
        mRender.draw(&layer, 0, multiplier);
    }

    /// A uniform of the program in use.
    static std::vector<float> uniform(const char* name, std::size_t size) {
        int program = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        std::vector<float> values(4);
        glGetUniformfv(static_cast<GLuint>(program),
                       glGetUniformLocation(static_cast<GLuint>(program), name), values.data());
        values.resize(size);
        return values;
    }

    AEOpenGLContext mContext{nullptr};
    MosaicRender mRender;
};

using Values = std::vector<float>;

TEST_F(FramePreparation, TurnsParametersIntoUniforms) {
    set("Size", 25);
    set("Ratio", 1.5);
    set("Size Random", 60.5);
    set("Size Level", 4);
    set("Size Random Seed", 12);
    set("Dissolve", 12.5);
    set("Dissolve Random Seed", 34);
    set("Transition Progress", 100);
    set("Direction", 30);
    set("Feather", 3);
    mSession.inData().downsample_x = {.num = 1, .den = 2};
    mSession.inData().downsample_y = {.num = 1, .den = 7};
    drawFrame(300, 400, 1.25F);
    EXPECT_EQ(uniform("multiplier16bit", 1), Values{1.25F});
    EXPECT_EQ(uniform("normalBlockSize", 2), (Values{18, 12})) << "the size's fraction is cut";
    EXPECT_EQ(uniform("maxBlockSize", 2), (Values{288, 192}));
    EXPECT_EQ(uniform("dissolveFeather", 1), Values{1.5F}) << "the feather's fraction is kept";
    EXPECT_EQ(uniform("sizeLevel", 1), Values{4});
    EXPECT_NEAR(uniform("sizeRandomLimit", 1)[0], 0.605, 1e-6);
    EXPECT_EQ(uniform("sizeRandomSeed", 1), Values{12});
    EXPECT_EQ(uniform("fadePercent", 1), Values{0.125F});
    EXPECT_EQ(uniform("dissolveRandomSeed", 1), Values{34});
    EXPECT_EQ(uniform("dissolveTransitionPercent", 1), Values{1});
    EXPECT_NEAR(uniform("linearTransitionAngle", 1)[0], 0.5235988, 1e-6);
    EXPECT_EQ(uniform("texSize", 2), (Values{300, 400}));
    EXPECT_EQ(uniform("useAlpha", 1), Values{1});
    set("Use Alpha", 0);
    set("Transition Type", 3);
    drawFrame(300, 400);
    EXPECT_EQ(uniform("maxSideLength", 1), Values{250}) << "half the diagonal";
    EXPECT_EQ(uniform("useAlpha", 1), Values{0});
}

TEST_F(FramePreparation, GivesCellsOfNoSizeOnePixel) {
    struct {
        A_u_long denominator;
        Values normal, largest;
    } const kCases[] = {
        {1, {3, 2}, {24, 16}},
        {4, {1, 1}, {8, 8}},
        {0, {1, 1}, {8, 8}},
    };
    set("Size", 2);
    set("Ratio", 1.5);
    set("Size Random", 50);
    for (const auto& [denominator, normal, largest] : kCases) {
        mSession.inData().downsample_x.den = denominator;
        drawFrame(64, 64);
        EXPECT_EQ(uniform("normalBlockSize", 2), normal) << denominator;
        EXPECT_EQ(uniform("maxBlockSize", 2), largest) << denominator;
    }
}

TEST_F(FramePreparation, CountsAParameterAsZeroFromTheFirstFailedCheckoutOn) {
    struct {
        int failedCheckout;
        const char* uniform;
        Values before, after; // where it is fetched, and where not
    } const kCases[] = {
        {2, "normalBlockSize", {45, 30}, {1, 1}},
        {3, "normalBlockSize", {45, 30}, {1, 30}},
        {4, "sizeRandomLimit", {0.5}, {0}},
        {5, "sizeLevel", {4}, {0}},
        {6, "sizeRandomSeed", {12}, {0}},
        {7, "dissolveRandomSeed", {34}, {0}},
        {8, "fadePercent", {0.25}, {0}},
        {10, "dissolveTransitionPercent", {0.75}, {0}},
        {11, "linearTransitionAngle", {0.5235988F}, {0}},
        {13, "useAlpha", {1}, {0}},
    };
    set("Size", 30);
    set("Ratio", 1.5);
    set("Size Random", 50);
    set("Size Level", 4);
    set("Size Random Seed", 12);
    set("Dissolve", 25);
    set("Dissolve Random Seed", 34);
    set("Transition Progress", 75);
    set("Direction", 30);
    TestSupport::FaultyHost host(mSession);
    for (const auto& [failedCheckout, name, before, after] : kCases) {
        SCOPED_TRACE(std::to_string(failedCheckout) + " " + name);
        host.recover();
        drawFrame(300, 400);
        EXPECT_EQ(uniform(name, before.size()), before);
        host.fail(TestSupport::HostCall::CheckoutParam, failedCheckout);
        drawFrame(300, 400, 1.0F, TestSupport::FaultyHost::kError);
        EXPECT_EQ(uniform(name, after.size()), after);
    }
    host.fail(TestSupport::HostCall::CheckoutParam, 12);
    drawFrame(300, 400, 1.0F, TestSupport::FaultyHost::kError);
    EXPECT_EQ(uniform("dissolveFeather", 1), Values{0}) << "the form without a feather";
}

TEST_F(FramePreparation, PlacesTheSweepAtItsCorner) {
    const float w = 64;
    const float h = 48;
    struct {
        float angle;
        Values start, corners;
    } const kCases[] = {
        {0, {0, 0}, {0, 0, w, h}},       {89.99F, {0, 0}, {0, 0, w, h}},
        {90, {w, 0}, {w, 0, 0, h}},      {180, {w, h}, {0, 0, w, h}},
        {270, {0, h}, {w, 0, 0, h}},     {359.9F, {0, h}, {w, 0, 0, h}},
        {360, {0, 0}, {0, 0, w, h}},     {450, {w, 0}, {w, 0, 0, h}},
        {-90, {0, h}, {w, 0, 0, h}},     {-360, {0, 0}, {0, 0, w, h}},
        {-720.5F, {0, h}, {w, 0, 0, h}},
    };
    drawFrame(64, 48);
    OpenglShader& shader = *MosaicShaderManager::GetShader({.hasFeather = true});
    const auto place = [&shader](float angle) {
        CalculateLineTransitionCorner(&shader, angle, Vec2(64, 48), "linearTransitionStartPoint",
                                      "linearTransitionCorner");
    };
    for (const auto& [angle, start, corners] : kCases) {
        place(angle);
        EXPECT_EQ(uniform("linearTransitionStartPoint", 2), start) << angle;
        EXPECT_EQ(uniform("linearTransitionCorner", 4), corners) << angle;
    }
    // Just below 0, the fold gives 360 in single precision: the last values stay.
    place(180);
    place(-0x1p-16F);
    EXPECT_EQ(uniform("linearTransitionStartPoint", 2), (Values{w, h}));
    EXPECT_EQ(uniform("linearTransitionCorner", 4), (Values{0, 0, w, h}));
}

} // namespace

} // namespace Kerovane::Tesselune
