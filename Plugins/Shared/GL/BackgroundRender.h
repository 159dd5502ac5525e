#pragma once

#include "Plugins/Shared/GL/ChannelOrderPass.h"

namespace Kerovane::Tesselune {

/**
 * ScreenRender's reverse: the host's alpha, red, green, blue, straight and on the host's scale,
 * become red, green, blue, alpha, premultiplied and on the full scale.
 */
class BackgroundRender : public ChannelOrderPass {
public:
    BackgroundRender();
};

} // namespace Kerovane::Tesselune
