// Picture files: the first byte picks the file name's extension, and with it the format; the second
// byte picks the depth.
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>

namespace Kerovane::Fuzz {

namespace {

using Host::Depth;
using Host::Picture;

constexpr const char* kFormats[] = {"png", "jpg", "tif", "exr", "bmp", "tga", "webp",
                                    "gif", "hdr", "dpx", "ppm", "psd", "sgi", "ico"};

constexpr std::optional<Depth> kDepths[] = {std::nullopt, Depth::Bits8, Depth::Bits16,
                                            Depth::Float32};

/// Limits the size that a file's header may claim.
void LimitPictures() {
    constexpr int kMegabytes = 2;
    OIIO::attribute("limits:imagesize_MB", kMegabytes);
    OIIO::attribute("threads", 1);
    OIIO::attribute("exr_threads", -1);
}

void CheckPicture(const Picture& picture, std::optional<Depth> depth) {
    const Host::World& world = picture.first().world;
    Expect(world.width() > 0 && world.height() > 0, "a picture has pixels");
    Expect(!depth || world.depth() == *depth, "a picture has the depth that is asked for");
    Expect(picture.origin().width == world.width() && picture.origin().height == world.height(),
           "a picture is described as it stands");
    const PF_RationalScale ratio = world.layer().pix_aspect_ratio;
    Expect(ratio.num > 0 && ratio.den > 0, "pixels have a shape");
}

/// Writes the picture, metadata included, and reads it again. Does nothing for a large picture.
void CheckCanBeWritten(const Picture& picture, const std::filesystem::path& target) {
    constexpr A_long kLargest = 64;
    if (std::max(picture.origin().width, picture.origin().height) > kLargest) {
        return;
    }
    ReadOrError([&] {
        Host::PictureWriter(target).write(picture);
        const Picture again = Host::ReadPicture(target);
        Expect(again.origin().width == picture.origin().width &&
                   again.origin().height == picture.origin().height,
               "a picture is written at its size");
        return true;
    });
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    constexpr std::size_t kPicks = 2;
    if (size < kPicks) {
        return 0;
    }
    static const TemporaryFolder kFolder;
    static const bool kLimited = (LimitPictures(), true);
    static_cast<void>(kLimited);
    const auto depth = kDepths[data[1] % std::size(kDepths)];
    const auto file = kFolder / "in." += kFormats[data[0] % std::size(kFormats)];
    std::ofstream(file, std::ios::binary) << TextOf(data, size).substr(kPicks);
    if (const auto picture =
            ReadOrError([&] { return Kerovane::Host::ReadPicture(file, {.depth = depth}); })) {
        CheckPicture(*picture, depth);
        CheckCanBeWritten(*picture, kFolder / "out.png");
        CheckCanBeWritten(*picture, kFolder / "out.exr");
    }
    std::filesystem::remove(file);
    return 0;
}
