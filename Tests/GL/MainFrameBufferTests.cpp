#include "Plugins/Shared/GL/AEOpenGLUtilities.h"
#include "Plugins/Shared/GL/AEOpenglMainFrameBuffer.h"

#include "Tests/GL/GLFixture.h"
#include "Tests/Support/GLCalls.h"
#include "Tests/Support/GLObserver.h"
#include "Tests/Support/LiveGLObjects.h"

#include <glbinding/Binding.h>

#include <algorithm>

using namespace gl;
using Kerovane::TestSupport::GLCalls;
using Kerovane::TestSupport::GLObserver;
using Kerovane::TestSupport::LiveGLObjects;

namespace Kerovane::Tesselune {

namespace {

constexpr Texel kRed = {1, 0, 0, 1};
constexpr Texel kBlue = {0, 0, 1, 1};
constexpr Texel kTransparent = {0, 0, 0, 0};

void Fill(const Texel& color) {
    glClearColor(color[0], color[1], color[2], color[3]);
    glClear(GL_COLOR_BUFFER_BIT);
}

bool AllAre(const std::vector<Texel>& texels, const Texel& expected) {
    return std::ranges::all_of(texels, [&](const Texel& texel) { return texel == expected; });
}

class MainFrameBuffer : public GLFixture {
protected:
    ~MainFrameBuffer() override { mFrameBuffer.destory(); }

    /// Closes the top render context and returns its picture.
    std::vector<Texel> Popped() {
        const GLTexture picture(mFrameBuffer.popRenderContext());
        return TexelsOf(picture.name(), mFrameBuffer.width(), mFrameBuffer.height());
    }

    AEOpenglMainFrameBuffer& mFrameBuffer = *AEOpenglMainFrameBuffer::mainFrameBuffer();
};

TEST_F(MainFrameBuffer, MakesNoGLCallIfNothingChanges) {
    mFrameBuffer.prepare(8, 4, true);
    {
        const GLCalls calls;
        mFrameBuffer.prepare(8, 4, true);
        mFrameBuffer.prepare(8, 4, false);
        EXPECT_EQ(mFrameBuffer.popRenderContext(), 0U);
        mFrameBuffer.endDrawing(1.0F);
        EXPECT_EQ(calls.names(), std::vector<std::string>{});
    }
    mFrameBuffer.unprepare();
    const GLCalls calls;
    mFrameBuffer.unprepare();
    EXPECT_EQ(calls.names(), std::vector<std::string>{});
}

TEST_F(MainFrameBuffer, ReturnsToTheLowerTargetWhenTheUpperCloses) {
    for (const bool multisample : {true, false}) {
        mFrameBuffer.prepare(multisample ? 8 : 9, 4, multisample);
        mFrameBuffer.pushRenderContext(true, false);
        Fill(kRed);
        mFrameBuffer.pushRenderContext(false, true);
        EXPECT_EQ(AEOpenGLUtilities::CheckFramebufferStatus(), "OK");
        Fill(kBlue);
        EXPECT_TRUE(AllAre(Popped(), kBlue)) << "multisample " << multisample;
        glEnable(GL_SCISSOR_TEST);
        glScissor(0, 0, 1, 1);
        Fill(kBlue);
        glDisable(GL_SCISSOR_TEST);
        std::vector<Texel> lower = Popped();
        EXPECT_EQ(lower[0], kBlue);
        lower.erase(lower.begin());
        EXPECT_TRUE(AllAre(lower, kRed)) << "multisample " << multisample;
    }
}

TEST_F(MainFrameBuffer, DropsTheTargetsOfAnAbandonedFrameAndThenAllObjects) {
    const LiveGLObjects live;
    mFrameBuffer.prepare(8, 4, true);
    auto prepared = live.counts();
    mFrameBuffer.pushRenderContext(false, true);
    mFrameBuffer.pushRenderContext(false, true);
    EXPECT_EQ(live.counts()["Renderbuffers"], prepared["Renderbuffers"] + 4);
    mFrameBuffer.clearStack();
    EXPECT_EQ(live.counts(), prepared);
    EXPECT_EQ(mFrameBuffer.popRenderContext(), 0U);
    mFrameBuffer.pushRenderContext(false, true);
    GLTexture(mFrameBuffer.popRenderContext());
    EXPECT_EQ(live.counts(), prepared) << "the stencil buffer is deleted";
    mFrameBuffer.pushRenderContext(false, true);
    mFrameBuffer.unprepare();
    EXPECT_EQ(live.counts(), (std::map<std::string, int>{}));
}

TEST_F(MainFrameBuffer, GivesATransparentPictureIfTheTargetIsMissingOrCannotBeResolved) {
    auto integers = GLRenderbuffer::generated();
    glBindRenderbuffer(GL_RENDERBUFFER, integers.name());
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8UI, 8, 4);
    int width = 8;
    for (const bool multisample : {true, false}) {
        for (const GLuint target : {GLuint{0}, integers.name()}) {
            SCOPED_TRACE(testing::Message()
                         << "multisample " << multisample << ", integers " << (target != 0));
            mFrameBuffer.prepare(width++, 4, multisample);
            mFrameBuffer.pushRenderContext(false, false);
            glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                      target);
            // Checks that the code itself writes the texture: many drivers clear new textures, but
            // not all.
            bool isWritten = false;
            const GLObserver content(glbinding::Binding::TexImage2D,
                                     [&](auto, auto, auto, auto, auto, auto, auto, auto,
                                         const void* pixels) { isWritten = pixels != nullptr; });
            const GLObserver clear(glbinding::Binding::Clear, [&](auto) { isWritten = true; });
            EXPECT_TRUE(AllAre(Popped(), kTransparent));
            EXPECT_TRUE(isWritten);
        }
    }
}

TEST_F(MainFrameBuffer, DrawsIntoATextureAndReturnsToTheRenderContext) {
    const GLTexture texture(AEOpenglMainFrameBuffer::createRenderTexture(Vec2(2, 2), false));
    AEOpenglMainFrameBuffer::pushNormalRenderContext(texture.name());
    Fill(kRed);
    mFrameBuffer.popNormalRenderContext();
    int bound = -1;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &bound);
    EXPECT_EQ(bound, 0) << "no render context is open";
    EXPECT_TRUE(AllAre(TexelsOf(texture.name(), 2, 2), kRed));

    mFrameBuffer.prepare(8, 4, true);
    mFrameBuffer.beginDrawing();
    const LiveGLObjects live;
    AEOpenglMainFrameBuffer::pushNormalRenderContext(texture.name(), Vec2(2, 2), 0);
    mFrameBuffer.popNormalRenderContext();
    EXPECT_EQ(live.counts(), (std::map<std::string, int>{}));
    EXPECT_TRUE(AllAre(TexelsOf(texture.name(), 2, 2), kTransparent)) << "the push clears it";
    std::array<int, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    EXPECT_EQ(viewport, (std::array<int, 4>{0, 0, 8, 4}));
    Fill(kBlue);
    EXPECT_TRUE(AllAre(Popped(), kBlue));
}

TEST_F(MainFrameBuffer, LeavesTheFinishedPictureBoundForReading) {
    mFrameBuffer.prepare(8, 4, true);
    mFrameBuffer.beginDrawing();
    Fill({0.0F, 0.2F, 0.4F, 1.0F});
    mFrameBuffer.endDrawing(1.0F);
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE);
    EXPECT_EQ(glIsEnabled(GL_MULTISAMPLE), GL_FALSE);
    const auto texels = BoundTexels(8, 4);
    for (std::size_t channel = 0; channel < 4; ++channel) {
        const Texel alphaFirst = {1.0F, 0.0F, 0.2F, 0.4F};
        EXPECT_NEAR(texels[0][channel], alphaFirst[channel], 0.5F / 255.0F);
    }
    EXPECT_TRUE(AllAre(texels, texels[0]));
}

TEST_F(MainFrameBuffer, CreatesClearedTexturesWithTheRequestedFilters) {
    const Vec2 size(3, 2);
    mFrameBuffer.prepare(3, 2, true);
    struct {
        unsigned int texture;
        GLenum format, minification, magnification;
    } const kCases[] = {
        {mFrameBuffer.createRenderTexture(false), GL_RGBA, GL_LINEAR, GL_LINEAR},
        {mFrameBuffer.createRenderTexture(true), GL_RGBA, GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR},
        {mFrameBuffer.createFloatRenderTexture(true, false), GL_RGBA32F, GL_LINEAR, GL_LINEAR},
        {mFrameBuffer.createFloatRenderTexture(true, true), GL_RGBA32F, GL_LINEAR_MIPMAP_LINEAR,
         GL_LINEAR},
        {AEOpenglMainFrameBuffer::createFloatRenderTexture(size, false, false), GL_RGBA32F,
         GL_NEAREST, GL_NEAREST},
        {AEOpenglMainFrameBuffer::createFloatRenderTexture(size, false, true), GL_RGBA32F,
         GL_LINEAR_MIPMAP_NEAREST, GL_LINEAR},
    };
    for (const auto& [name, format, minification, magnification] : kCases) {
        const GLTexture texture(name);
        EXPECT_TRUE(AllAre(TexelsOf(name, 3, 2), kTransparent));
        const std::pair<GLenum, GLenum> parameters[] = {{GL_TEXTURE_MIN_FILTER, minification},
                                                        {GL_TEXTURE_MAG_FILTER, magnification},
                                                        {GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE},
                                                        {GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE}};
        for (const auto& [what, expected] : parameters) {
            int value = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, what, &value);
            EXPECT_EQ(static_cast<GLenum>(value), expected);
        }
        int actual = 0;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &actual);
        EXPECT_EQ(static_cast<GLenum>(actual), format);
    }
}

TEST_F(MainFrameBuffer, DescribesIncompleteFrameBuffers) {
    const GLFramebuffer frameBuffer = GLFramebuffer::generated();
    glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer.name());
    EXPECT_EQ(AEOpenGLUtilities::CheckFramebufferStatus(),
              "Framebuffer incomplete, missing attachment!");
    const GLTexture texture(AEOpenglMainFrameBuffer::createRenderTexture(Vec2(2, 2), false));
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture.name(), 0);
    EXPECT_EQ(AEOpenGLUtilities::CheckFramebufferStatus(), "OK");
}

} // namespace

} // namespace Kerovane::Tesselune
