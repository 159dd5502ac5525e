#pragma once

#include "Host/Session/World.h"
#include "Host/Sheet/Font.h"

#include <OpenImageIO/imagebuf.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The text under a picture, line by line.
using Label = std::vector<std::string>;

/** A page of labelled pictures in rows, drawn one by one. Transparent places show a checkerboard.
 */
class ContactSheet {
public:
    /**
     * An empty page with room for a picture over each label; all pictures will have the given size
     * in pixels. Throws Error if the page would be larger than a world can be or its font is
     * missing.
     */
    ContactSheet(std::vector<std::vector<Label>> labels, int pictureWidth, int pictureHeight);

    /// Draws `picture`, reduced to its place, and the label under it.
    void place(std::size_t row, std::size_t column, const World& picture);

    /// The page, opaque.
    World world(Depth depth) const;

private:
    Font mFont;
    std::vector<std::vector<Label>> mLabels;
    int mPictureWidth;
    int mPictureHeight;
    int mColumnWidth; ///< from the left of a column to that of the next
    std::vector<int> mRowTops;
    std::vector<float> mPixels; ///< red, green, blue, alpha
    OIIO::ImageBuf mPage;       ///< wraps the pixels
};

} // namespace Kerovane::Host
