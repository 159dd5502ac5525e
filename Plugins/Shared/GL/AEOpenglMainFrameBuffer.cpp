#include "Plugins/Shared/GL/AEOpenglMainFrameBuffer.h"

#include "Plugins/Shared/GL/ColorStorage.h"
#include "Plugins/Shared/GL/SampleCount.h"

#include <cstddef>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

struct TextureFilters {
    GLenum minification;
    GLenum magnification;
};

void SetParameter(GLenum parameter, GLenum value) {
    glTexParameteri(GL_TEXTURE_2D, parameter, static_cast<GLint>(value));
}

/// Creates a texture. `pixels` holds four bytes a pixel; null leaves the content undefined.
unsigned int CreateTexture(GLenum internalFormat, const Vec2& size, const TextureFilters& filters,
                           const void* pixels) {
    GLTexture texture = GLTexture::generated();
    glBindTexture(GL_TEXTURE_2D, texture.name());
    SetParameter(GL_TEXTURE_MIN_FILTER, filters.minification);
    SetParameter(GL_TEXTURE_MAG_FILTER, filters.magnification);
    SetParameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    SetParameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, static_cast<GLsizei>(size.x),
                 static_cast<GLsizei>(size.y), 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture.release();
}

/// Creates a texture of zeros. Zero bytes serve float formats too, because GL converts them to 0.0.
unsigned int CreateClearedTexture(GLenum internalFormat, const Vec2& size,
                                  const TextureFilters& filters) {
    const auto byteCount = static_cast<std::size_t>(size.x * size.y * 4.0);
    const std::vector<std::byte> zeros(byteCount);
    return CreateTexture(internalFormat, size, filters, zeros.data());
}

TextureFilters FloatTextureFilters(bool linear, bool mipmap) {
    if (mipmap) {
        return {linear ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR_MIPMAP_NEAREST, GL_LINEAR};
    }
    const GLenum filter = linear ? GL_LINEAR : GL_NEAREST;
    return {filter, filter};
}

/// Attaches `color` to the bound frame buffer.
void AttachColor(const GLRenderbuffer& color) {
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, color.name());
}

void ClearToTransparentBlack() {
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

/// Creates a frame buffer that draws into mipmap level `level` of `texture`. Leaves it bound,
/// because popNormalRenderContext reads the name from the binding.
void DrawIntoTexture(unsigned int texture, int level) {
    GLFramebuffer frameBuffer = GLFramebuffer::generated();
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer.release());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, level);
    ClearToTransparentBlack();
}

} // namespace

AEOpenglMainFrameBuffer::AEOpenglMainFrameBuffer()
    : mScreenRender(std::make_unique<ScreenRender>()) {}

AEOpenglMainFrameBuffer* AEOpenglMainFrameBuffer::mainFrameBuffer() {
    static NeverDestroyed<AEOpenglMainFrameBuffer> kSharedMainFrameBuffer;
    return &*kSharedMainFrameBuffer;
}

void AEOpenglMainFrameBuffer::prepare(long width, long height, bool multisample) {
    if (mWidth != width || mHeight != height) {
        unprepare();
        mWidth = static_cast<unsigned int>(width);
        mHeight = static_cast<unsigned int>(height);
        mMultisample = multisample;
    }
    if (mScreenRender == nullptr) {
        mScreenRender = std::make_unique<ScreenRender>();
    }
    if (mWidth != 0 && mHeight != 0) {
        makeMissingTargets();
    }
}

void AEOpenglMainFrameBuffer::makeMissingTargets() {
    FrameBuffers& frameBuffers = mFrameBuffers.current();
    if (!frameBuffers.mOutputFrameBuffer) {
        frameBuffers.mOutputFrameBuffer = GLFramebuffer::generated();
    }
    if (mMultisample && !frameBuffers.mMultisampleFrameBuffer) {
        frameBuffers.mResolveFrameBuffer = GLFramebuffer::generated();
        frameBuffers.mMultisampleFrameBuffer = GLFramebuffer::generated();
        frameBuffers.mSamples = ColorSampleCount(kColorStorage);
    }
    if (!mOutputRenderBuffer) {
        mOutputRenderBuffer = GLRenderbuffer::generated();
        glBindRenderbuffer(GL_RENDERBUFFER, mOutputRenderBuffer.name());
        glRenderbufferStorage(GL_RENDERBUFFER, kColorStorage, static_cast<GLsizei>(mWidth),
                              static_cast<GLsizei>(mHeight));
    }
}

void AEOpenglMainFrameBuffer::unprepare() {
    mFrameBuffers.resetCurrent();
    mOutputRenderBuffer.reset();
    clearStack();
}

void AEOpenglMainFrameBuffer::destory() {
    unprepare();
    mRenderStack.shrink_to_fit(); // frees the memory now: the only instance is never destroyed
    mFrameBuffers.reset();
    mScreenRender.reset();
    mWidth = 0;
    mHeight = 0;
}

void AEOpenglMainFrameBuffer::beginDrawing() {
    glDrawBuffer(GL_COLOR_ATTACHMENT0);
    glDisable(GL_BLEND);
    if (mMultisample) {
        glEnable(GL_MULTISAMPLE);
    }
    pushRenderContext(false, false);
    glViewport(0, 0, static_cast<GLsizei>(mWidth), static_cast<GLsizei>(mHeight));
}

void AEOpenglMainFrameBuffer::endDrawing(float multiplier16bit) {
    const GLTexture picture(popRenderContext());
    if (!picture) {
        return;
    }
    glBindFramebuffer(GL_FRAMEBUFFER, mFrameBuffers.current().mOutputFrameBuffer.name());
    AttachColor(mOutputRenderBuffer);
    glDisable(GL_BLEND);
    glDisable(GL_MULTISAMPLE);
    glClear(GL_COLOR_BUFFER_BIT);
    mScreenRender->draw(picture.name(), multiplier16bit);
}

unsigned int AEOpenglMainFrameBuffer::createRenderTexture(bool mipmap) {
    return createRenderTexture(size(), mipmap);
}

unsigned int AEOpenglMainFrameBuffer::createRenderTexture(const Vec2& size, bool mipmap) {
    return CreateClearedTexture(GL_RGBA, size,
                                {mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR, GL_LINEAR});
}

unsigned int AEOpenglMainFrameBuffer::createFloatRenderTexture(bool linear, bool mipmap) {
    return createFloatRenderTexture(size(), linear, mipmap);
}

unsigned int AEOpenglMainFrameBuffer::createFloatRenderTexture(const Vec2& size, bool linear,
                                                               bool mipmap) {
    return CreateClearedTexture(GL_RGBA32F, size, FloatTextureFilters(linear, mipmap));
}

void AEOpenglMainFrameBuffer::pushRenderContext(bool /*first*/, bool stencil) {
    GLRenderbuffer color = GLRenderbuffer::generated();
    glBindRenderbuffer(GL_RENDERBUFFER, color.name());
    allocateStorage(kColorStorage);
    glBindFramebuffer(GL_FRAMEBUFFER, carrier());
    AttachColor(color);
    if (stencil) {
        GLRenderbuffer stencilBuffer = GLRenderbuffer::generated();
        glBindRenderbuffer(GL_RENDERBUFFER, stencilBuffer.name());
        allocateStorage(GL_STENCIL_INDEX8);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_STENCIL_ATTACHMENT, GL_RENDERBUFFER,
                                  stencilBuffer.name());
        mStencilBuffers.insert_or_assign(color.name(), std::move(stencilBuffer));
    }
    mRenderStack.push_back(std::move(color));
    ClearToTransparentBlack();
}

unsigned int AEOpenglMainFrameBuffer::popRenderContext() {
    if (mRenderStack.empty()) {
        return 0;
    }
    GLTexture picture(mMultisample ? resolvedPicture() : copiedPicture());
    const unsigned int closed = mRenderStack.back().name();
    mRenderStack.pop_back();
    mStencilBuffers.erase(closed);
    if (!mRenderStack.empty()) {
        returnToTop();
    }
    return picture.release();
}

/// Resolves the top render context into a new texture.
unsigned int AEOpenglMainFrameBuffer::resolvedPicture() {
    const auto width = static_cast<GLsizei>(mWidth);
    const auto height = static_cast<GLsizei>(mHeight);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, carrier());
    GLTexture picture(CreateTexture(kColorStorage, size(), {GL_LINEAR, GL_LINEAR}, nullptr));
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mFrameBuffers.current().mResolveFrameBuffer.name());
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, picture.name(),
                           0);
    // GL may refuse the resolve. Clear first, so that the texture then holds no uninitialised
    // memory. A clear on the GPU costs far less than an upload of zeros.
    ClearToTransparentBlack();
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    return picture.release();
}

/// Copies the top render context, which is not multisampled, into a new texture, which stays bound.
unsigned int AEOpenglMainFrameBuffer::copiedPicture() {
    glBindFramebuffer(GL_READ_FRAMEBUFFER, carrier());
    GLTexture picture(createRenderTexture(false));
    glBindTexture(GL_TEXTURE_2D, picture.name());
    glCopyTexImage2D(GL_TEXTURE_2D, 0, kColorStorage, 0, 0, static_cast<GLsizei>(mWidth),
                     static_cast<GLsizei>(mHeight), 0);
    return picture.release();
}

void AEOpenglMainFrameBuffer::pushNormalRenderContext(unsigned int texture) {
    DrawIntoTexture(texture, 0);
}

void AEOpenglMainFrameBuffer::pushNormalRenderContext(unsigned int texture, const Vec2& size,
                                                      int level) {
    DrawIntoTexture(texture, level);
    glViewport(0, 0, static_cast<GLsizei>(size.x), static_cast<GLsizei>(size.y));
}

void AEOpenglMainFrameBuffer::popNormalRenderContext() {
    int bound = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &bound);
    GLFramebuffer frameBuffer(static_cast<unsigned int>(bound));
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    frameBuffer.reset();
    if (!mRenderStack.empty()) {
        returnToTop();
        const GLenum target = GL_COLOR_ATTACHMENT0;
        glDrawBuffers(1, &target);
        glViewport(0, 0, static_cast<GLsizei>(mWidth), static_cast<GLsizei>(mHeight));
    }
}

void AEOpenglMainFrameBuffer::clearStack() {
    mRenderStack.clear();
    mStencilBuffers.clear();
}

/// Returns the frame buffer to which the render contexts' colour targets are attached.
unsigned int AEOpenglMainFrameBuffer::carrier() {
    const FrameBuffers& frameBuffers = mFrameBuffers.current();
    return mMultisample ? frameBuffers.mMultisampleFrameBuffer.name()
                        : frameBuffers.mOutputFrameBuffer.name();
}

/// Allocates storage of the frame's size for the bound renderbuffer, multisampled if the frame is
/// multisampled.
void AEOpenglMainFrameBuffer::allocateStorage(GLenum internalFormat) {
    const auto width = static_cast<GLsizei>(mWidth);
    const auto height = static_cast<GLsizei>(mHeight);
    if (mMultisample) {
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, mFrameBuffers.current().mSamples,
                                         internalFormat, width, height);
    } else {
        glRenderbufferStorage(GL_RENDERBUFFER, internalFormat, width, height);
    }
}

/// Makes the top render context the render target again.
void AEOpenglMainFrameBuffer::returnToTop() {
    const GLRenderbuffer& top = mRenderStack.back();
    glBindRenderbuffer(GL_RENDERBUFFER, top.name());
    glBindFramebuffer(GL_FRAMEBUFFER, carrier());
    AttachColor(top);
}

void AEOpenglMainFrameBuffer::FrameBuffers::release() {
    mResolveFrameBuffer.release();
    mOutputFrameBuffer.release();
    mMultisampleFrameBuffer.release();
}

} // namespace Kerovane::Tesselune
