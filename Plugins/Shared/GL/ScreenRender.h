#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * The last pass of a frame: turns RGBA, with premultiplied alpha and on the full scale, into the
 * host's ARGB, with straight alpha and on the host's scale. White is 1 on the full scale; on the
 * host's scale, 16-bit white is 32768/65535.
 */
class ScreenRender : public ChannelOrderPass {
public:
    ScreenRender();
};

} // namespace Kerovane::Tesselune
