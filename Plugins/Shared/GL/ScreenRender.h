#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * The last pass of a frame: red, green, blue, alpha, premultiplied and on the full scale, become
 * the host's alpha, red, green, blue, straight and on the host's scale.
 */
class ScreenRender : public ChannelOrderPass {
public:
    ScreenRender();
};

} // namespace Kerovane::Tesselune
