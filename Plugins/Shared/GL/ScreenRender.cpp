#include "GL/ScreenRender.h"

#include "ChannelOrderShaders.h"

namespace Kerovane::Tesselune {

ScreenRender::ScreenRender() : ChannelOrderPass(std::string(kScreenRenderFragment)) {}

} // namespace Kerovane::Tesselune
