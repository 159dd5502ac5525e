#pragma once

#include "Host/Shots/FrameList.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * A file name with a placeholder for the frame number. A single '#' means four digits. Of several
 * '#' each means one digit, and so does each '@': "shot.#.png", "shot.######.png". The forms
 * "%04d", "%d", "$F4" and "$F" are placeholders, too. Longer numbers take more digits.
 */
class SequencePattern {
public:
    /// Returns nothing if the file name has no placeholder. Throws Error if it has several
    /// placeholders, or one that means too many digits.
    static std::optional<SequencePattern> parse(const std::filesystem::path& pattern);

    std::filesystem::path pathOf(A_long frame) const;

    /// Returns the frames whose files exist. Throws Error if the folder cannot be read.
    FrameList framesOnDisk() const;

private:
    /// Returns the frame number in `fileName`, or nothing if the name does not match the pattern.
    std::optional<A_long> frameOf(std::string_view fileName) const;

    std::string nameOf(A_long frame) const;

    std::filesystem::path mFolder; ///< empty: the current folder
    std::string mBefore;
    std::string mBehind;
    int mDigits = 0; ///< least number of digits, padded with zeros
};

} // namespace Kerovane::Host
