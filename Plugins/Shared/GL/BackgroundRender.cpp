#include "GL/BackgroundRender.h"

#include "ChannelOrderShaders.h"

namespace Kerovane::Tesselune {

BackgroundRender::BackgroundRender() : ChannelOrderPass(std::string(kBackgroundRenderFragment)) {}

} // namespace Kerovane::Tesselune
