#include "Plugins/Shared/GL/BackgroundRender.h"

#include "Plugins/Shared/GL/ChannelOrderShaders.h"

namespace Kerovane::Tesselune {

BackgroundRender::BackgroundRender() : ChannelOrderPass(std::string(kBackgroundRenderFragment)) {}

} // namespace Kerovane::Tesselune
