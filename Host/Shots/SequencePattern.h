#pragma once

#include "Host/Shots/FrameList.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * A file name with a placeholder for the frame number: '#' alone means four digits, several '#' one
 * digit each ("shot.#.png", "shot.######.png"), each '@' one digit; "%04d", "%d", "$F4" and "$F"
 * are understood too. Longer numbers take more digits.
 */
class SequencePattern {
public:
    /// Returns nothing if the file name has no placeholder. Throws Error if it has several.
    static std::optional<SequencePattern> parse(const std::filesystem::path& pattern);

    std::filesystem::path pathOf(A_long frame) const;

    /// Returns the frames whose files exist. Throws Error if the folder cannot be read.
    FrameList framesOnDisk() const;

private:
    /// Returns the frame number in a file name that matches the pattern.
    std::optional<A_long> frameOf(std::string_view fileName) const;

    std::string nameOf(A_long frame) const;

    std::filesystem::path mFolder; ///< may be empty
    std::string mBefore;
    std::string mBehind;
    int mDigits = 0; ///< least number of digits, padded with zeros
};

} // namespace Kerovane::Host
