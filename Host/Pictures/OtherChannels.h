#pragma once

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

/**
 * Channels of a picture that hold no colour, such as depth, normals and mattes: as the file has
 * them, each in its own type, pixel by pixel over the frame. What the file's data window lacks of
 * that is 0.
 */
class OtherChannels {
public:
    OtherChannels() = default;

    /// Those of `layout` that `isColour` doesn't name, without pixels yet.
    OtherChannels(const OIIO::ImageSpec& layout, const std::vector<bool>& isColour);

    bool isEmpty() const { return mChannels.empty(); }

    /// Whether there are pixels of them, not names alone.
    bool isRead() const { return mPixels != nullptr; }

    /// "Z, N.x and 3 more".
    std::string names() const;

    /// Reads them of a file that is open. Returns whether it could.
    bool read(OIIO::ImageInput& input);

    /// Adds names and types to the layout of a file that is written.
    void addTo(OIIO::ImageSpec& layout) const;

    std::size_t pixelBytes() const { return mPixelBytes; }

    /// Of pixel 0 in row `y` of the frame.
    const std::byte* row(std::ptrdiff_t y) const {
        return mPixels.get() + static_cast<std::size_t>(y) * mRowBytes;
    }

private:
    struct Channel {
        int place = 0; ///< among the file's channels
        std::string name;
        OIIO::TypeDesc type;
    };

    std::vector<Channel> mChannels;
    std::size_t mPixelBytes = 0;
    std::size_t mRowBytes = 0;
    std::unique_ptr<std::byte[]> mPixels;
};

/// "channels that hold no colour are left out: Z, N.x".
std::string LossOf(const OtherChannels& channels);

} // namespace Kerovane::Host
