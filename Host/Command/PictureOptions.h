#pragma once

#include "Host/Pictures/ColourConversion.h"
#include "Host/Pictures/PictureReader.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** The command-line options that select a picture's layers and convert its colours. */
class PictureOptions {
public:
    /// Adds the options for layers and for colour conversion.
    void addTo(CLI::App& command);

    /// Adds the option for overscan.
    void addOverscanTo(CLI::App& command);

    /// Applies the options to `setting`.
    void set(ReadSetting& setting) const;

    /// Returns nothing if no conversion was requested. Throws Error if it does not exist.
    std::optional<ColourConversion> conversion() const;

    /// Returns the given options as words for a command line.
    std::vector<std::string> words() const;

    /// Returns a given option that applies to picture files only, or an empty text.
    std::string givenForPictures() const;

private:
    std::string mLayer;
    std::optional<int> mPart;
    std::string mOverscan;
    std::pair<std::string, std::string> mConvert; ///< from, to; both empty if not given
};

} // namespace Kerovane::Host
