#pragma once

#include "Host/Session/World.h"
#include "Host/Sheet/Font.h"

#include <OpenImageIO/imagebuf.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The lines of text under a picture.
using Label = std::vector<std::string>;

/**
 * A page of labelled pictures in rows. Pictures are drawn one by one; a checkerboard shows through
 * transparent pixels.
 */
class ContactSheet {
public:
    /**
     * Creates a page with an empty place above each label. All pictures have the given size in
     * pixels. Throws Error if the page exceeds World's limits or the font is missing.
     */
    ContactSheet(std::vector<std::vector<Label>> labels, int pictureWidth, int pictureHeight);

    /// Draws `picture`, scaled down to its place, and its label.
    void place(std::size_t row, std::size_t column, const World& picture);

    /// Returns the page, which is opaque.
    World world(Depth depth) const;

private:
    Font mFont;
    std::vector<std::vector<Label>> mLabels;
    int mPictureWidth;
    int mPictureHeight;
    int mColumnWidth; ///< distance from one column's left edge to the next
    std::vector<int> mRowTops;
    std::vector<float> mPixels; ///< the page's pixels: red, green, blue, alpha
    OIIO::ImageBuf mPage;       ///< a view of mPixels
};

} // namespace Kerovane::Host
