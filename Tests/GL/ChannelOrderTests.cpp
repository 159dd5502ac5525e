#include "Plugins/Shared/GL/BackgroundRender.h"
#include "Plugins/Shared/GL/ScreenRender.h"

#include "Tests/GL/GLFixture.h"
#include "Tests/Support/GLCalls.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

constexpr float k16bit = 65535.0F / 32768.0F;

/**
 * Draws passes from float texture to float texture, so that the target's precision does not matter.
 */
class ChannelOrderTest : public GLFixture {
protected:
    template <typename Pass>
    static std::vector<Texel> Drawn(Pass& pass, const std::vector<Texel>& texels, int width,
                                    float multiplier) {
        const int height = static_cast<int>(texels.size()) / width;
        const GLTexture source = FloatTexture(texels, width);
        const GLTexture target = FloatTexture(std::vector<Texel>(texels.size()), width);
        const GLFramebuffer frameBuffer = GLFramebuffer::generated();
        glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer.name());
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target.name(),
                               0);
        glViewport(0, 0, width, height);
        pass.draw(source.name(), multiplier);
        return BoundTexels(width, height);
    }
};

TEST_F(ChannelOrderTest, ScreenRenderUndoesBackgroundRenderAndFlipsNothing) {
    std::mt19937 random(7); // NOLINT(cert-msc*): the same texels in every run
    std::uniform_real_distribution<float> channel(0.05F, 1.0F);
    std::vector<Texel> host(24);
    for (Texel& texel : host) {
        texel = {channel(random), channel(random), channel(random), channel(random)};
    }
    host[5] = {0.0F, 0.0F, 0.0F, 0.0F};
    BackgroundRender background;
    ScreenRender screen;
    for (const float multiplier : {1.0F, k16bit}) {
        const auto there = Drawn(background, host, 6, multiplier);
        const auto back = Drawn(screen, there, 6, multiplier);
        for (std::size_t i = 0; i < host.size(); ++i) {
            const float alpha = host[i][0] * multiplier;
            for (std::size_t c = 0; c < 4; ++c) {
                const float premultiplied = c < 3 ? host[i][c + 1] * alpha * multiplier : alpha;
                EXPECT_NEAR(there[i][c], premultiplied, 1e-5F) << "texel " << i << " channel " << c;
                EXPECT_NEAR(back[i][c], host[i][c], 1e-5F) << "texel " << i << " channel " << c;
            }
        }
    }
}

TEST_F(ChannelOrderTest, MakesItsVerticesBeforeItUsesItsProgram) {
    ScreenRender pass;
    const TestSupport::GLCalls calls;
    pass.draw(0, 1.0F);
    const std::vector<std::string> expected = {"glGenVertexArrays", "glBindVertexArray",
                                               "glGenBuffers",      "glBindBuffer",
                                               "glBufferData",      "glCreateShader"};
    ASSERT_GE(calls.names().size(), expected.size());
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), calls.names().begin()));
}

} // namespace

} // namespace Kerovane::Tesselune
