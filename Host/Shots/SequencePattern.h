#pragma once

#include "Host/Shots/FrameList.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/**
 * The name of a numbered file with a place for the number: one '#' for four digits, several for one
 * each ("shot.#.png", "shot.######.png"), '@' for one, "%04d" and "%d", or "$F4" and "$F". A number
 * with more digits takes the room that it needs.
 */
class SequencePattern {
public:
    /// Nothing if the file's name has no such place. Throws Error if it has several.
    static std::optional<SequencePattern> parse(const std::filesystem::path& pattern);

    std::filesystem::path pathOf(A_long frame) const;

    /// The frames whose files there are. Throws Error if the folder can't be read.
    FrameList framesOnDisk() const;

private:
    /// The frame whose file has that name.
    std::optional<A_long> frameOf(std::string_view fileName) const;

    std::string nameOf(A_long frame) const;

    std::filesystem::path mFolder; ///< may be empty
    std::string mBefore;
    std::string mBehind;
    int mDigits = 0; ///< at least so many, with zeros in front
};

} // namespace Kerovane::Host
