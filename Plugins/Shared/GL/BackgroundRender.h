#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * The inverse of ScreenRender: turns the host's ARGB, straight and on the host's scale, into RGBA,
 * premultiplied and on the full scale.
 */
class BackgroundRender : public ChannelOrderPass {
public:
    BackgroundRender();
};

} // namespace Kerovane::Tesselune
