#include "Software/DrawMosaic.h"

#include "Software/Mosaic.h"

#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/task_arena.h>

#include <algorithm>
#include <cstddef>

namespace Kerovane::Software {

namespace {

/// Returns how many bands a thread takes at a time: about 64 rows of pixels, so that the scheduling
/// costs little.
int BandsAtATime(const Mosaic& mosaic) {
    constexpr std::ptrdiff_t kRows = 64;
    return static_cast<int>(std::max<std::ptrdiff_t>(kRows / mosaic.top(1), 1));
}

} // namespace

void DrawMosaic(const MosaicParameters& parameters, const Host::ConstPixelView& in,
                const Host::PixelView& out, int threads) {
    const Mosaic mosaic(parameters, in.width, in.height);
    const int bands = mosaic.bands();
    if (bands == 0) {
        return;
    }
    if (threads == 1) {
        mosaic.draw(in, out, 0, bands);
        return;
    }
    tbb::task_arena arena(threads > 0 ? threads : tbb::task_arena::automatic);
    arena.execute([&] {
        const tbb::blocked_range<int> all(0, bands, static_cast<std::size_t>(BandsAtATime(mosaic)));
        tbb::parallel_for(all, [&](const tbb::blocked_range<int>& range) {
            mosaic.draw(in, out, range.begin(), range.end());
        });
    });
}

} // namespace Kerovane::Software
