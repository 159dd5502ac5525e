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
 * The one off-screen target of the effect. A frame is drawn into a render context, which is one
 * colour target on a stack and has nothing to do with GL contexts, and ends as a finished picture
 * in a single-sample renderbuffer.
 *
 * A frame is `prepare`, `beginDrawing`, the passes, `endDrawing`, all with one GL context current;
 * the next frame may use another. Render contexts and finished pictures are kColorStorage at every
 * depth of the host. GL errors are not asked for: of a render context that GL could not draw or
 * resolve, the picture is transparent black.
 *
 * GL names are held by owners instead of as plain numbers, so that they are deleted on every way
 * out, and the three frame buffers once per GL context, as contexts don't share them.
 */
class AEOpenglMainFrameBuffer {
public:
    /// The process's one instance; safe to call from any thread, and without a context.
    static AEOpenglMainFrameBuffer* mainFrameBuffer();

    AEOpenglMainFrameBuffer(const AEOpenglMainFrameBuffer&) = delete;
    AEOpenglMainFrameBuffer& operator=(const AEOpenglMainFrameBuffer&) = delete;

    // The frame

    /**
     * Makes the targets fit a frame of `width` by `height` pixels. If the size has not changed they
     * are kept, and `multisample` is not looked at. A frame without pixels has no targets.
     */
    void prepare(long width, long height, bool multisample);

    /// Deletes the current GL context's frame buffers and the finished picture, and drops all open
    /// render contexts. The size stays known.
    void unprepare();

    /**
     * Ends all GL objects, those of other contexts with their contexts. The next `prepare` makes
     * everything anew.
     */
    void destory();

    /// Opens the frame: one render context, cleared to transparent black, viewport on all of it.
    void beginDrawing();

    /**
     * Closes the frame: the picture goes through ScreenRender into the output frame buffer, which
     * stays bound for reading. Nothing happens if no render context is open.
     */
    void endDrawing(float multiplier16bit);

    /// The frame's size in pixels, its low 16 bits.
    unsigned short width() const { return static_cast<unsigned short>(mWidth); }
    unsigned short height() const { return static_cast<unsigned short>(mHeight); }

    // Textures: new ones, cleared to zeros and owned by the caller, of the frame's size or of
    // `size` in pixels. `mipmap` and `linear` set the filters; no mipmap level is made.

    unsigned int createRenderTexture(bool mipmap);
    static unsigned int createRenderTexture(const Vec2& size, bool mipmap);
    unsigned int createFloatRenderTexture(bool linear, bool mipmap);
    static unsigned int createFloatRenderTexture(const Vec2& size, bool linear, bool mipmap);

    // The stack of render contexts

    /// Opens a render context cleared to transparent black. `first` has no effect.
    void pushRenderContext(bool first, bool stencil);

    /**
     * Closes the top render context and returns its picture as a new texture, owned by the caller;
     * 0, without a GL call, if none is open. The one below is a target again, but without its
     * stencil buffer.
     */
    unsigned int popRenderContext();

    /// Draws straight into `texture`, which is cleared, until popNormalRenderContext.
    static void pushNormalRenderContext(unsigned int texture);

    /// The same into mipmap level `level`, with the viewport at `size` pixels.
    static void pushNormalRenderContext(unsigned int texture, const Vec2& size, int level);

    /// Ends either, and returns to the top render context if there is one.
    void popNormalRenderContext();

    /// Drops all open render contexts with their stencil buffers.
    void clearStack();

private:
    /// Frame buffers belong to one GL context; they carry targets of any size. Deleted from the
    /// last to the first.
    struct FrameBuffers {
        GLFramebuffer mMultisampleFrameBuffer; ///< carries the render contexts
        GLFramebuffer mOutputFrameBuffer;      ///< takes the last pass and is read back
        GLFramebuffer mResolveFrameBuffer;     ///< receives the multisample resolve
        int mSamples = 0;                      ///< of a multisampled target

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
    std::map<unsigned int, GLRenderbuffer> mStencilBuffers; ///< by the colour target's name
    std::unique_ptr<ScreenRender> mScreenRender;
};

} // namespace Kerovane::Tesselune
