#pragma once

#include "Plugins/Shared/GL/FullPictureQuad.h"
#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/OpenglShader.h"

#include <string>

namespace Kerovane::Tesselune {

/**
 * Base of ScreenRender and BackgroundRender, which differ in the fragment shader alone.
 *
 * `mQuad` owns the vertex array and the vertex buffer.
 */
class ChannelOrderPass {
public:
    /**
     * Draws `texture` over the whole viewport of the bound frame buffer. `multiplier16bit` is the
     * value that UploadTexture set: 65535/32768 at 16 bits, else 1. Leaves the program in use.
     */
    void draw(unsigned int texture, float multiplier16bit);

protected:
    /// Makes no GL call.
    explicit ChannelOrderPass(const std::string& fragment);

    /// Deletes the GL objects. A context of their share group must be current.
    ~ChannelOrderPass() = default;

private:
    void bindNearestSampler();

    FullPictureQuad mQuad;
    OpenglShader mProgram;
    GLSampler mNearestSampler;
};

} // namespace Kerovane::Tesselune
