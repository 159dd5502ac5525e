#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * The last pass of a frame: turns RGBA, premultiplied and on the full scale, into the host's ARGB,
 * straight and on the host's scale.
 */
class ScreenRender : public ChannelOrderPass {
public:
    ScreenRender();
};

} // namespace Kerovane::Tesselune
