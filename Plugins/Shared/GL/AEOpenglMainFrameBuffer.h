#pragma once

#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/PerContext.h"
#include "Plugins/Shared/GL/ScreenRender.h"
#include "Plugins/Shared/Helper/NeverDestroyed.h"
#include "Plugins/Shared/Math/Vec2.h"

#include <map>
#include <memory>
#include <vector>

namespace Kerovane::Tesselune {

/**
 * The off-screen render target of the effect. A frame is drawn into a render context: a colour
 * target on a stack, not to be confused with a GL context. It ends as a finished picture in a
 * single-sample renderbuffer.
 *
 * A frame consists of `prepare`, `beginDrawing`, the passes and `endDrawing`, all with the same GL
 * context current; the next frame may use another GL context. Render contexts and finished pictures
 * have the format kColorStorage at every depth of the host. GL errors are not queried: if GL fails
 * to draw or resolve a render context, its picture is transparent black.
 *
 * GL names are held by owners, so that they are deleted on every path. The three frame buffers
 * exist once per GL context, because GL contexts do not share frame buffers.
 */
class AEOpenglMainFrameBuffer {
public:
    /// Returns the only instance. Safe to call from any thread and without a context.
    static AEOpenglMainFrameBuffer* mainFrameBuffer();

    AEOpenglMainFrameBuffer(const AEOpenglMainFrameBuffer&) = delete;
    AEOpenglMainFrameBuffer& operator=(const AEOpenglMainFrameBuffer&) = delete;

    // The frame

    /**
     * Prepares the targets for a frame of `width` by `height` pixels. If the size has not changed,
     * keeps the present targets and ignores `multisample`. A frame without pixels gets no targets.
     */
    void prepare(long width, long height, bool multisample);

    /// Deletes the current GL context's frame buffers and the finished picture, and drops all open
    /// render contexts. Keeps the size.
    void unprepare();

    /**
     * Deletes all GL objects; frame buffers of other GL contexts are deleted with their contexts.
     * The next `prepare` recreates everything.
     */
    void destory();

    /// Opens the frame: pushes one render context, cleared to transparent black, and sets the
    /// viewport to the whole frame.
    void beginDrawing();

    /**
     * Closes the frame: draws the picture with ScreenRender into the output frame buffer, which
     * stays bound for reading. Does nothing if no render context is open.
     */
    void endDrawing(float multiplier16bit);

    /// Return the low 16 bits of the frame's width or height in pixels.
    unsigned short width() const { return static_cast<unsigned short>(mWidth); }
    unsigned short height() const { return static_cast<unsigned short>(mHeight); }

    // Create textures cleared to zeros, of the frame's size or of `size` pixels; the caller owns
    // them. `mipmap` and `linear` choose the filters; no mipmap levels are generated.

    unsigned int createRenderTexture(bool mipmap);
    static unsigned int createRenderTexture(const Vec2& size, bool mipmap);
    unsigned int createFloatRenderTexture(bool linear, bool mipmap);
    static unsigned int createFloatRenderTexture(const Vec2& size, bool linear, bool mipmap);

    // The stack of render contexts

    /// Opens a render context cleared to transparent black. `first` has no effect.
    void pushRenderContext(bool first, bool stencil);

    /**
     * Closes the top render context and returns its picture as a new texture, owned by the caller.
     * Returns 0, without a GL call, if none is open. The render context below becomes the target
     * again, but without its stencil buffer.
     */
    unsigned int popRenderContext();

    /// Makes `texture`, cleared first, the render target until popNormalRenderContext.
    static void pushNormalRenderContext(unsigned int texture);

    /// Makes mipmap level `level` of `texture`, cleared first, the render target until
    /// popNormalRenderContext. Sets the viewport to `size` pixels.
    static void pushNormalRenderContext(unsigned int texture, const Vec2& size, int level);

    /// Ends either kind of pushNormalRenderContext. Returns to the top render context, if there is
    /// one.
    void popNormalRenderContext();

    /// Drops all open render contexts with their stencil buffers.
    void clearStack();

private:
    /// The frame buffers of one GL context; targets of any size can be attached. Members are
    /// deleted in reverse order.
    struct FrameBuffers {
        GLFramebuffer mMultisampleFrameBuffer; ///< target of multisampled frames
        GLFramebuffer mOutputFrameBuffer;      ///< target of the last pass, read back
        GLFramebuffer mResolveFrameBuffer;     ///< receives the multisample resolve
        int mSamples = 0;                      ///< sample count of multisampled targets

        void release();
    };

    friend class NeverDestroyed<AEOpenglMainFrameBuffer>;
    AEOpenglMainFrameBuffer();

    void makeMissingTargets();
    unsigned int carrier();
    unsigned int resolvedPicture();
    unsigned int copiedPicture();
    void allocateStorage(gl::GLenum internalFormat);
    void returnToTop();
    Vec2 size() const { return {static_cast<double>(mWidth), static_cast<double>(mHeight)}; }

    PerContext<FrameBuffers> mFrameBuffers;
    GLRenderbuffer mOutputRenderBuffer; ///< the finished picture
    bool mMultisample = true;
    unsigned int mWidth = 0;
    unsigned int mHeight = 0;
    std::vector<GLRenderbuffer> mRenderStack; ///< colour targets of open render contexts, top last
    std::map<unsigned int, GLRenderbuffer> mStencilBuffers; ///< key: GL name of the colour target
    std::unique_ptr<ScreenRender> mScreenRender;
};

} // namespace Kerovane::Tesselune
