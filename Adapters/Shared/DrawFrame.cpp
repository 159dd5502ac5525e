#include "Adapters/Shared/DrawFrame.h"

#include "Adapters/Shared/Complaint.h"
#include "Adapters/Shared/RendererParameter.h"
#include "Host/Frames/RendererChoice.h"

namespace Kerovane::Adapters {

void DrawFrame(Host::FrameRenderer& renderer, const Host::Frame& frame,
               const Host::ParameterValues& values, const Host::ConstPixelView& in,
               const Host::PixelView& out) {
    const Host::RendererChoice choice = Host::ChooseRenderer(RendererIn(values, frame.time));
    if (!choice.remark.empty()) {
        Complain(choice.remark);
    }
    renderer.render(frame, values, in, out, choice.renderer);
}

} // namespace Kerovane::Adapters
