#pragma once

#include "Host/Session/World.h"
#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"

#include <memory>

namespace Kerovane::Benchmarks {

/// The parameters that differ between measured frames; all others have the effect's defaults.
struct Cells {
    int shapeType = 0;       ///< 0 square, 1 triangle
    int size = 10;           ///< height of a cell in pixels
    int levels = 3;          ///< sizes above the normal size, each twice the one before
    double sizeRandom = 0.0; ///< share of the picture with random sizes, in percent
};

/**
 * The lower bound that the effect's frame is measured against: its GL calls in the same order, and
 * the copies between the host's rows and a block without padding, and nothing else. Uses the
 * effect's own mosaic program, so that the bare frame and the effect draw the same picture with the
 * same arithmetic. Draws one sample a pixel, as the effect does on a software rasteriser.
 */
class BareFrame {
public:
    /// Creates its own context and leaves it current.
    explicit BareFrame(const Cells& cells);

    /// The context must be current.
    ~BareFrame();

    BareFrame(const BareFrame&) = delete;
    BareFrame& operator=(const BareFrame&) = delete;

    void makeCurrent() { mContext.makeContextCurrent(); }

    /// Renders `input` into `output`, which must have the same depth and size. The context must be
    /// current.
    void render(const Host::World& input, Host::World& output);

private:
    struct Layout;
    struct Quad {
        Tesselune::GLVertexArray vertexArray;
        Tesselune::GLBuffer vertices;
    };

    void fitTargets(int width, int height);
    void openTarget();
    unsigned int upload(const Host::World& input, const Layout& layout) const;
    void drawMosaic(unsigned int texture, float multiplier) const;
    unsigned int resolve();
    void drawScreenPass(unsigned int texture, float multiplier) const;
    void download(Host::World& output, const Layout& layout) const;

    Tesselune::AEOpenGLContext mContext{nullptr};
    Cells mCells;
    std::unique_ptr<Tesselune::OpenglShader> mMosaicShader;
    std::unique_ptr<Tesselune::OpenglShader> mScreenShader;
    unsigned int mMosaicProgram = 0;
    unsigned int mScreenProgram = 0;
    Quad mMosaicQuad;
    Quad mScreenQuad;
    Tesselune::GLFramebuffer mDrawBuffer;
    Tesselune::GLFramebuffer mResolveBuffer;
    Tesselune::GLFramebuffer mOutputBuffer;
    Tesselune::GLRenderbuffer mTarget;
    Tesselune::GLRenderbuffer mOutput;
    int mWidth = 0;
    int mHeight = 0;
};

} // namespace Kerovane::Benchmarks
