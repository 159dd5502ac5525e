#include "Host/Pictures/PictureFile.h"

#include "Host/Pictures/FileHeader.h"
#include "Host/Pictures/Windows.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <new>
#include <system_error>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kMegabyte = 1 << 20;

/// Returns the memory that a picture may take: the machine's memory or OpenImageIO's configurable
/// limit if that is less. The limit is checked here because some of OpenImageIO's readers ignore
/// it.
std::size_t MostMegabytes() {
    const auto machine = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
                         static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / kMegabyte;
    const auto library = static_cast<std::size_t>(OIIO::get_int_attribute("limits:imagesize_MB"));
    return library > 0 ? std::min(library, machine) : machine;
}

} // namespace

PictureFile::PictureFile(const std::filesystem::path& file) : mName(file.string()) {
    if (access(file.c_str(), R_OK) != 0) {
        fail(std::generic_category().message(errno));
    }
    if (std::filesystem::is_directory(file)) {
        fail("it is a directory");
    }
    const FileHeader header(file);
    const PictureFormat* format = FormatOf(header);
    refuseFor(ReasonNotToOpen(format, header));
    open(*format);
    check();
    refuseFor(ReasonNotToRead(*format, header, layout()));
}

bool PictureFile::goTo(int part) {
    bool isThere = false;
    attempt([&] { isThere = mInput->seek_subimage(part, 0); });
    static_cast<void>(mInput->geterror()); // some readers report the end of the parts as an error
    if (isThere && part > 0 && hasParts()) {
        check();
    }
    mPart = part;
    return isThere;
}

StoredPixels PictureFile::readStored() {
    StoredPixels stored;
    attempt([&] { stored = StoredPixels(layout()); });
    readTo(OIIO::TypeDesc::UNKNOWN, stored.data());
    return stored;
}

void PictureFile::fail(const std::string& reason) const {
    // Some of OpenImageIO's readers give no reason.
    throw Error(
        fmt::format("cannot read '{}': {}", mName, reason.empty() ? "it is damaged" : reason));
}

void PictureFile::readTo(OIIO::TypeDesc type, void* pixels) {
    bool isRead = false;
    attempt([&] { isRead = mInput->read_image(mPart, 0, 0, layout().nchannels, type, pixels); });
    if (!isRead) {
        fail(mInput->geterror());
    }
}

void PictureFile::refuseFor(const std::string& reason) const {
    if (!reason.empty()) {
        fail(reason);
    }
}

/// Opens the file with the format's own reader. OpenImageIO would otherwise try all its readers if
/// that one fails.
void PictureFile::open(const PictureFormat& format) {
    mInput = OIIO::ImageInput::create(format.reader);
    if (mInput == nullptr) {
        OIIO::geterror(); // clears the message, which OpenImageIO would report again with the next
                          // failure
        fail(fmt::format("OpenImageIO was built without a reader for {}", format.name));
    }
    OIIO::ImageSpec wishes;
    wishes.attribute("oiio:UnassociatedAlpha", 1);
    OIIO::ImageSpec layout;
    bool isOpen = false;
    attempt([&] { isOpen = mInput->open(mName, layout, wishes); });
    if (!isOpen) {
        fail(mInput->geterror());
    }
}

/// Runs `action` and converts exceptions to Error: some of OpenImageIO's readers throw.
void PictureFile::attempt(const std::function<void()>& action) const {
    try {
        action();
    } catch (const std::bad_alloc&) {
        fail("out of memory");
    } catch (const std::exception& error) {
        fail(fmt::format("its reader failed: {}", error.what()));
    }
}

void PictureFile::check() {
    const OIIO::ImageSpec& layout = this->layout();
    if (layout.deep || layout.depth > 1) {
        fail("it is not a flat picture, but deep, with several samples a pixel");
    }
    checkSize(layout.width, layout.height);
    if (isOpenExr()) {
        checkSize(layout.full_width, layout.full_height);
    }
    constexpr int kMaxChannels = 1024;
    if (layout.nchannels < 1 || layout.nchannels > kMaxChannels) {
        fail(fmt::format("it has {} channels", layout.nchannels));
    }
    checkMemory();
}

void PictureFile::checkSize(int width, int height) const {
    if (std::min(width, height) < 1 || std::max(width, height) > World::kMaxSide) {
        fail(fmt::format("its size of {} x {} is not within 1 to {} pixels a side", width, height,
                         World::kMaxSide));
    }
}

void PictureFile::checkMemory() {
    const std::size_t megabytes = MostMegabytes();
    constexpr std::size_t kChannelsOfFrame = 4;
    const std::size_t frame = isOpenExr() && !FillsItsFrame(layout())
                                  ? static_cast<std::size_t>(layout().full_width) *
                                        static_cast<std::size_t>(layout().full_height)
                                  : 0;
    mValues += valueCount() + frame * kChannelsOfFrame;
    if (mValues * sizeof(float) > megabytes * kMegabyte) {
        fail(fmt::format("its {} x {} pixels of {} channels take more than {} MB", layout().width,
                         layout().height, layout().nchannels, megabytes));
    }
}

std::size_t PictureFile::valueCount() const {
    return static_cast<std::size_t>(layout().image_pixels()) *
           static_cast<std::size_t>(layout().nchannels);
}

} // namespace Kerovane::Host
