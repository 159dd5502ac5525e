#include "Host/Video/OpenMovie.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace Kerovane::Host {

namespace {

/// Returns false for text and still pictures, which FFmpeg reads as movies too.
bool HoldsMovies(const AVInputFormat& format) {
    constexpr std::array<std::string_view, 6> kOthers{"tty", "bin", "xbin", "adf", "idf", "image2"};
    constexpr std::string_view kPicture = "_pipe";
    const std::string_view name = format.name;
    return !name.ends_with(kPicture) && std::ranges::find(kOthers, name) == kOthers.end();
}

} // namespace

AvInput OpenMovie(const std::filesystem::path& file) {
    // The explicit protocol keeps FFmpeg from taking a name for a network address.
    const std::string address = file == kStandardStream ? "pipe:0" : "file:" + file.string();
    const std::string failure = fmt::format("cannot read '{}' as a movie", file.string());
    AVFormatContext* opened = nullptr;
    AvOptions options;
    options.set("protocol_whitelist", "file,pipe"); // applies to the files that playlists name, too
    CheckAv(avformat_open_input(&opened, address.c_str(), nullptr, options.address()), failure);
    AvInput movie(opened);
    if (!HoldsMovies(*movie->iformat)) {
        throw Error(failure + ": it is not one");
    }
    CheckAv(avformat_find_stream_info(movie.get(), nullptr), failure);
    return movie;
}

int VideoStreamOf(AVFormatContext& movie, const std::filesystem::path& file) {
    const int stream = av_find_best_stream(&movie, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    const auto isCover = [&movie](int index) {
        return (movie.streams[index]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
    };
    if (stream < 0 || isCover(stream)) {
        throw Error(
            fmt::format("cannot read '{}' as a movie: it has no moving pictures", file.string()));
    }
    return stream;
}

} // namespace Kerovane::Host
