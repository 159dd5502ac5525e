#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * The inverse of ScreenRender: turns the host's ARGB, with straight alpha and on the host's scale,
 * into RGBA, with premultiplied alpha and on the full scale. White is 1 on the full scale; on the
 * host's scale, 16-bit white is 32768/65535.
 */
class BackgroundRender : public ChannelOrderPass {
public:
    BackgroundRender();
};

} // namespace Kerovane::Tesselune
