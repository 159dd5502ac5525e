#pragma once

#include <OpenImageIO/imageio.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Kerovane::Host {

/**
 * The pixels of a file's part as they are stored: all of its channels, each in its own type, over
 * its data window.
 */
class StoredPixels {
public:
    StoredPixels() = default;

    /// Makes room for the pixels of such a part.
    explicit StoredPixels(const OIIO::ImageSpec& layout);

    bool isEmpty() const { return mPixels == nullptr; }

    /// For a reader of all channels in their own types.
    std::byte* data() { return mPixels.get(); }

    const OIIO::ImageSpec& layout() const { return mLayout; }

    /// Has the channels of the given places pass; none do before.
    void letPass(std::vector<int> places) { mPassing = std::move(places); }
    const std::vector<int>& passing() const { return mPassing; }

    /// Whether the colour passes that lies outside of the display window.
    bool keepsOverscan() const { return mKeepsOverscan; }
    void keepOverscan() { mKeepsOverscan = true; }

    /// Copies a channel of the part of row `y` that lies within the columns from `left` to `right`,
    /// converted to `type`. `to` is the place of `left`, with `pixelBytes` from pixel to pixel;
    /// what isn't stored stays as it is there.
    void copyRow(int place, int y, int left, int right, OIIO::TypeDesc type, std::byte* to,
                 std::size_t pixelBytes) const;

private:
    OIIO::ImageSpec mLayout;
    std::vector<std::size_t> mOffsets; ///< of channels within a pixel
    std::size_t mPixelBytes = 0;
    std::unique_ptr<std::byte[]> mPixels;
    std::vector<int> mPassing;
    bool mKeepsOverscan = false;
};

} // namespace Kerovane::Host
