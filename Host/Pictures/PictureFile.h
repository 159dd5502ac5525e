#pragma once

#include "Host/Pictures/PictureFormat.h"
#include "Host/Pictures/StoredPixels.h"

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace Kerovane::Host {

/**
 * A picture file that is open, part by part. Each part is looked at before its pixels are read: a
 * few bytes may claim to be more of them than anybody has the memory for. Errors name the file.
 */
class PictureFile {
public:
    /// Stands at the first part. Throws Error if the file can't be read as a picture.
    explicit PictureFile(const std::filesystem::path& file);

    /// Of the part.
    const OIIO::ImageSpec& layout() const { return mInput->spec(); }

    /// OpenImageIO's name of it.
    std::string format() const { return mInput->format_name(); }

    /// Whether what the file says of a display window is meant, and channels are known by name.
    bool isOpenExr() const { return format() == "openexr"; }

    /// Whether each part is a picture of its own.
    bool hasParts() const { return isOpenExr() || format() == "tiff"; }

    /// Goes to the part of the given number. Returns whether there is one.
    bool goTo(int part);

    /// All channels of all pixels, in `Channel` values.
    template <typename Channel>
    std::unique_ptr<Channel[]> read() {
        std::unique_ptr<Channel[]> pixels;
        attempt([&] { pixels = std::make_unique_for_overwrite<Channel[]>(valueCount()); });
        readTo(OIIO::BaseTypeFromC<Channel>::value, pixels.get());
        return pixels;
    }

    /// All channels of all pixels, each in its own type.
    StoredPixels readStored();

    /// Throws Error: that the file can't be read, for that reason.
    [[noreturn]] void fail(const std::string& reason) const;

private:
    void readTo(OIIO::TypeDesc type, void* pixels);
    void refuseFor(const std::string& reason) const;
    void open(const PictureFormat& format);
    void attempt(const std::function<void()>& action) const;
    void check();
    void checkSize(int width, int height) const;
    void checkMemory();
    std::size_t valueCount() const;

    std::string mName;
    std::unique_ptr<OIIO::ImageInput> mInput;
    int mPart = 0;
    std::size_t mValues = 0; ///< of all parts so far
};

} // namespace Kerovane::Host
