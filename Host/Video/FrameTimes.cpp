#include "Host/Video/FrameTimes.h"

#include "Host/Video/OpenMovie.h"

#include <algorithm>
#include <vector>

namespace Kerovane::Host {

std::optional<std::int64_t> TimeOfFrame(const std::filesystem::path& file, int stream,
                                        std::int64_t number) {
    constexpr std::size_t kFurthestReordering = 64; // from decoding to display, in frames
    const AvInput movie = OpenMovie(file);
    for (unsigned i = 0; i < movie->nb_streams; ++i) {
        movie->streams[i]->discard = static_cast<int>(i) == stream ? AVDISCARD_NONE : AVDISCARD_ALL;
    }
    std::vector<std::int64_t> times;
    const auto enough = static_cast<std::size_t>(number) + kFurthestReordering;
    const AvPacket packet = NewPacket();
    while (times.size() < enough && av_read_frame(movie.get(), packet.get()) >= 0) {
        if (packet->stream_index == stream && (packet->flags & AV_PKT_FLAG_DISCARD) == 0) {
            if (packet->pts == AV_NOPTS_VALUE) {
                return std::nullopt;
            }
            times.push_back(packet->pts);
        }
        av_packet_unref(packet.get());
    }
    const auto wanted = static_cast<std::size_t>(number);
    if (wanted >= times.size()) {
        return std::nullopt;
    }
    const auto place = times.begin() + static_cast<std::ptrdiff_t>(wanted);
    std::ranges::nth_element(times, place);
    return *place;
}

} // namespace Kerovane::Host
