// Movie files: read and written again with all their streams and metadata.
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Host/Video/MovieReader.h"
#include "Host/Video/MovieWriter.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace Kerovane::Fuzz {

namespace {

using Host::MovieFrame;
using Host::MovieReader;
using Host::MovieWriter;

/// Returns whether the frames are small. Larger frames take longer and find nothing more.
bool IsSmall(const Host::MovieForm& form) {
    constexpr int kMostPixels = 256 * 256;
    return std::int64_t{form.width} * form.height <= kMostPixels;
}

/// Copies the first frames, as a cut or as a movie that breaks off.
void Copy(MovieReader& reader, const std::filesystem::path& target, bool isCut) {
    constexpr int kMostFrames = 8;
    const Host::MovieForm& form = reader.form();
    MovieWriter writer(target, form, {.alpha = form.hasAlpha});
    writer.carryFrom(reader, isCut ? std::optional<std::int64_t>(kMostFrames) : std::nullopt);
    Host::World world(form.depth(), form.width, form.height);
    std::int64_t end = 0;
    for (int i = 0; i < kMostFrames; ++i) {
        std::optional<MovieFrame> frame = reader.read();
        if (!frame) {
            break;
        }
        Expect(frame->duration > 0, "a frame is shown for some time");
        reader.unpack(*frame, ViewOf(world));
        end = frame->time + frame->duration;
        writer.write(writer.pack(ViewOf(std::as_const(world))), frame->time, frame->duration,
                     std::move(frame->others));
    }
    writer.finish(reader.readOthers(end), !isCut);
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    if (size < 2) {
        return 0;
    }
    static const TemporaryFolder kFolder;
    av_log_set_level(AV_LOG_QUIET);
    constexpr const char* kTargets[] = {"out.nut", "out.mkv", "out.mov", "out.avi"};
    const auto file = kFolder / "in";
    std::ofstream(file, std::ios::binary) << TextOf(data, size).substr(1);
    static_cast<void>(ReadOrError([&] {
        MovieReader reader(file);
        Expect(reader.form().width > 0 && reader.form().height > 0, "a movie has pixels");
        if (IsSmall(reader.form())) {
            Copy(reader, kFolder / kTargets[data[0] % std::size(kTargets)], (data[0] & 4) != 0);
        }
        return true;
    }));
    std::filesystem::remove(file);
    return 0;
}
