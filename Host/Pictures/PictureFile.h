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
 * An open picture file, read part by part. Each part's size is checked before its pixels are read,
 * because a small file may claim more pixels than fit into memory. Operations throw Error, which
 * names the file, if they fail.
 */
class PictureFile {
public:
    /// Opens the first part. Throws Error if the file cannot be read as a picture.
    explicit PictureFile(const std::filesystem::path& file);

    /// The current part's layout.
    const OIIO::ImageSpec& layout() const { return mInput->spec(); }

    /// OpenImageIO's name of the format.
    std::string format() const { return mInput->format_name(); }

    /// Returns whether the format is OpenEXR, the only one whose display window and channel names
    /// are used.
    bool isOpenExr() const { return format() == "openexr"; }

    /// Returns whether the file's parts are separate pictures.
    bool hasParts() const { return isOpenExr() || format() == "tiff"; }

    /// Makes part `part` the current one. Returns false if there is no such part.
    bool goTo(int part);

    /// Reads all channels of all pixels, converted to `Channel`.
    template <typename Channel>
    std::unique_ptr<Channel[]> read() {
        std::unique_ptr<Channel[]> pixels;
        attempt([&] { pixels = std::make_unique_for_overwrite<Channel[]>(valueCount()); });
        readTo(OIIO::BaseTypeFromC<Channel>::value, pixels.get());
        return pixels;
    }

    /// Reads all channels of all pixels, each in its stored type.
    StoredPixels readStored();

    /// Throws Error with the file's name and `reason`.
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
    std::size_t mValues = 0; ///< channel values in all parts so far
};

} // namespace Kerovane::Host
