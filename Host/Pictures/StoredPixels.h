#pragma once

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Kerovane::Host {

/**
 * The pixels of a part as stored in its file: all channels, each in its own type, over the data
 * window.
 */
class StoredPixels {
public:
    StoredPixels() = default;

    /// Allocates memory for the pixels of a part with that layout.
    explicit StoredPixels(const OIIO::ImageSpec& layout);

    bool isEmpty() const { return mPixels == nullptr; }

    /// The memory to read all channels into, each in its own type.
    std::byte* data() { return mPixels.get(); }

    const OIIO::ImageSpec& layout() const { return mLayout; }

    /// Selects the channels that are written unchanged, by their places. The default is none.
    void letPass(std::vector<int> places) { mPassing = std::move(places); }
    const std::vector<int>& passing() const { return mPassing; }

    /// Whether colour outside the display window is written unchanged.
    bool keepsOverscan() const { return mKeepsOverscan; }
    void keepOverscan() { mKeepsOverscan = true; }

    /// Copies channel `place` of row `y` from column `left` to before `right`, converted to `type`.
    /// `to` points at the value for column `left`, and pixels are `pixelBytes` apart there. Values
    /// of pixels that are not stored are left unchanged.
    void copyRow(int place, int y, int left, int right, OIIO::TypeDesc type, std::byte* to,
                 std::size_t pixelBytes) const;

private:
    OIIO::ImageSpec mLayout;
    std::vector<std::size_t> mOffsets; ///< byte offset of each channel within a pixel
    std::size_t mPixelBytes = 0;
    std::unique_ptr<std::byte[]> mPixels;
    std::vector<int> mPassing;
    bool mKeepsOverscan = false;
};

} // namespace Kerovane::Host
