#include "Plugins/Tesselune/Sources/MosaicRender.h"

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"
#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/FaultyHost.h"

#include <glbinding/gl/gl.h>

#include <string>
#include <utility>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

/** A renderer that takes the host's parameters. The uniforms are read back from its program. */
class FramePreparation : public TestSupport::EffectFixture {
protected:
    ~FramePreparation() override { MosaicShaderManager::PurgeAllShaders(); }

    /// Prepares and draws a frame of the given size. `err` is the expected result of the
    /// preparation.
    void drawFrame(int width, int height, PF_Err err = PF_Err_NONE) {
        mContext.makeContextCurrent();
        PF_LayerDef layer{};
        layer.width = width;
        layer.height = height;
        EXPECT_EQ(mRender.preaprea(&mSession.inData(), nullptr, 0, nullptr), err);
        mRender.draw(&layer, 0, 1.0F);
    }

    /// Returns a uniform of the program in use.
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

TEST_F(FramePreparation, CountsAParameterAsZeroFromTheFirstFailedCheckoutOn) {
    struct {
        int failedCheckout;
        const char* uniform;
        Values before, after; // if the checkout succeeds, and if it fails
    } const kCases[] = {
        {2, "normalBlockSize", {45, 30}, {1, 1}}, // 61 at half resolution, truncated
        {3, "normalBlockSize", {45, 30}, {1, 30}},
        {4, "sizeRandomLimit", {0.5}, {0}},
        {5, "sizeLevel", {4}, {0}},
        {6, "sizeRandomSeed", {12}, {0}},
        {7, "dissolveRandomSeed", {34}, {0}},
        {8, "fadePercent", {0.25}, {0}},
        {10, "dissolveTransitionPercent", {0.75}, {0}},
        {11, "linearTransitionAngle", {0.5235988F}, {0}},
        {12, "dissolveFeather", {1.5}, {0}}, // 3 at half resolution, not truncated
        {13, "useAlpha", {1}, {0}},
    };
    for (const auto& [name, value] :
         std::initializer_list<std::pair<const char*, double>>{{"Size", 61},
                                                               {"Ratio", 1.5},
                                                               {"Size Random", 50},
                                                               {"Size Level", 4},
                                                               {"Size Random Seed", 12},
                                                               {"Dissolve", 25},
                                                               {"Dissolve Random Seed", 34},
                                                               {"Transition Progress", 75},
                                                               {"Direction", 30},
                                                               {"Feather", 3}}) {
        set(name, value);
    }
    mSession.inData().downsample_x = {.num = 1, .den = 2};
    TestSupport::FaultyHost host(mSession);
    for (const auto& [failedCheckout, name, before, after] : kCases) {
        SCOPED_TRACE(std::to_string(failedCheckout) + " " + name);
        host.recover();
        drawFrame(300, 400);
        EXPECT_EQ(uniform(name, before.size()), before);
        host.fail(TestSupport::HostCall::CheckoutParam, failedCheckout);
        drawFrame(300, 400, TestSupport::FaultyHost::kError);
        EXPECT_EQ(uniform(name, after.size()), after);
    }
}

TEST_F(FramePreparation, KeepsTheSweepCornersIfTheAngleFoldsTo360) {
    drawFrame(64, 48);
    OpenglShader& shader = *MosaicShaderManager::GetShader({.hasFeather = true});
    for (const float angle : {180.0F, -0x1p-16F}) { // the latter folds to 360 in single precision
        CalculateLineTransitionCorner(&shader, angle, Vec2(64, 48), "linearTransitionStartPoint",
                                      "linearTransitionCorner");
        EXPECT_EQ(uniform("linearTransitionStartPoint", 2), (Values{64, 48}));
        EXPECT_EQ(uniform("linearTransitionCorner", 4), (Values{0, 0, 64, 48}));
    }
}

} // namespace

} // namespace Kerovane::Tesselune
