#include "Host/Video/MovieFiles.h"

#include "Host/Pictures/FileHeader.h"
#include "Host/Pictures/PictureFormat.h"
#include "Host/Video/OpenMovie.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace Kerovane::Host {

bool IsMovieName(const std::filesystem::path& file) {
    if (file == kStandardStream) {
        return true;
    }
    const std::string name = fmt::format("x{}", file.extension().string());
    const AVOutputFormat* format = av_guess_format(nullptr, name.c_str(), nullptr);
    if (format == nullptr || format->video_codec == AV_CODEC_ID_NONE) {
        return false;
    }
    static constexpr std::array<std::string_view, 5> kOthers{"apng", "fits", "ico", "mp3", "webp"};
    const std::string_view kind = format->name;
    return !kind.starts_with("image2") && std::ranges::find(kOthers, kind) == kOthers.end();
}

bool IsMovieFile(const std::filesystem::path& file, bool orPicture) {
    if (file == kStandardStream) {
        return true;
    }
    if (!std::filesystem::exists(file) || std::filesystem::is_directory(file)) {
        return false;
    }
    const FileHeader header(file);
    if (const PictureFormat* picture = FormatOf(header)) {
        return picture->name == "movies" || (picture->reader == "gif" && !orPicture);
    }
    if (IsMovieName(file)) {
        return true;
    }
    try {
        OpenMovie(file);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace Kerovane::Host
