#include "Host/Pictures/PictureFormat.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace Kerovane::Host {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kReaderNotSafe = "as their reader is not safe";

/// The GIF reader counts bytes in an int and writes out of bounds if that overflows.
std::string ReasonNotToOpenGif(const FileHeader& header) {
    constexpr std::uint64_t kBytesPerPixel = 4;
    const std::uint64_t bytes = header.number(6, 2, std::endian::little) *
                                header.number(8, 2, std::endian::little) * kBytesPerPixel;
    return bytes > std::numeric_limits<int>::max() ? "it is larger than a GIF picture can be read"
                                                   : "";
}

/// The DPX reader allocates as much memory for user data as the header states, whatever the file's
/// size.
std::string ReasonNotToOpenDpx(const FileHeader& header) {
    constexpr std::size_t kUserSizePlace = 32;
    constexpr std::uint64_t kUndefined = 0xffffffff;
    const std::uint64_t userSize = header.number(
        kUserSizePlace, 4, header.has("SDPX") ? std::endian::big : std::endian::little);
    return userSize > header.fileSize() && userSize != kUndefined
               ? "its header names more than the file holds"
               : "";
}

/// The PSD reader accesses all channels of the colour mode, even if the file has fewer.
std::string ReasonNotToReadPsd(const FileHeader& header, const OIIO::ImageSpec& layout) {
    constexpr std::uint64_t kIndexed = 2; // one channel is expanded to three
    constexpr std::uint64_t kCmyk = 4;    // four channels are converted to three
    const std::uint64_t mode = header.number(24, 2, std::endian::big);
    const int used = layout.nchannels - (mode == kIndexed ? 2 : 0) + (mode == kCmyk ? 1 : 0);
    return used > static_cast<int>(header.number(12, 2, std::endian::big))
               ? "it has fewer channels than its colour mode needs"
               : "";
}

/// Ordered by reliability: the first match counts, so short signatures and mere extensions come
/// last.
const std::vector<PictureFormat>& Formats() {
    static const std::vector<PictureFormat> kFormats{
        {.name = "PNG", .reader = "png", .signatures = {{"\x89PNG\r\n\x1a\n"}}},
        {.name = "JPEG", .reader = "jpeg", .signatures = {{"\xff\xd8\xff"}}},
        {.name = "OpenEXR", .reader = "openexr", .signatures = {{"\x76\x2f\x31\x01"}}},
        {.name = "DPX",
         .reader = "dpx",
         .signatures = {{"SDPX"}, {"XPDS"}},
         .reasonNotToOpen = ReasonNotToOpenDpx},
        {.name = "WebP", .reader = "webp", .signatures = {{"WEBP", 8}}},
        {.name = "GIF",
         .reader = "gif",
         .signatures = {{"GIF87a"}, {"GIF89a"}},
         .reasonNotToOpen = ReasonNotToOpenGif},
        {.name = "PSD",
         .reader = "psd",
         .signatures = {{"8BPS"}},
         .reasonNotToRead = ReasonNotToReadPsd},
        {.name = "JPEG 2000",
         .reader = "jpeg2000",
         .signatures = {{"\0\0\0\x0cjP  \r\n\x87\n"sv}, {"\xff\x4f\xff\x51"}}},
        {.name = "Radiance HDR", .reader = "hdr", .signatures = {{"#?"}}},
        {.name = "BMP", .reader = "bmp", .signatures = {{"BM"}}},
        {.name = "PNM",
         .reader = "pnm",
         .signatures = {{"P1"}, {"P2"}, {"P3"}, {"P4"}, {"P5"}, {"P6"}, {"Pf"}, {"PF"}}},

        {.name = "icons", .signatures = {{"\0\0\1\0"sv}}, .whyNotRead = kReaderNotSafe},
        {.name = "SGI pictures", .signatures = {{"\x01\xda"}}, .whyNotRead = kReaderNotSafe},
        {.name = "Cineon pictures",
         .signatures = {{"\x80\x2a\x5f\xd7"}, {"\xd7\x5f\x2a\x80"}},
         .whyNotRead = kReaderNotSafe},
        {.name = "IFF pictures", .signatures = {{"FOR4"}, {"FORM"}}, .whyNotRead = kReaderNotSafe},
        {.name = "Softimage pictures",
         .signatures = {{"\x53\x80\xf6\x34"}},
         .whyNotRead = kReaderNotSafe},
        {.name = "HEIF and AVIF pictures",
         .signatures =
             {{"ftyphei", 4}, {"ftyphev", 4}, {"ftypmif", 4}, {"ftypmsf", 4}, {"ftypavi", 4}},
         .whyNotRead = kReaderNotSafe},
        {.name = "DDS textures", .signatures = {{"DDS "}}},
        {.name = "DICOM pictures", .signatures = {{"DICM", 128}}},
        {.name = "FITS files", .signatures = {{"SIMPLE  ="}}},
        {.name = "OpenVDB volumes", .signatures = {{" BDV"}}},
        {.name = "depth files", // Pixar's
         .signatures = {{"\x2f\x08\x67\xab"}, {"\xab\x67\x08\x2f"}}},
        {.name = "camera raw files",
         .signatures = {{"ftypcrx", 4}, {"FUJIFILMCCD-RAW"}, {"IIRO"}, {"IIRS"}, {"IIU\0"sv}},
         // Most raw files look like TIFF, whose reader would find a preview at best.
         .extensions = {"3fr", "arw", "cr2", "crw", "dcr", "dng", "erf", "fff", "iiq",
                        "k25", "kdc", "mef", "mos", "mrw", "nef", "nrw", "orf", "pef",
                        "raf", "raw", "rw2", "rwl", "sr2", "srf", "srw", "x3f"},
         .whyNotRead = "as they have to be developed first"},
        {.name = "movies",
         .signatures = {{"ftyp", 4},
                        {"moov", 4},
                        {"mdat", 4},
                        {"wide", 4},
                        {"AVI ", 8},
                        {"\x1a\x45\xdf\xa3"},
                        {"\0\0\1\xba"sv},
                        {"\0\0\1\xb3"sv},
                        {"\x30\x26\xb2\x75"},
                        {"OggS"},
                        {"FLV"}},
         .whyNotRead = "as pictures; the command render takes them"},

        {.name = "TIFF",
         .reader = "tiff",
         .signatures = {{"II*\0"sv}, {"MM\0*"sv}, {"II+\0"sv}, {"MM\0+"sv}}},
        {.name = "TGA", .reader = "targa", .extensions = {"tga", "tpic", "vda", "icb", "vst"}},
        {.name = "RLA pictures", .signatures = {{"\xff\xfe", 26}}, .whyNotRead = kReaderNotSafe},
    };
    return kFormats;
}

bool IsOf(const PictureFormat& format, const FileHeader& header) {
    const bool bySignature =
        std::ranges::any_of(format.signatures, [&](const Signature& signature) {
            return header.has(signature.bytes, signature.place);
        });
    return bySignature ||
           std::ranges::find(format.extensions, header.extension()) != format.extensions.end();
}

/// Joins the names of the formats that are read: "PNG, JPEG and TIFF".
std::string NamesOfFormatsRead() {
    std::vector<std::string_view> names;
    for (const PictureFormat& format : Formats()) {
        if (!format.reader.empty()) {
            names.push_back(format.name);
        }
    }
    const std::string_view last = names.back();
    names.pop_back();
    return fmt::format("{} and {}", fmt::join(names, ", "), last);
}

} // namespace

const PictureFormat* FormatOf(const FileHeader& header) {
    const auto found = std::ranges::find_if(
        Formats(), [&](const PictureFormat& format) { return IsOf(format, header); });
    return found != Formats().end() ? &*found : nullptr;
}

std::string ReasonNotToOpen(const PictureFormat* format, const FileHeader& header) {
    if (format == nullptr) {
        return fmt::format("its format is unknown; {} are read", NamesOfFormatsRead());
    }
    if (format->reader.empty()) {
        return fmt::format("{} are not read{}{}; {} are", format->name,
                           format->whyNotRead.empty() ? "" : ", ", format->whyNotRead,
                           NamesOfFormatsRead());
    }
    return format->reasonNotToOpen != nullptr ? format->reasonNotToOpen(header) : "";
}

std::string ReasonNotToRead(const PictureFormat& format, const FileHeader& header,
                            const OIIO::ImageSpec& layout) {
    return format.reasonNotToRead != nullptr ? format.reasonNotToRead(header, layout) : "";
}

} // namespace Kerovane::Host
