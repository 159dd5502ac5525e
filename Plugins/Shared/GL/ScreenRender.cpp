#include "Plugins/Shared/GL/ScreenRender.h"

#include "Plugins/Shared/GL/ChannelOrderShaders.h"

namespace Kerovane::Tesselune {

ScreenRender::ScreenRender() : ChannelOrderPass(std::string(kScreenRenderFragment)) {}

} // namespace Kerovane::Tesselune
