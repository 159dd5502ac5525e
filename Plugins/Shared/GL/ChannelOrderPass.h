#pragma once

#include "Plugins/Shared/GL/FullPictureQuad.h"
#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/OpenglShader.h"

#include <string>

namespace Kerovane::Tesselune {

/**
 * What ScreenRender and BackgroundRender have in common: all but the fragment program.
 *
 * `mQuad` owns the pass's vertex array and vertex buffer, as MosaicRender's does.
 */
class ChannelOrderPass {
public:
    /**
     * Draws `texture` over the whole of the bound frame buffer's viewport. `multiplier16bit` is the
     * frame's: 65535/32768 at 16 bits, else 1. Leaves the program in use.
     */
    void draw(unsigned int texture, float multiplier16bit);

protected:
    /// Makes no GL call.
    explicit ChannelOrderPass(const std::string& fragment);

    /// Deletes the GL objects; a context of their share group must be current.
    ~ChannelOrderPass() = default;

private:
    void bindNearestSampler();

    FullPictureQuad mQuad;
    OpenglShader mProgram;
    GLSampler mNearestSampler;
};

} // namespace Kerovane::Tesselune
